// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "zelmar_label/tag_store/tagstatements_p.h"

#include <QSqlError>

namespace label {

std::mutex &TagStatements::connectionLock()
{
    static std::mutex lock;
    return lock;
}

QString TagStatements::errorText(const QSqlQuery &query)
{
    return query.lastError().text();
}

bool TagStatements::run(const QSqlDatabase &db, const QString &statement, const QList<QPair<QString, QVariant>> &values,
                        QString &error, int *changedRows, qint64 *lastId)
{
    const std::lock_guard<std::mutex> lock(connectionLock());
    QSqlQuery query(db);
    query.prepare(statement);
    for (const auto &value : values)
        query.bindValue(value.first, value.second);
    if (!query.exec()) {
        error = errorText(query);
        return false;
    }
    if (changedRows)
        *changedRows = query.numRowsAffected();
    if (lastId)
        *lastId = query.lastInsertId().toLongLong();
    query.finish();
    return true;
}

void TagStatements::forget(const QSqlDatabase &db)
{
    const std::lock_guard<std::mutex> lock(connectionLock());
    for (auto it = m_prepared.begin(); it != m_prepared.end();)
        it = it.key().first == db.driver() ? m_prepared.erase(it) : ++it;
}

QSqlQuery *TagStatements::executed(const QSqlDatabase &db, const QString &statement, const QVariant &value)
{
    const Key key(db.driver(), statement);
    const auto known = m_prepared.find(key);
    if (known != m_prepared.end()) {
        if (value.isValid())
            known->bindValue(0, value);
        if (known->exec())
            return &*known;
        // Its connection was closed and opened again, or its table came or went.
        m_prepared.erase(known);
    }
    QSqlQuery query(db);
    query.setForwardOnly(true);
    if (!query.prepare(statement))
        return nullptr;
    if (value.isValid())
        query.bindValue(0, value);
    if (!query.exec())
        return nullptr;
    return &*m_prepared.insert(key, query);
}

} // namespace label
