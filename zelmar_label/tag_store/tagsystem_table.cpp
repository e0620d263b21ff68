// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "zelmar_label/tag_store/tagids_p.h"
#include "zelmar_label/tag_store/tagmessages_p.h"
#include "zelmar_label/tag_store/tagnamelist_p.h"
#include "zelmar_label/tag_store/tagstatements_p.h"
#include "zelmar_label/tag_store/tagsystem.h"

using label::MessageKind;
using label::TagNameList;

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

TagNameList::DatabaseState stateOf(label::TagStatements &statements, const QSqlDatabase &db)
{
    TagNameList::DatabaseState state;
    statements.forEachRowPrepared(
        db,
        QStringLiteral("SELECT total_changes(), (SELECT data_version FROM pragma_data_version), (SELECT schema_version "
                       "FROM pragma_schema_version), (SELECT max(id) FROM custom_tag_table)"),
        QVariant(), [&state](const QSqlQuery &row) {
            state.totalChanges = row.value(0).toLongLong();
            state.dataVersion = row.value(1).toLongLong();
            state.schemaVersion = row.value(2).toLongLong();
            state.highestId = row.value(3).toLongLong();
        });
    return state;
}

bool isInTransaction(label::TagStatements &statements, const QSqlDatabase &db)
{
    QString error;
    if (!statements.run(db, QStringLiteral("BEGIN"), {}, error))
        return true;
    statements.run(db, QStringLiteral("COMMIT"), {}, error);
    return false;
}

/// True when the names are read in the order of their rows, so that a new row's name comes last. An index that holds
/// all that is read would change that.
bool isReadInRowOrder(label::TagStatements &statements, const QSqlDatabase &db)
{
    bool isInOrder = true;
    statements.forEachRow(db, QStringLiteral("EXPLAIN QUERY PLAN select name,id from custom_tag_table"),
                          [&isInOrder](const QSqlQuery &row) {
                              isInOrder = isInOrder && !row.value(3).toString().contains(QLatin1String("INDEX"));
                          });
    return isInOrder;
}

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
    if (!m_statements->forEachRow(
            m_database, statement, [](const QSqlQuery &) {}, &error))
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
    m_tagNames->clear();
    const QSqlDatabase db = database();
    QString error;
    const bool isRead = m_statements->forEachRow(
        db, tableStatement("select name,id from %1"),
        [this](const QSqlQuery &row) { m_tagNames->append(row.value(0).toString()); }, &error);
    if (!isRead)
        label::showMessage(MessageKind::Warning, tr("Read Database error"), error);
    const bool isSound = isRead && isReadInRowOrder(*m_statements, db) && !isInTransaction(*m_statements, db);
    m_tagNames->setState(stateOf(*m_statements, db), isSound);
}

bool TagSystem::areNamesCurrent() const
{
    return m_tagNames->isCurrent(stateOf(*m_statements, database()));
}

/// Brings the names up to date after row `id` was added: by this one name where they were current, else by a reload. A
/// roll-back of what came before would take this row back too, and so show.
void TagSystem::noteAddedTag(bool wasCurrent, qint64 id)
{
    const QSqlDatabase db = database();
    TagNameList::DatabaseState expected = m_tagNames->state();
    const bool isLast = id > expected.highestId;
    ++expected.totalChanges;
    expected.highestId = id;
    if (!wasCurrent || !isLast || !(stateOf(*m_statements, db) == expected)) {
        refreshTagNames();
        return;
    }
    m_statements->forEachRowPrepared(db, QStringLiteral("select name from custom_tag_table where id = ?"), id,
                                     [this](const QSqlQuery &row) { m_tagNames->append(row.value(0).toString()); });
    m_tagNames->setState(expected, true);
}

/// Brings the names up to date after `changedRows` rows were changed, but not their names.
void TagSystem::noteModifiedTag(bool wasCurrent, int changedRows)
{
    TagNameList::DatabaseState expected = m_tagNames->state();
    expected.totalChanges += changedRows;
    if (wasCurrent && stateOf(*m_statements, database()) == expected)
        m_tagNames->setState(expected, true);
    else
        refreshTagNames();
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

/// The statement with the tag table's name in its first place.
QString TagSystem::tableStatement(const char *statement) const
{
    return QString(QLatin1String(statement)).arg(customTagTableName());
}
