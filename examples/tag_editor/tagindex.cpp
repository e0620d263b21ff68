// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "tagindex.h"

#include <zelmar_label/tag_store/tagsystem.h>

#include <QSet>
#include <QSqlQuery>
#include <QVariant>

#include <algorithm>

namespace {

QSet<int> tagsAtStation(const TagSystem &tags, const TagScope &scope)
{
    QSqlQuery query(tags.database());
    query.setForwardOnly(true);
    query.exec(QStringLiteral("SELECT id, address FROM %1 WHERE connector_id = %2 AND address LIKE '%3-%'")
                   .arg(tags.customTagTableName(), QString::number(scope.link), QString::number(scope.station)));
    QSet<int> ids;
    while (query.next())
        ids.insert(query.value(0).toInt());
    return ids;
}

} // namespace

void TagIndex::clear()
{
    m_ids.clear();
    m_links.clear();
    m_names.clear();
}

void TagIndex::load(TagSystem &tags)
{
    clear();
    QSqlQuery query(tags.database());
    query.setForwardOnly(true);
    query.exec(QStringLiteral("SELECT id, connector_id, name FROM %1").arg(tags.customTagTableName()));
    while (query.next()) {
        m_ids.append(query.value(0).toInt());
        m_links.append(query.value(1).toInt());
        m_names.append(query.value(2).toString());
    }
    shareNames(tags);
}

/// Shares the library's own texts for equal names.
void TagIndex::shareNames(TagSystem &tags)
{
    const QStringList names = tags.getTagNames();
    if (names == m_names)
        m_names = names;
}

void TagIndex::rename(TagSystem &tags, int id, const QString &name)
{
    const int at = m_ids.indexOf(id);
    if (at < 0 || m_names.at(at) == name)
        return;
    m_names[at] = name;
    shareNames(tags);
}

int TagIndex::count(int link) const
{
    return static_cast<int>(std::count(m_links.begin(), m_links.end(), link));
}

/// The library returns the matching names in table order, as here, and as the same texts in memory: one pass over both
/// lists finds their rows without a look-up or a text comparison.
QVector<int> TagIndex::rowsNamed(const QStringList &found) const
{
    QVector<int> rows;
    rows.reserve(found.size());
    for (int at = 0; at < m_names.size() && rows.size() < found.size(); ++at) {
        if (m_names.at(at).constData() == found.at(rows.size()).constData())
            rows.append(at);
    }
    if (rows.size() == found.size())
        return rows;
    // The table was read again, by the library or after a write by another program.
    rows.clear();
    const QSet<QString> names(found.begin(), found.end());
    for (int at = 0; at < m_names.size(); ++at) {
        if (names.contains(m_names.at(at)))
            rows.append(at);
    }
    return rows;
}

QVector<int> TagIndex::find(TagSystem &tags, const TagScope &scope, const QString &text) const
{
    const bool takesAll = scope.link == TagScope::All && text.isEmpty();
    if (takesAll)
        return m_ids;
    const QVector<int> rows = text.isEmpty() ? QVector<int>() : rowsNamed(tags.getSimilarTagNames(text));
    const int count = text.isEmpty() ? m_ids.size() : rows.size();
    const bool hasStation = scope.station != TagScope::All;
    const QSet<int> atStation = hasStation ? tagsAtStation(tags, scope) : QSet<int>();
    QVector<int> ids;
    ids.reserve(count);
    for (int i = 0; i < count; ++i) {
        const int row = text.isEmpty() ? i : rows.at(i);
        if (scope.link != TagScope::All && m_links.at(row) != scope.link)
            continue;
        if (!hasStation || atStation.contains(m_ids.at(row)))
            ids.append(m_ids.at(row));
    }
    return ids;
}
