// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef ZELMAR_LABEL_TAGSTATEMENTS_P_H
#define ZELMAR_LABEL_TAGSTATEMENTS_P_H

#include <QHash>
#include <QList>
#include <QPair>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QString>
#include <QVariant>

#include <memory>
#include <mutex>

namespace label {

/// The statements on one connection, those that are asked over and over prepared once.
///
/// SQLite connections are opened without a mutex of their own, and in the tolv environment one connection serves many
/// threads: a lock of the connection is held from each `exec` to its last row. Each connection has a lock of its own, so
/// that one which waits for a busy file does not delay the others. It is the innermost lock: visitors of rows must
/// neither run a statement nor take another lock.
///
/// Every value is bound, so that no text of a user becomes a part of a statement.
class TagStatements
{
public:
    /// The statements on `db`, the same object for every caller.
    static std::shared_ptr<TagStatements> of(const QSqlDatabase &db);

    /// Forgets what was prepared on `db`; to be called before it is closed.
    static void forget(const QSqlDatabase &db);

    /// Runs `statement` on `db` with `values` in its places, "?", and calls `visit(query)` for each row. The statement
    /// is prepared once a connection: its text must not vary without end. False when it fails; `error`, if given, is
    /// then the database's text.
    template<typename Visit>
    static bool forEachRow(const QSqlDatabase &db, const QString &statement, const QVariantList &values, Visit visit,
                           QString *error = nullptr)
    {
        const std::shared_ptr<TagStatements> connection = of(db);
        const std::lock_guard<std::mutex> lock(connection->m_lock);
        QSqlQuery *const query = connection->executed(db, statement, values, error);
        if (!query)
            return false;
        while (query->next())
            visit(*query);
        query->finish();
        return true;
    }

    /// The same for a statement of any text, without places, which is not kept.
    template<typename Visit>
    static bool forEachRowOnce(const QSqlDatabase &db, const QString &statement, Visit visit, QString *error = nullptr)
    {
        const std::shared_ptr<TagStatements> connection = of(db);
        const std::lock_guard<std::mutex> lock(connection->m_lock);
        QSqlQuery query(db);
        query.setForwardOnly(true);
        const bool succeeded = query.exec(statement);
        if (!succeeded && error)
            *error = errorText(query);
        while (query.next())
            visit(query);
        return succeeded;
    }

    /// Runs a statement that gives no rows. False when it fails; `error`, if given, is then the database's text.
    static bool run(const QSqlDatabase &db, const QString &statement, QString *error = nullptr);

    /// The same with named places.
    static bool run(const QSqlDatabase &db, const QString &statement, const QList<QPair<QString, QVariant>> &values,
                    QString &error, int *changedRows = nullptr);

private:
    QSqlQuery *executed(const QSqlDatabase &db, const QString &statement, const QVariantList &values, QString *error);
    static QString errorText(const QSqlQuery &query);

    std::mutex m_lock;
    QHash<QString, QSqlQuery> m_prepared;
};

/// False for a text that counts as one that no row has, because it holds a single quote or a zero character: no
/// statement is run for it.
inline bool canBeSought(const QString &text)
{
    return !text.contains(QLatin1Char('\'')) && !text.contains(QChar(0));
}

} // namespace label

#endif
