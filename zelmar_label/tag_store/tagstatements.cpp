// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "zelmar_label/tag_store/tagstatements_p.h"

#include <QSqlDriver>
#include <QSqlError>

#include <unordered_map>

namespace label {

namespace {

/// The connections in use, by their drivers.
class Connections
{
public:
    /// Never destroyed: connections may outlive every static object.
    static Connections &instance()
    {
        static auto *const connections = new Connections;
        return *connections;
    }

    std::shared_ptr<TagStatements> of(const QSqlDriver *driver)
    {
        const std::lock_guard<std::mutex> lock(m_lock);
        std::shared_ptr<TagStatements> &statements = m_statements[driver];
        if (!statements) {
            statements = std::make_shared<TagStatements>();
            QObject::connect(driver, &QObject::destroyed, [driver] { instance().remove(driver); });
        }
        return statements;
    }

private:
    void remove(const QSqlDriver *driver)
    {
        std::shared_ptr<TagStatements> removed;
        const std::lock_guard<std::mutex> lock(m_lock);
        const auto known = m_statements.find(driver);
        if (known == m_statements.end())
            return;
        removed.swap(known->second);
        m_statements.erase(known);
    }

    std::mutex m_lock;
    std::unordered_map<const QSqlDriver *, std::shared_ptr<TagStatements>> m_statements;
};

/// Binds `values` and runs the prepared `query`.
bool executes(QSqlQuery &query, const QVariantList &values)
{
    for (int place = 0; place < values.size(); ++place)
        query.bindValue(place, values.at(place));
    return query.exec();
}

} // namespace

std::shared_ptr<TagStatements> TagStatements::of(const QSqlDatabase &db)
{
    return Connections::instance().of(db.driver());
}

void TagStatements::forget(const QSqlDatabase &db)
{
    const std::shared_ptr<TagStatements> connection = of(db);
    const std::lock_guard<std::mutex> lock(connection->m_lock);
    connection->m_prepared.clear();
}

QString TagStatements::errorText(const QSqlQuery &query)
{
    return query.lastError().text();
}

bool TagStatements::run(const QSqlDatabase &db, const QString &statement, QString *error)
{
    return forEachRowOnce(
        db, statement, [](const QSqlQuery &) {}, error);
}

bool TagStatements::run(const QSqlDatabase &db, const QString &statement, const QList<QPair<QString, QVariant>> &values,
                        QString &error, int *changedRows)
{
    const std::shared_ptr<TagStatements> connection = of(db);
    const std::lock_guard<std::mutex> lock(connection->m_lock);
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
    query.finish();
    return true;
}

QSqlQuery *TagStatements::executed(const QSqlDatabase &db, const QString &statement, const QVariantList &values,
                                   QString *error)
{
    const auto known = m_prepared.find(statement);
    if (known != m_prepared.end()) {
        if (executes(*known, values))
            return &*known;
        // Its connection was closed and opened again, or its table was made or dropped.
        m_prepared.erase(known);
    }
    QSqlQuery query(db);
    query.setForwardOnly(true);
    if (query.prepare(statement) && executes(query, values))
        return &*m_prepared.insert(statement, query);
    if (error)
        *error = errorText(query);
    return nullptr;
}

} // namespace label
