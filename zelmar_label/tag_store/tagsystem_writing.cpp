// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "zelmar_label/label_store/boundtext_p.h"
#include "zelmar_label/tag_store/tagids_p.h"
#include "zelmar_label/tag_store/tagmessages_p.h"
#include "zelmar_label/tag_store/tagnamelist_p.h"
#include "zelmar_label/tag_store/tagstatements_p.h"
#include "zelmar_label/tag_store/tagsystem.h"

#include <QDebug>
#include <QRegExp>

#include <algorithm>

using label::MessageKind;
using label::TagStatements;

namespace {

/// Matches a name and its numbered forms ("name-3"). The name is itself an expression.
QRegExp nameAndNumber(const QString &name)
{
    return QRegExp(QLatin1Char('^') + name + QLatin1String("(-(\\d+))?$"));
}

/// True when the id behind `given`, or behind some new rows more, is that of a system or recipe tag.
bool isBeforeReservedIds(qint64 given)
{
    constexpr int rows = 1000;
    const auto isBefore = [given](int first, int last) { return given >= first - rows && given < last; };
    return isBefore(label::firstSystemTagId, label::lastSystemTagId) ||
           isBefore(label::firstRecipeTagId, label::lastRecipeRowTagId);
}

/// False for 0, which is no tag's number, and for digits of other scripts.
bool isNumberAboveZero(const QString &digits)
{
    const auto isDigit = [](QChar character) { return character >= QLatin1Char('0') && character <= QLatin1Char('9'); };
    const auto isNotZero = [](QChar character) { return character != QLatin1Char('0'); };
    return std::all_of(digits.begin(), digits.end(), isDigit) && std::any_of(digits.begin(), digits.end(), isNotZero);
}

} // namespace

/// Runs the INSERT; updates the names when it succeeds.
bool TagSystem::insertTag(const QString &name, const QString &address, int access, int connectorId, int dataType,
                          int scale, QString &error)
{
    const QString statement =
        tableStatement("insert into %1 ") +
        QLatin1String("(id,name,access,connector_id,data_type,address,scan_time,scale,addition,default_value,user_log,"
                      "user_log_comment) ") +
        QLatin1String(" VALUES (") + newId() +
        QLatin1String(", :name, :access, :connector_id, :data_type, :address, :scan_time, :scale, :addition, "
                      ":default_value, :user_log, :user_log_comment)");
    if (!TagStatements::run(database(), statement,
                            {{QStringLiteral(":name"), name},
                             {QStringLiteral(":access"), access},
                             {QStringLiteral(":connector_id"), connectorId},
                             {QStringLiteral(":data_type"), dataType},
                             {QStringLiteral(":address"), address},
                             {QStringLiteral(":scan_time"), 1},
                             {QStringLiteral(":scale"), scale},
                             {QStringLiteral(":addition"), 0},
                             {QStringLiteral(":default_value"), 0},
                             {QStringLiteral(":user_log"), 0},
                             {QStringLiteral(":user_log_comment"), QString(QLatin1String(""))}},
                            error))
        return false;
    if (!m_tagNames->followAddedRow(database()))
        refreshTagNames();
    return true;
}

/// The id of a new row as an expression of its INSERT: NULL lets the database count; if that would give the id of a
/// system or recipe tag, the first id after those.
QString TagSystem::newId() const
{
    const qint64 counted = countedId();
    if (!isBeforeReservedIds(highestId()) && !isBeforeReservedIds(counted))
        return QStringLiteral("NULL");
    // The statement itself tests this, so that no other writer comes in between.
    return tableStatement(
               "(SELECT CASE WHEN next BETWEEN %2 AND %3 THEN %3 + 1 WHEN next BETWEEN %4 AND %5 THEN %5 + 1 "
               "END FROM (SELECT max(ifnull(max(id), 0), %6) + 1 AS next FROM %1))")
        .arg(label::firstSystemTagId)
        .arg(label::lastSystemTagId)
        .arg(label::firstRecipeTagId)
        .arg(label::lastRecipeRowTagId)
        .arg(counted);
}

qint64 TagSystem::highestId() const
{
    qint64 highest = 0;
    TagStatements::forEachRow(database(), tableStatement("SELECT max(id) FROM %1"), {},
                              [&highest](const QSqlQuery &row) { highest = row.value(0).toLongLong(); });
    return highest;
}

/// The highest id that the database has given, also to a row deleted since. Only a table that the project made itself
/// records it; else 0.
qint64 TagSystem::countedId() const
{
    const QSqlDatabase db = database();
    bool remembers = false;
    TagStatements::forEachRow(db, QStringLiteral("SELECT 1 FROM main.sqlite_master WHERE name = 'sqlite_sequence'"), {},
                              [&remembers](const QSqlQuery &) { remembers = true; });
    qint64 counted = 0;
    if (remembers)
        TagStatements::forEachRow(db, QStringLiteral("SELECT seq FROM sqlite_sequence WHERE name = ?"),
                                  {customTagTableName()},
                                  [&counted](const QSqlQuery &row) { counted = row.value(0).toLongLong(); });
    return counted;
}

