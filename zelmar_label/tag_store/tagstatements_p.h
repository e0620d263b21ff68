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

/// The statements on one connection; frequent ones are prepared once.
///
/// SQLite connections are opened without a mutex, and in the tolv environment many threads use one connection: the
/// connection's lock is held from each `exec` to its last row. Each connection has its own lock, so that one waiting
/// for a busy file does not delay the others. It is the innermost lock: visitors of rows must not run a statement or
/// take another lock.
///
/// Every value is bound, so that no user text becomes part of a statement.
class TagStatements
{
public:
    /// The statements on `db`, the same object for every caller.
    static std::shared_ptr<TagStatements> of(const QSqlDatabase &db);

    /// Forgets the prepared statements of `db`; call it before closing `db`.
    static void forget(const QSqlDatabase &db);

    /// Runs `statement` on `db` with `values` for its "?", and calls `visit(query)` for each row. Each text is prepared
    /// once per connection and kept: use few texts. False when it fails; `error`, if given, is then the database's
    /// text.
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

    /// The same for any text without "?"; the statement is not kept.
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

    /// The same with named placeholders.
    static bool run(const QSqlDatabase &db, const QString &statement, const QList<QPair<QString, QVariant>> &values,
                    QString &error, int *changedRows = nullptr);

private:
    QSqlQuery *executed(const QSqlDatabase &db, const QString &statement, const QVariantList &values, QString *error);
    static QString errorText(const QSqlQuery &query);

    std::mutex m_lock;
    QHash<QString, QSqlQuery> m_prepared;
};

/// False for a text with a single quote or a zero character: no statement is run for it, as if no row had it.
inline bool canBeSought(const QString &text)
{
    return !text.contains(QLatin1Char('\'')) && !text.contains(QChar(0));
}

} // namespace label

#endif
