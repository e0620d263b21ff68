// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "support/projectfixtures.h"

#include "zelmar_label/tag_store/tagmessages_p.h"
#include "zelmar_label/tag_store/tagsystem.h"

#include <QFile>
#include <QMutex>
#include <QMutexLocker>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QSqlRecord>

#include <algorithm>

namespace {

QMutex s_mutex;
QStringList s_messages;

QSqlQuery executed(const QString &key, const QString &statement, const QVariantList &values)
{
    QSqlQuery query(QSqlDatabase::database(key, false));
    if (!query.prepare(statement))
        qFatal("%s: %s", qPrintable(statement), qPrintable(query.lastError().text()));
    for (const QVariant &value : values)
        query.addBindValue(value);
    if (!query.exec())
        qFatal("%s: %s", qPrintable(statement), qPrintable(query.lastError().text()));
    return query;
}

} // namespace

void openProject(const QString &path, const QString &key)
{
    closeProject(key);
    QSqlDatabase db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), key);
    db.setDatabaseName(path);
    if (!db.open())
        qFatal("cannot open %s", qPrintable(path));
    // A test's database need not survive a power cut, and syncing is slow on a busy disk.
    executeOn(key, QStringLiteral("PRAGMA synchronous = OFF"));
}

void closeProject(const QString &key)
{
    if (QSqlDatabase::contains(key))
        QSqlDatabase::removeDatabase(key);
}

void dropProjects()
{
    TagSystem::drop();
    const QStringList keys = QSqlDatabase::connectionNames();
    for (const QString &key : keys)
        QSqlDatabase::removeDatabase(key);
}

void makeProject(const QString &path, const QString &key, const QList<LinkRow> &links, const QList<NodeRow> &nodes)
{
    closeProject(key);
    QFile::remove(path);
    openProject(path, key);
    executeOn(key, QStringLiteral("CREATE TABLE LINK (LINKID INTEGER, PLC_MODEL TEXT, ENABLED INTEGER)"));
    for (const LinkRow &link : links)
        executeOn(key, QStringLiteral("INSERT INTO LINK VALUES (?, ?, ?)"), {link.id, link.model, link.enabled});
    executeOn(key, QStringLiteral("CREATE TABLE NODE (NODEID INTEGER, STATIONID INTEGER, LINKID INTEGER)"));
    for (const NodeRow &node : nodes)
        executeOn(key, QStringLiteral("INSERT INTO NODE VALUES (?, ?, ?)"), {node.id, node.station, node.link});
}

QString tagTableStatement()
{
    return QStringLiteral("CREATE TABLE if not exists custom_tag_table ( id INTEGER PRIMARY KEY,name STRING,access "
                          "NUMBER,connector_id NUMBER,data_type NUMBER,address STRING,scan_time NUMBER,scale "
                          "NUMBER,addition NUMBER,default_value NUMBER,user_log NUMBER, user_log_comment STRING );");
}

void writeTags(const QString &key, const QList<TagRow> &tags)
{
    executeOn(key, tagTableStatement());
    executeOn(key, QStringLiteral("SAVEPOINT tags_of_a_test"));
    for (const TagRow &tag : tags) {
        executeOn(key, QStringLiteral("INSERT INTO custom_tag_table VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?)"),
                  {tag.id == 0 ? QVariant() : QVariant(tag.id), tag.name, tag.access, tag.connectorId, tag.dataType,
                   tag.address, tag.scanTime, tag.scale, tag.addition, tag.defaultValue, tag.userLog, tag.comment});
    }
    executeOn(key, QStringLiteral("RELEASE tags_of_a_test"));
}

void executeOn(const QString &key, const QString &statement, const QVariantList &values)
{
    executed(key, statement, values);
}

bool tryOn(const QString &key, const QString &statement)
{
    QSqlQuery query(QSqlDatabase::database(key, false));
    return query.exec(statement);
}

QString errorOn(const QString &key, const QString &statement)
{
    QSqlQuery query(QSqlDatabase::database(key, false));
    query.exec(statement);
    return query.lastError().text();
}

QStringList rowsOn(const QString &key, const QString &statement)
{
    QStringList rows;
    QSqlQuery query = executed(key, statement, {});
    while (query.next()) {
        QStringList fields;
        for (int i = 0; i < query.record().count(); ++i)
            fields.append(query.isNull(i) ? QStringLiteral("(null)") : query.value(i).toString());
        rows.append(fields.join(QLatin1Char('|')));
    }
    return rows;
}

QList<int> sorted(QList<int> ids)
{
    std::sort(ids.begin(), ids.end());
    return ids;
}

MessageRecorder::MessageRecorder()
{
    take();
    label::setMessageHandler([](label::MessageKind kind, const QString &title, const QString &text) {
        const QString kindText =
            kind == label::MessageKind::Critical ? QStringLiteral("critical|") : QStringLiteral("warning|");
        const QMutexLocker locker(&s_mutex);
        s_messages.append(kindText + title + QLatin1Char('|') + text);
    });
}

MessageRecorder::~MessageRecorder()
{
    label::setMessageHandler({});
}

QStringList MessageRecorder::take()
{
    const QMutexLocker locker(&s_mutex);
    QStringList messages;
    messages.swap(s_messages);
    return messages;
}
