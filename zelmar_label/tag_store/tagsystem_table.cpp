// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "zelmar_label/tag_store/tagids_p.h"
#include "zelmar_label/tag_store/tagmessages_p.h"
#include "zelmar_label/tag_store/tagnamelist_p.h"
#include "zelmar_label/tag_store/tagstatements_p.h"
#include "zelmar_label/tag_store/tagsystem.h"

using label::MessageKind;
using label::TagStatements;

namespace {

struct Column
{
    const char *name;
    const char *clause;
};

constexpr Column columns[] = {
    {"id", " INTEGER PRIMARY KEY,"}, {"name", " STRING,"},      {"access", " NUMBER,"},
    {"connector_id", " NUMBER,"},    {"data_type", " NUMBER,"}, {"address", " STRING,"},
    {"scan_time", " NUMBER,"},       {"scale", " NUMBER,"},     {"addition", " NUMBER,"},
    {"default_value", " NUMBER,"},   {"user_log", " NUMBER, "}, {"user_log_comment", " STRING"},
};

} // namespace

void TagSystem::createCustomTable()
{
    if (!m_database.isOpen()) {
        label::showMessage(MessageKind::Warning, tr("Error"), tr("Unable to open database."));
        return;
    }
    QString statement = QStringLiteral("CREATE TABLE if not exists %1 ( ").arg(customTagTableName());
    for (const Column &column : columns)
        statement += QLatin1String(column.name) + QLatin1String(column.clause);
    statement += QLatin1String(" );");
    QString error;
    if (!TagStatements::run(m_database, statement, &error))
        label::showMessage(MessageKind::Warning, tr("Error"), error);
}

void TagSystem::settingTagTableColumns()
{
    for (const Column &column : columns) {
        m_columnNames.append(QLatin1String(column.name));
        m_columnTypes.append(QLatin1String(column.clause));
    }
}

int TagSystem::getCustomTagTableAddressColumn()
{
    return qMax(0, m_columnNames.indexOf(QStringLiteral("address")));
}

void TagSystem::refreshTagNames()
{
    QString error;
    if (!m_tagNames->reload(database(), error))
        label::showMessage(MessageKind::Warning, tr("Read Database error"), error);
}

bool TagSystem::isSystemID(int id) const
{
    return label::isSystemTagId(id);
}

bool TagSystem::isRecipeID(int id) const
{
    return label::isRecipeTagId(id);
}

bool TagSystem::isNotNormalTag(int id)
{
    return isSystemID(id) || isRecipeID(id);
}

/// The statement with the tag table's name as first argument.
QString TagSystem::tableStatement(const char *statement) const
{
    return QString(QLatin1String(statement)).arg(customTagTableName());
}
