// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef ZELMAR_LABEL_TAGSTATEMENTS_P_H
#define ZELMAR_LABEL_TAGSTATEMENTS_P_H

#include <QHash>
#include <QPair>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QString>
#include <QVariant>

#include <mutex>

class QSqlDriver;

namespace label {

/// The statements of one `TagSystem`, those that are asked over and over prepared once a connection.
///
/// SQLite connections are opened without a mutex of their own, and in the tolv environment one connection serves many
/// threads: one process-wide lock is held from each `exec` to its last row. It is the innermost lock: visitors of rows
/// must neither run a statement nor take another lock.
class TagStatements
{
public:
    /// Runs `statement` and calls `visit(query)` for each row. False when the statement fails; `error`, if given, is
    /// then the database's text.
    template<typename Visit>
    bool forEachRow(const QSqlDatabase &db, const QString &statement, Visit visit, QString *error = nullptr)
    {
        const std::lock_guard<std::mutex> lock(connectionLock());
        QSqlQuery query(db);
        query.setForwardOnly(true);
        const bool succeeded = query.exec(statement);
        if (!succeeded && error)
            *error = errorText(query);
        while (query.next())
            visit(query);
        return succeeded;
    }

    /// The same for a statement that is prepared once a connection, with one place, `?`, for `value`, or, for an
    /// invalid `value`, none.
    template<typename Visit>
    bool forEachRowPrepared(const QSqlDatabase &db, const QString &statement, const QVariant &value, Visit visit)
    {
        const std::lock_guard<std::mutex> lock(connectionLock());
        QSqlQuery *query = executed(db, statement, value);
        if (!query)
            return false;
        while (query->next())
            visit(*query);
        query->finish();
        return true;
    }

    /// Runs a statement with named places. False when it fails; `error` is then the database's text.
    bool run(const QSqlDatabase &db, const QString &statement, const QList<QPair<QString, QVariant>> &values,
             QString &error, int *changedRows = nullptr, qint64 *lastId = nullptr);

    /// Forgets what was prepared on `db`; to be called before it is closed.
    void forget(const QSqlDatabase &db);

    static std::mutex &connectionLock();

private:
    using Key = QPair<const QSqlDriver *, QString>;

    QSqlQuery *executed(const QSqlDatabase &db, const QString &statement, const QVariant &value);
    static QString errorText(const QSqlQuery &query);

    QHash<Key, QSqlQuery> m_prepared;
};

} // namespace label

#endif