void TagSystem::addDafaultTag(const QString &name)
{
    if (name.isEmpty() || !isNewTag(name))
        return;
    QString error;
    if (insertTag(name, QString(QLatin1String("")), 0, 0, 1, 1, error))
        return;
    label::showMessage(MessageKind::Warning, tr("Error"), tr("Insert tag error."));
    refreshTagNames();
}

bool TagSystem::addTag(const QString &name, const QString &address, int connectorId, int dataType, int scale)
{
    if (!isNewTag(name))
        return false;
    QString error;
    if (insertTag(name, address, 0, connectorId, dataType, scale, error))
        return true;
    label::showMessage(MessageKind::Warning, tr("Error"), tr("Insert tag error."));
    return false;
}

bool TagSystem::modifyTag(const QString &name, const QString &address, int connectorId, int dataType, int scale)
{
    if (isNewTag(name))
        addTag(name, address, connectorId, dataType, scale);
    if (name.isEmpty())
        return false;
    const QString statement =
        tableStatement("UPDATE %1 ") +
        QLatin1String("SET access = 1, connector_id = :connector_id,  data_type = :data_type, ") +
        QLatin1String("address = :address ,  scan_time = 1 , scale = :scale , addition = 0, ") +
        QLatin1String("default_value = 0, user_log = 0, user_log_comment = \"\" WHERE name = :name ;");
    QString error;
    int changedRows = 0;
    if (!TagStatements::run(database(), statement,
                            {{QStringLiteral(":name"), name},
                             {QStringLiteral(":connector_id"), connectorId},
                             {QStringLiteral(":data_type"), dataType},
                             {QStringLiteral(":address"), address},
                             {QStringLiteral(":scale"), scale}},
                            error, &changedRows)) {
        label::showMessage(MessageKind::Warning, tr("Modify tag error"), error);
        return false;
    }
    if (!m_tagNames->followChangedRows(database(), changedRows))
        refreshTagNames();
    return true;
}

/// True when the name exists, with or without a number after it.
bool TagSystem::hasNumberedForm(const QString &name) const
{
    const QRegExp expression = nameAndNumber(name);
    const QStringList &names = m_tagNames->names();
    return std::any_of(names.begin(), names.end(), [&expression](const QString &known) {
        return expression.indexIn(known) >= 0 && (expression.cap(2).isEmpty() || isNumberAboveZero(expression.cap(2)));
    });
}

QList<int> TagSystem::addTags(int id, QPair<QString, CommunicatorCommand> source, int count)
{
    const QString ownName = getTagNameById(id);
    if (ownName.isEmpty())
        return {id};
    const bool isOwn = source.first.isNull();
    const QString name = isOwn ? ownName : source.first;
    const QString address = isOwn ? QString() : source.second.address;
    const int scale = isOwn ? 1 : static_cast<int>(source.second.length);
    if (name.isEmpty())
        return {};
    const int connectorId = getCommunicatorID(id);
    const int dataType = getDataTypeByID(id);
    const bool isNew = !hasNumberedForm(name);
    for (int copy = 0; isNew && copy < count; ++copy) {
        QString error;
        if (!insertTag(name, address, 1, connectorId, dataType, scale, error))
            qDebug() << "Add Tag error : " << error;
    }
    QList<int> ids;
    for (int copy = 0; copy < count; ++copy)
        ids.append(getIdByTagName(name));
    refreshTagNames();
    return ids;
}

QList<int> TagSystem::addTags(int id, int count)
{
    return addTags(id, qMakePair(QString(), CommunicatorCommand()), count);
}

void TagSystem::setTagNameById(QString name, int id)
{
    const QRegExp expression = nameAndNumber(name);
    for (const QString &known : m_tagNames->names()) {
        if (expression.indexIn(known) >= 0)
            return;
    }
    QString error;
    if (!rename(id, name, error))
        qDebug() << QStringLiteral("update %1 set name = \"%2\" where id = %3")
                        .arg(customTagTableName(), name, QString::number(id))
                 << error;
    refreshTagNames();
}

/// A name with a double quote or a zero character is refused.
bool TagSystem::rename(int id, const QString &name, QString &error)
{
    if (name.contains(QLatin1Char('"')) || name.contains(QChar(0))) {
        error = QStringLiteral("a name holds no double quote and no zero character");
        return false;
    }
    return TagStatements::run(database(), tableStatement("update %1 set name = :name where id = :id"),
                              {{QStringLiteral(":name"), label::boundText(name)}, {QStringLiteral(":id"), id}}, error);
}
