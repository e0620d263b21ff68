// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "zelmar_label/address_grammar/mutexlocker_p.h"
#include "zelmar_label/label_store/boundtext_p.h"
#include "zelmar_label/tag_store/fuzzymatch_p.h"
#include "zelmar_label/tag_store/tagids_p.h"
#include "zelmar_label/tag_store/tagnamelist_p.h"
#include "zelmar_label/tag_store/tagstatements_p.h"
#include "zelmar_label/tag_store/tagsystem.h"

#include <QSet>

#include <optional>

using label::TagStatements;

namespace {

/// The lowest id of the tag with this name.
std::optional<int> idIn(const QMap<int, QString> &names, const QString &name)
{
    for (auto tag = names.constBegin(); tag != names.constEnd(); ++tag) {
        if (tag.value() == name)
            return tag.key();
    }
    return std::nullopt;
}

} // namespace

bool TagSystem::isSystemTag(const QString &name) const
{
    return name.startsWith(QLatin1String("s>")) || name.startsWith(QLatin1String("S>"));
}

bool TagSystem::isRecipeTag(const QString &name) const
{
    return name.startsWith(QLatin1String("r>")) || name.startsWith(QLatin1String("R>"));
}

bool TagSystem::isNewTag(const QString &name) const
{
    return !name.isEmpty() && !isSystemTag(name) && !isRecipeTag(name) && !m_tagNames->contains(name);
}

QString TagSystem::getTagNameById(int id) const
{
    if (isSystemID(id))
        return systemTagName(id);
    if (isRecipeID(id)) {
        const auto tag = m_recipeTags.constFind(id);
        return tag == m_recipeTags.constEnd() ? m_recipeRowTags.value(id) : *tag;
    }
    QString name;
    int rows = 0;
    TagStatements::forEachRow(database(), QStringLiteral("select id,name from custom_tag_table where id = ?"), {id},
                              [&name, &rows](const QSqlQuery &row) {
                                  name = row.value(1).toString();
                                  ++rows;
                              });
    return rows < 2 ? name : QString();
}

int TagSystem::getIdByTagName(const QString &name) const
{
    const label::MutexLocker locker(&m_mutex);
    if (isSystemTag(name))
        return systemTagId(name);
    if (isRecipeTag(name)) {
        const std::optional<int> id = idIn(m_recipeTags, name);
        return id ? *id : idIn(m_recipeRowTags, name).value_or(-1);
    }
    if (!label::canBeSought(name))
        return -1;
    int id = -1;
    int rows = 0;
    TagStatements::forEachRow(database(), QStringLiteral("select id,name from custom_tag_table where name = ?"),
                              {label::boundText(name)}, [&id, &rows](const QSqlQuery &row) {
                                  id = row.value(0).toInt();
                                  ++rows;
                              });
    return rows == 1 ? id : -1;
}

int TagSystem::getRecipeConnectedID(int id)
{
    if (!isRecipeID(id))
        return -1;
    return label::isRecipeRowTagId(id) ? m_recipeRowConnectedIDs.value(id) : m_recipeConnectedIDs.value(id);
}

/// The tag to which a recipe tag leads, through any number of recipe tags; -1 if one of them names no tag. Recipe tags
/// in a circle are connected to nothing.
int TagSystem::resolvedRecipe(int id)
{
    const int longest = m_recipeConnectedIDs.size() + m_recipeRowConnectedIDs.size();
    for (int step = 0; isRecipeID(id); ++step) {
        if (step > longest)
            return 0;
        id = getRecipeConnectedID(id);
    }
    return id;
}

void TagSystem::setRecipeTags(const QMap<int, QString> &names, const QMap<int, int> &connected)
{
    m_recipeTags = names;
    m_recipeConnectedIDs = connected;
}

void TagSystem::setRecipeRowTags(const QMap<int, QString> &names, const QMap<int, int> &connected)
{
    m_recipeRowTags = names;
    m_recipeRowConnectedIDs = connected;
}

QStringList TagSystem::getTagNames()
{
    return m_tagNames->names();
}

QStringList TagSystem::getTagNameList(int connectorId)
{
    QStringList names;
    TagStatements::forEachRow(database(), QStringLiteral("select name from custom_tag_table where connector_id = ? "),
                              {connectorId}, [&names](const QSqlQuery &row) { names.append(row.value(0).toString()); });
    return names;
}

QStringList TagSystem::getInternalTagNames()
{
    return getTagNameList(0);
}

QStringList TagSystem::getSimilarTagNames(const QString &text)
{
    return label::FuzzyMatch(text).filter(m_tagNames->names());
}

QStringList TagSystem::getInternalSimilarTagNames(const QString &text)
{
    return label::FuzzyMatch(text).filter(getInternalTagNames());
}

QList<int> TagSystem::findSimilarTagName(const QString &text)
{
    QSet<int> ids;
    const QStringList names = getSimilarTagNames(text);
    for (const QString &name : names) {
        const int id = getIdByTagName(name);
        if (id != -1)
            ids.insert(id);
    }
    return ids.values();
}

bool TagSystem::isStringSimilar(QString a, QString b, double percent, int n, Qt::CaseSensitivity cs)
{
    if (a.isEmpty() || b.isEmpty())
        return false;
    const qint64 overlap = qint64(n) - 1;
    const QString pad = QStringLiteral(" ").repeated(static_cast<int>(qMax<qint64>(overlap, 0)));
    a = pad + a + pad;
    b = pad + b + pad;
    double hits = 0;
    for (qint64 i = 0; i < a.size() - overlap; ++i) {
        if (b.indexOf(a.mid(static_cast<int>(i), n), 0, cs) >= 0)
            ++hits;
    }
    const qint64 shorter = b.size() > a.size() ? a.size() : b.size();
    return hits * 100.0 / static_cast<double>(shorter - overlap) > percent;
}
