// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "zelmar_label/tag_store/tagmessages_p.h"
#include "zelmar_label/tag_store/tagnamelist_p.h"
#include "zelmar_label/tag_store/tagstatements_p.h"
#include "zelmar_label/tag_store/tagsystem.h"

#include <QDebug>
#include <QRegExp>

using label::MessageKind;

namespace {

/// Finds a name and its numbered forms ("name-3"). The name is an expression itself.
QRegExp nameAndNumber(const QString &name)
{
    return QRegExp(QLatin1Char('^') + name + QLatin1String("(-(\\d+))?$"));
}

} // namespace

/// Runs the INSERT; the names are brought up to date when it succeeds.
bool TagSystem::insertTag(const QString &name, const QString &address, int access, int connectorId, int dataType,
                          int scale, QString &error)
{
    const QString statement =
        tableStatement("insert into %1 ") +
        QLatin1String("(name,access,connector_id,data_type,address,scan_time,scale,addition,default_value,user_log,"
                      "user_log_comment) ") +
        QLatin1String(" VALUES (:name, :access, :connector_id, :data_type, :address, :scan_time, :scale, :addition, "
                      ":default_value, :user_log, :user_log_comment)");
    const bool wasCurrent = areNamesCurrent();
    qint64 id = -1;
    if (!m_statements->run(database(), statement,
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
                           error, nullptr, &id))
        return false;
    noteAddedTag(wasCurrent, id);
    return true;
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
    const bool wasCurrent = areNamesCurrent();
    QString error;
    int changedRows = 0;
    if (!m_statements->run(database(), statement,
                           {{QStringLiteral(":name"), name},
                            {QStringLiteral(":connector_id"), connectorId},
                            {QStringLiteral(":data_type"), dataType},
                            {QStringLiteral(":address"), address},
                            {QStringLiteral(":scale"), scale}},
                           error, &changedRows)) {
        label::showMessage(MessageKind::Warning, tr("Modify tag error"), error);
        return false;
    }
    noteModifiedTag(wasCurrent, changedRows);
    return true;
}

/// -1 when neither the name nor a numbered form of it exists. A bare name counts as 0, whatever came before it.
int TagSystem::highestNumberOf(const QString &name) const
{
    const QRegExp expression = nameAndNumber(name);
    int highest = -1;
    for (const QString &known : m_tagNames->names()) {
        if (expression.indexIn(known) < 0)
            continue;
        const QString digits = expression.cap(2);
        const int number = digits.toInt();
        if (digits.isEmpty())
            highest = 0;
        else if (number != 0 && number > highest)
            highest = number;
    }
    return highest;
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
    int highest = highestNumberOf(name);
    QStringList added;
    for (int copy = 0; copy < count; ++copy) {
        QString error;
        if (highest != -1)
            ++highest;
        else if (!insertTag(name, address, 1, connectorId, dataType, scale, error))
            qDebug() << "Add Tag error : " << error;
        added.append(name);
    }
    QList<int> ids;
    for (const QString &one : qAsConst(added))
        ids.append(getIdByTagName(one));
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
    const QString statement = QStringLiteral("update %1 set name = \"%2\" where id = %3")
                                  .arg(customTagTableName(), name, QString::number(id));
    QString error;
    if (!m_statements->forEachRow(
            database(), statement, [](const QSqlQuery &) {}, &error))
        qDebug() << statement << error;
    refreshTagNames();
}
