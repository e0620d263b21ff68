// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "addressjudge.h"

#include "tagtypes.h"

#include "zelmar_label/label_table/addressdiagnosis.h"
#include "zelmar_label/label_table/labelinterface.h"
#include "zelmar_label/tag_store/tagsystem.h"

#include <QSqlQuery>
#include <QVariant>

#include <algorithm>

namespace {

bool isDecimal(const QString &text)
{
    bool isNumber = false;
    text.toInt(&isNumber);
    return isNumber && std::all_of(text.begin(), text.end(),
                                   [](QChar digit) { return digit >= QLatin1Char('0') && digit <= QLatin1Char('9'); });
}

/// The library does not require link names, so some projects have none.
QString nameOfLink(const TagSystem &tags, int id)
{
    QSqlQuery query(tags.database());
    query.exec(QStringLiteral("SELECT LINK_NAME FROM LINK WHERE LINKID = %1").arg(id));
    return query.next() ? query.value(0).toString() : QString();
}

} // namespace

QString LinkInfo::title() const
{
    if (id == 0)
        return tr("Internal tags");
    const QString own = name.isEmpty() ? tr("Link %1").arg(id) : name;
    return isEnabled ? own : tr("%1 (disabled)").arg(own);
}

StationAddress::StationAddress(const QString &text)
    : station(text.left(text.indexOf(QLatin1Char('-')) + 1))
    , device(text.mid(station.size()))
{
}

QString StationAddress::problem() const
{
    if (station.isEmpty())
        return QString();
    const QString text = station.chopped(1);
    if (text.isEmpty())
        return tr("the station number before \"-\" is missing");
    if (!isDecimal(text))
        return tr("the station \"%1\" is not a decimal number").arg(text);
    if (device.contains(QLatin1Char('-')))
        return tr("there is a second \"-\"; it may only separate the station");
    return QString();
}

AddressJudge::AddressJudge(TagSystem &tags)
    : m_tags(tags)
{
}

const QList<int> &AddressJudge::links()
{
    if (!m_ids.isEmpty())
        return m_ids;
    m_ids = m_tags.getAllLinkID();
    std::sort(m_ids.begin(), m_ids.end());
    m_ids.removeAll(0);
    m_ids.prepend(0);
    return m_ids;
}

LinkInfo AddressJudge::readLink(int id)
{
    LinkInfo link;
    link.id = id;
    link.exists = links().contains(id);
    if (id == 0 || !link.exists)
        return link;
    link.name = nameOfLink(m_tags, id);
    link.driver = m_tags.getLinkName(id);
    link.isEnabled = m_tags.getAllEnabledLinkID().contains(id);
    link.stations = m_tags.stationList(id);
    link.label = m_tags.getLable(id);
    // The store makes an empty label for a driver that is not in the database.
    if (link.label && link.label->countRegisterTypes() == 0)
        link.label = nullptr;
    return link;
}

const LinkInfo &AddressJudge::link(int id)
{
    auto known = m_links.find(id);
    if (known == m_links.end())
        known = m_links.insert(id, readLink(id));
    return *known;
}

AddressVerdict AddressJudge::judge(int linkId, int dataType, const QString &address, int scale)
{
    if (!tagtype::isKnown(dataType))
        return {tr("there is no data type %1").arg(dataType), {}};
    if (dataType == tagtype::Ascii && scale < 1)
        return {tr("a text needs a length, its scale, of at least 1"), {}};
    if (linkId == 0)
        return {};
    const LinkInfo &owner = link(linkId);
    if (!owner.exists)
        return {tr("the project has no link %1").arg(linkId), {}};
    if (!owner.label)
        return {tr("link %1: there is no driver \"%2\"").arg(QString::number(linkId), owner.driver), {}};
    const StationAddress parts(address);
    const QString problem = parts.problem();
    if (!problem.isEmpty())
        return {problem, {}};
    if (!parts.station.isEmpty() && !owner.stations.contains(parts.number()))
        return {tr("link %1 has no station %2").arg(QString::number(owner.id), QString::number(parts.number())), {}};
    const label::AddressDiagnosis diagnosis =
        label::diagnoseAddress(*owner.label, parts.device, m_tags.getCommunicatorCommandDataType(dataType));
    // Stricter than the library, which does not check the first address of a new family.
    if (diagnosis.kind() == label::AddressDiagnosis::Kind::Accepted)
        return {};
    AddressVerdict verdict;
    verdict.reason = label::diagnosisSentence(diagnosis);
    for (const QString &device : diagnosis.suggestions)
        verdict.suggestions.append(parts.at(device));
    return verdict;
}
