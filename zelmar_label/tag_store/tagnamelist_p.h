// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef ZELMAR_LABEL_TAGNAMELIST_P_H
#define ZELMAR_LABEL_TAGNAMELIST_P_H

#include <QSet>
#include <QString>
#include <QStringList>

#include <optional>

class QSqlDatabase;

namespace label {

/// The names of the tag table in memory, in row order, and a set of them for look-ups. Duplicate names are in the list
/// twice.
///
/// The list is the content of the table after the last write. It follows a write of its own object without reading all
/// names again, unless something else may have changed them. Three things show that:
/// - A *mark*, a number that the process uses once, is written to the connection's temporary database when the names
///   are read. It is lost when the connection is closed, opened again or exchanged, and a roll-back of the reading
///   removes it.
/// - The last row is the one that the object added last, until a roll-back removes it.
/// - While both are there, the connection's counters show other writes on this connection and on every other one, and
///   changes of the tables.
class TagNameList
{
public:
    const QStringList &names() const { return m_names; }
    bool contains(const QString &name) const { return m_nameSet.contains(name); }

    /// Reads the names from `db`. False when they cannot be read: the list is then empty, and `error` is the database's
    /// text.
    bool reload(const QSqlDatabase &db, QString &error);

    /// Follows a row that the list's object added. False when the list must be reloaded instead.
    bool followAddedRow(const QSqlDatabase &db);

    /// Follows `changedRows` rows whose names the list's object did not change. False when the list must be reloaded
    /// instead.
    bool followChangedRows(const QSqlDatabase &db, int changedRows);

private:
    /// The state of a connection and its tag table.
    struct State
    {
        qint64 mark = 0;
        qint64 ownChanges = 0;
        qint64 foreignChanges = 0;
        qint64 schema = 0;
        qint64 temporarySchema = 0;
        qint64 isReadBackwards = 0;
        qint64 lastRow = 0;
        QString lastName;
    };

    static std::optional<State> read(const QSqlDatabase &db);
    /// The state now if only `changes` changes of the object itself have happened; else nothing.
    std::optional<State> stateAfter(const QSqlDatabase &db, int changes) const;
    void append(const QString &name);

    QStringList m_names;
    QSet<QString> m_nameSet;
    /// As of the last reading or following; nothing if unknown.
    std::optional<State> m_state;
};

} // namespace label

#endif
