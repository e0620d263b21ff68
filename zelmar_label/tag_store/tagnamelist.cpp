// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "zelmar_label/tag_store/tagnamelist_p.h"

#include "zelmar_label/tag_store/tagstatements_p.h"

#include <atomic>

namespace label {

namespace {

/// Wraps only after as many readings as there are numbers.
int newMark()
{
    static std::atomic<quint32> last = 0;
    return static_cast<int>(++last);
}

/// A visitor that puts the first field of a row into `value`.
auto into(qint64 &value)
{
    return [&value](const QSqlQuery &row) { value = row.value(0).toLongLong(); };
}

/// False for a table whose new rows may not be read last: one that is no plain table of the project's file, or has an
/// index from which the names may be read.
bool isReadInRowOrder(const QSqlDatabase &db)
{
    bool isInOrder = false;
    TagStatements::forEachRowOnce(
        db,
        QStringLiteral("SELECT (SELECT group_concat(type || (rootpage > 0)) FROM main.sqlite_master "
                       "WHERE tbl_name = 'custom_tag_table' COLLATE NOCASE AND type <> 'trigger') = 'table1' AND NOT "
                       "EXISTS (SELECT 1 FROM sqlite_temp_master WHERE tbl_name = 'custom_tag_table' COLLATE NOCASE)"),
        [&isInOrder](const QSqlQuery &row) { isInOrder = row.value(0).toBool(); });
    return isInOrder;
}

} // namespace

std::optional<TagNameList::State> TagNameList::read(const QSqlDatabase &db)
{
    State state;
    // Statements on the temporary database are not kept prepared: SQLite crashes on one after a caller has changed
    // `temp_store`, which closes that database.
    const bool isRead =
        TagStatements::forEachRowOnce(db, QStringLiteral("PRAGMA temp.user_version"), into(state.mark)) &&
        TagStatements::forEachRowOnce(db, QStringLiteral("PRAGMA temp.schema_version"), into(state.temporarySchema)) &&
        TagStatements::forEachRow(db, QStringLiteral("PRAGMA main.data_version"), {}, into(state.foreignChanges)) &&
        TagStatements::forEachRow(db, QStringLiteral("PRAGMA main.schema_version"), {}, into(state.schema)) &&
        TagStatements::forEachRow(db, QStringLiteral("PRAGMA reverse_unordered_selects"), {},
                                  into(state.isReadBackwards)) &&
        TagStatements::forEachRow(db,
                                  QStringLiteral("SELECT total_changes(), last, name FROM "
                                                 "(SELECT max(_rowid_) AS last, name FROM main.custom_tag_table)"),
                                  {}, [&state](const QSqlQuery &row) {
                                      state.ownChanges = row.value(0).toLongLong();
                                      state.lastRow = row.value(1).toLongLong();
                                      state.lastName = row.value(2).toString();
                                  });
    return isRead && !state.isReadBackwards ? std::optional(state) : std::nullopt;
}

bool TagNameList::reload(const QSqlDatabase &db, QString &error)
{
    m_names.clear();
    m_nameSet.clear();
    m_state.reset();
    // The state is read before the names, so that writes of others in between change it.
    std::optional<State> state;
    if (isReadInRowOrder(db) && TagStatements::run(db, QStringLiteral("PRAGMA temp.user_version = %1").arg(newMark())))
        state = read(db);
    const bool isRead = TagStatements::forEachRow(
        db, QStringLiteral("select name,id from custom_tag_table"), {},
        [this](const QSqlQuery &row) { append(row.value(0).toString()); }, &error);
    if (isRead)
        m_state = state;
    return isRead;
}

bool TagNameList::followAddedRow(const QSqlDatabase &db)
{
    const std::optional<State> now = stateAfter(db, 1);
    if (!now || now->lastRow <= m_state->lastRow)
        return false;
    append(now->lastName);
    m_state = now;
    return true;
}

bool TagNameList::followChangedRows(const QSqlDatabase &db, int changedRows)
{
    const std::optional<State> now = stateAfter(db, changedRows);
    if (!now || now->lastRow != m_state->lastRow)
        return false;
    m_state = now;
    return true;
}

std::optional<TagNameList::State> TagNameList::stateAfter(const QSqlDatabase &db, int changes) const
{
    const std::optional<State> now = m_state ? read(db) : std::nullopt;
    const bool isExpected = now && now->mark == m_state->mark && now->ownChanges == m_state->ownChanges + changes &&
                            now->foreignChanges == m_state->foreignChanges && now->schema == m_state->schema &&
                            now->temporarySchema == m_state->temporarySchema;
    return isExpected ? now : std::nullopt;
}

void TagNameList::append(const QString &name)
{
    m_names.append(name);
    m_nameSet.insert(name);
}

} // namespace label
