// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "zelmar_label/address_grammar/mutexlocker_p.h"
#include "zelmar_label/tag_store/tagstatements_p.h"
#include "zelmar_label/tag_store/tagsystem.h"

#include <algorithm>

using label::TagStatements;

namespace {

/// A column name that a prepared statement may contain: others have a meaning only in the text.
bool isPlainColumn(const QString &column)
{
    return !column.isEmpty() && std::all_of(column.begin(), column.end(), [](QChar character) {
        return character == QLatin1Char('_') || (character.unicode() < 128 && character.isLetterOrNumber());
    });
}

} // namespace

void TagSystem::initCatchTable()
{
    TagStatements::forEachRow(
        database(), tableStatement("select id,data_type,scan_time,connector_id,address,scale,addition,access from %1"),
        {}, [this](const QSqlQuery &row) {
            CatchRecord &record = m_catchTable[row.value(0).toInt()];
            record.connectorId = row.value(3).toInt();
            record.access = row.value(7).toInt();
            record.address = row.value(4).toString();
            record.dataType = row.value(1).toInt();
            record.scale = row.value(5).toInt();
        });
    m_catchTableReady = true;
}

QString TagSystem::getAddressByID(int id)
{
    QString address;
    TagStatements::forEachRow(database(), QStringLiteral("select id,address from custom_tag_table where id = ?"), {id},
                              [&address](const QSqlQuery &row) { address = row.value(1).toString(); });
    return address;
}

int TagSystem::getIntValueByID(int id, const QString &column)
{
    int value = 0;
    const auto visit = [&value](const QSqlQuery &row) { value = row.value(1).toInt(); };
    if (isPlainColumn(column))
        TagStatements::forEachRow(
            database(), QLatin1String("select id,") + column + QLatin1String(" from custom_tag_table where id = ?"),
            {id}, visit);
    else
        TagStatements::forEachRowOnce(
            database(),
            QStringLiteral("select id,%1 from %2 where id = %3").arg(column, customTagTableName(), QString::number(id)),
            visit);
    return value;
}

/// The record of a tag; an id without one gets a default record, which stays. Under `m_mutex`.
const TagSystem::CatchRecord &TagSystem::caught(int id)
{
    const auto record = m_catchTable.constFind(id);
    return record == m_catchTable.constEnd() ? *m_catchTable.insert(id, CatchRecord()) : *record;
}

int TagSystem::getScanTimeByID(int id)
{
    return isNotNormalTag(id) ? 1 : getIntValueByID(id, QStringLiteral("scan_time"));
}

int TagSystem::getDefaultValueByID(int id)
{
    return isNotNormalTag(id) ? 0 : getIntValueByID(id, QStringLiteral("default_value"));
}

int TagSystem::getAdditionByID(int id)
{
    return isNotNormalTag(id) ? 1 : getIntValueByID(id, QStringLiteral("addition"));
}

int TagSystem::getScaleByID(int id)
{
    const int tag = resolvedRecipe(id);
    if (isSystemID(tag) || (tag == -1 && isRecipeID(id)))
        return 1;
    return getIntValueByID(tag, QStringLiteral("scale"));
}

int TagSystem::getAccessModeByID(int id)
{
    const label::MutexLocker locker(&m_mutex);
    if (isNotNormalTag(id))
        return 1;
    return m_catchTableReady ? caught(id).access : getIntValueByID(id, QStringLiteral("access"));
}
