// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "zelmar_label/address_grammar/mutexlocker_p.h"
#include "zelmar_label/label_store/boundtext_p.h"
#include "zelmar_label/label_store/labelhold_p.h"
#include "zelmar_label/label_store/labelstore.h"
#include "zelmar_label/tag_store/tagstatements_p.h"
#include "zelmar_label/tag_store/tagsystem.h"

#include <QDebug>
#include <QRegExp>
#include <QSet>

using label::TagStatements;

int TagSystem::getCommunicatorID(int id)
{
    if (id < 0)
        return -1;
    if (isNotNormalTag(id))
        return 0;
    const label::MutexLocker locker(&m_mutex);
    if (m_catchTableReady) {
        const auto record = m_catchTable.constFind(id);
        return record == m_catchTable.constEnd() ? -1 : record->connectorId;
    }
    int link = -1;
    int rows = 0;
    TagStatements::forEachRow(database(), QStringLiteral("select connector_id from custom_tag_table where id = ?"),
                              {id}, [&link, &rows](const QSqlQuery &row) {
                                  link = row.value(0).toInt();
                                  ++rows;
                              });
    return rows == 1 ? link : -1;
}

int TagSystem::getLinkID(int id)
{
    return getCommunicatorID(id);
}

int TagSystem::getCommunicatorID(QObject *object, QString property)
{
    QVariant id;
    {
        const label::MutexLocker locker(&m_mutex);
        id = object->property(property.toLatin1().constData());
    }
    return id.isValid() ? getCommunicatorID(id.toInt()) : -1;
}

int TagSystem::getLinkID(QObject *object, QString property)
{
    return getCommunicatorID(object, std::move(property));
}

QString TagSystem::getLinkName(int linkId)
{
    QString name;
    bool isFound = false;
    TagStatements::forEachRow(database(), QStringLiteral("SELECT LINKID, PLC_MODEL from LINK;"), {},
                              [&](const QSqlQuery &row) {
                                  if (isFound || row.value(0).toInt() != linkId)
                                      return;
                                  isFound = true;
                                  name = row.value(1).toString();
                              });
    return name;
}

label::LabelInterface *TagSystem::getLable(int linkId)
{
    return holdLabelOf(linkId).get();
}

/// The label of the link's device; null when there is none.
std::shared_ptr<label::LabelInterface> TagSystem::holdLabelOf(int linkId)
{
    QString model;
    bool isFound = false;
    TagStatements::forEachRow(database(), QStringLiteral("SELECT LINKID, PLC_MODEL from LINK WHERE LINKID = ?;"),
                              {linkId}, [&model, &isFound](const QSqlQuery &row) {
                                  if (!isFound)
                                      model = row.value(1).toString();
                                  isFound = true;
                              });
    if (!isFound)
        return nullptr;
    QString ignored;
    return label::useCustomLabel(model) ? label::holdCustomLabel(model, ignored) : label::holdLabel(model, ignored);
}

/// The first column of the statement's rows, in row order.
QList<int> TagSystem::idsOf(const QString &statement, const QVariantList &values) const
{
    QList<int> ids;
    TagStatements::forEachRow(database(), statement, values,
                              [&ids](const QSqlQuery &row) { ids.append(row.value(0).toInt()); });
    return ids;
}

QList<int> TagSystem::getAllLinkID()
{
    const QList<int> ids = idsOf(QStringLiteral("select LINKID from LINK GROUP BY LINKID"));
    return QSet<int>(ids.begin(), ids.end()).values();
}

QList<int> TagSystem::getAllEnabledLinkID()
{
    const QList<int> ids = idsOf(QStringLiteral("select LINKID from LINK where ENABLED= 1 GROUP BY LINKID"));
    return QSet<int>(ids.begin(), ids.end()).values();
}

QList<int> TagSystem::stationList(int linkId)
{
    return idsOf(QStringLiteral("SELECT STATIONID FROM NODE WHERE LINKID=? ORDER BY STATIONID ASC;"), {linkId});
}

bool TagSystem::isValidStationID(int id, int station)
{
    const int link = getCommunicatorID(id);
    bool isFound = false;
    const bool succeeded = TagStatements::forEachRow(
        database(), QStringLiteral("SELECT NODEID FROM NODE WHERE STATIONID = ? AND LINKID = ?;"), {station, link},
        [&isFound](const QSqlQuery &) { isFound = true; });
    if (!succeeded)
        qDebug() << "isValidStationID"
                 << "execute failed";
    return isFound;
}

QString TagSystem::getStationID(const QString &address)
{
    QRegExp expression(QStringLiteral("(\\d{0,3})-?([^-]*)"));
    expression.indexIn(address, 0);
    return expression.cap(1);
}

QList<int> TagSystem::getTagIDList()
{
    QList<int> ids = idsOf(tableStatement("select id from %1 "));
    const QSet<int> rows(ids.begin(), ids.end());
    for (auto tag = m_recipeTags.constBegin(); tag != m_recipeTags.constEnd(); ++tag) {
        if (!rows.contains(tag.key()))
            ids.append(tag.key());
    }
    return ids;
}

QList<int> TagSystem::getTagIDList(int linkId)
{
    return idsOf(tableStatement("select id from %1 where connector_id = ? "), {linkId});
}

QList<int> TagSystem::getTagIDsByAddress(int linkId, const QString &address)
{
    if (!label::canBeSought(address))
        return {};
    const QList<int> ids = idsOf(tableStatement("select id,address from %1 where address = ? AND connector_id = ?"),
                                 {label::boundText(address), linkId});
    for (const int id : ids)
        qDebug() << "TagSystem::getTagIDsByAddress " << id;
    return ids;
}

bool TagSystem::isValidTagID(int id)
{
    if (isNotNormalTag(id))
        return true;
    int count = 0;
    QString error;
    const bool succeeded = TagStatements::forEachRow(
        database(), tableStatement("select count(id) from %1 where id = ?"), {id},
        [&count](const QSqlQuery &row) { count = row.value(0).toInt(); }, &error);
    if (!succeeded)
        qDebug() << "TagSystem::isValidTagID " << error;
    return count >= 1;
}
