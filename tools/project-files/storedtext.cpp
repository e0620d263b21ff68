// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "storedtext.h"

#include <QSqlQuery>
#include <QUuid>
#include <QVariant>

namespace {

/// Only such texts can be numbers.
bool beginsLikeNumber(const QString &text)
{
    const QString trimmed = text.trimmed();
    return !trimmed.isEmpty() && QStringLiteral("+-.0123456789").contains(trimmed.at(0));
}

} // namespace

StoredText::StoredText()
    : m_connection(QUuid::createUuid().toString())
{
    QSqlDatabase db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), m_connection);
    db.setDatabaseName(QStringLiteral(":memory:"));
    db.open();
    QSqlQuery(db).exec(QStringLiteral("CREATE TABLE probe (name STRING, address STRING)"));
}

StoredText::~StoredText()
{
    QSqlDatabase::removeDatabase(m_connection);
}

QSqlDatabase StoredText::memory() const
{
    return QSqlDatabase::database(m_connection, false);
}

void StoredText::readColumns(const QSqlDatabase &project)
{
    QSqlQuery columns(project);
    columns.exec(QStringLiteral(
        "SELECT name, type FROM pragma_table_info('custom_tag_table') WHERE lower(name) IN ('name', 'address')"));
    QStringList declared;
    while (columns.next())
        declared.append(columns.value(0).toString() + QLatin1Char(' ') + columns.value(1).toString());
    if (declared.isEmpty())
        return;
    QSqlQuery query(memory());
    query.exec(QStringLiteral("DROP TABLE probe"));
    query.exec(QStringLiteral("CREATE TABLE probe (%1)").arg(declared.join(QLatin1String(", "))));
}

QString StoredText::stored(const char *column, const QString &text) const
{
    if (!beginsLikeNumber(text))
        return text;
    QSqlQuery query(memory());
    query.exec(QStringLiteral("DELETE FROM probe"));
    query.prepare(QStringLiteral("INSERT INTO probe (%1) VALUES (?)").arg(QLatin1String(column)));
    query.addBindValue(text);
    query.exec();
    query.exec(QStringLiteral("SELECT %1 FROM probe").arg(QLatin1String(column)));
    return query.next() ? query.value(0).toString() : text;
}
