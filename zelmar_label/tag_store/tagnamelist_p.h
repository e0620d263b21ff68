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

/// The names of the tag table in memory, in row order, with a set of them for look-ups. Doubled names stand twice in
/// the list.
///
/// The list is what a reading of the table gave after the last write. It follows a write of its own object without
/// reading all names again, as long as nothing else can have changed them. Three things tell:
/// - A *mark*, a number that the process uses once, is written to the connection's temporary database when the names
///   are read. It is gone when the connection was closed, opened again or exchanged, and a roll-back of the reading
///   takes it back.
/// - The last row is the one that the object added last, until a roll-back takes it back.
/// - While both stand, the connection's own counters tell of the writes of others: on this connection, on every other
///   one, and of what became of the tables.
class TagNameList
{
public:
    const QStringList &names() const { return m_names; }
    bool contains(const QString &name) const { return m_nameSet.contains(name); }

    /// Reads the names from `db`. False when they cannot be read: the list is then empty, and `error` is the database's
    /// text.
    bool reload(const QSqlDatabase &db, QString &error);

    /// Follows a row that the list's object has added. False when the list has to be reloaded instead.
    bool followAddedRow(const QSqlDatabase &db);

    /// Follows `changedRows` rows whose names the list's object left alone. False when the list has to be reloaded
    /// instead.
    bool followChangedRows(const QSqlDatabase &db, int changedRows);

private:
    /// What a connection says of its tag table.
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
    /// The state now, where nothing but `changes` changes of the object's own have happened; else nothing.
    std::optional<State> stateAfter(const QSqlDatabase &db, int changes) const;
    void append(const QString &name);

    QStringList m_names;
    QSet<QString> m_nameSet;
    /// As of the last reading or following; nothing where it is not known.
    std::optional<State> m_state;
};

} // namespace label

#endif
