// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef TAG_EDITOR_TAGINDEX_H
#define TAG_EDITOR_TAGINDEX_H

#include <QString>
#include <QStringList>
#include <QVector>

class TagSystem;

/// The tags to show.
struct TagScope
{
    enum : int {
        All = -1,
    };

    int link = All;
    /// Within a link; only tags whose address has this station.
    int station = All;
};

/// Ids, links and names of all tags, without other properties: enough to filter 100,000 of them.
class TagIndex
{
public:
    void load(TagSystem &tags);
    void clear();

    /// Stores the new name of one tag.
    void rename(TagSystem &tags, int id, const QString &name);

    int count() const { return m_ids.size(); }
    int count(int link) const;
    const QStringList &names() const { return m_names; }

    /// The ids, in table order, of the tags in the scope whose names contain the characters of `text` in order, in any
    /// case; all in the scope for an empty text.
    QVector<int> find(TagSystem &tags, const TagScope &scope, const QString &text) const;

private:
    void shareNames(TagSystem &tags);
    QVector<int> rowsNamed(const QStringList &found) const;

    QVector<int> m_ids;
    QVector<int> m_links;
    QStringList m_names;
};

#endif
