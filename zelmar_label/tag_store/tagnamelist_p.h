// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef ZELMAR_LABEL_TAGNAMELIST_P_H
#define ZELMAR_LABEL_TAGNAMELIST_P_H

#include <QSet>
#include <QString>
#include <QStringList>

namespace label {

/// The names of the tag table in memory, in row order, with a set of them for look-ups. Doubled names stand twice in
/// the list.
class TagNameList
{
public:
    /// What a database tells of changes: those of the connection itself since it was opened, those of others, those of
    /// its tables, and the highest row.
    struct DatabaseState
    {
        qint64 totalChanges = -1;
        qint64 dataVersion = -1;
        qint64 schemaVersion = -1;
        qint64 highestId = -1;

        bool operator==(const DatabaseState &other) const
        {
            return totalChanges == other.totalChanges && dataVersion == other.dataVersion &&
                   schemaVersion == other.schemaVersion && highestId == other.highestId;
        }
    };

    const QStringList &names() const { return m_names; }
    bool contains(const QString &name) const { return m_nameSet.contains(name); }

    void clear()
    {
        m_names.clear();
        m_nameSet.clear();
    }
    void append(const QString &name)
    {
        m_names.append(name);
        m_nameSet.insert(name);
    }

    /// True when the list is what a reload would give, as long as nobody but this object wrote since it was last
    /// brought up to date. Changes by others show in the first three numbers. A roll-back shows in none, but takes back
    /// the highest row, which the object itself wrote last; where it did not, and a transaction was open, the list
    /// cannot be trusted.
    bool isCurrent(const DatabaseState &now) const { return m_isSound && now == m_state; }

    void setState(const DatabaseState &state, bool isSound)
    {
        m_state = state;
        m_isSound = isSound && state.totalChanges >= 0;
    }
    const DatabaseState &state() const { return m_state; }

private:
    QStringList m_names;
    QSet<QString> m_nameSet;
    DatabaseState m_state;
    bool m_isSound = false;
};

} // namespace label

#endif
