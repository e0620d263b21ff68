// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef ZELMAR_LABEL_PROJECTFILES_ADDRESSJUDGE_H
#define ZELMAR_LABEL_PROJECTFILES_ADDRESSJUDGE_H

#include <QCoreApplication>
#include <QHash>
#include <QList>
#include <QString>
#include <QStringList>

class TagSystem;

namespace label {
class LabelInterface;
}

/// A project's connection to a device.
struct LinkInfo
{
    int id = 0;
    /// Of a project that names its links; else empty.
    QString name;
    QString driver;
    bool exists = false;
    bool isEnabled = true;
    /// Ascending.
    QList<int> stations;
    /// Null for the internal tags' link 0, and where the driver is missing. The library owns it.
    label::LabelInterface *label = nullptr;

    /// What to call it in lists.
    QString title() const;

private:
    Q_DECLARE_TR_FUNCTIONS(LinkInfo)
};

/// An address as its link's device sees it.
struct AddressVerdict
{
    /// Why there is no such address; empty when there is.
    QString reason;
    /// Nearest good addresses, best first.
    QStringList suggestions;

    bool isAccepted() const { return reason.isEmpty(); }
};

/// An address text, split at its station.
struct StationAddress
{
    explicit StationAddress(const QString &text);

    /// Why the station is none; empty when it is one, or there is none. The library takes any text as station 0 and
    /// drops what follows a second "-", which hides slips of the pen.
    QString problem() const;

    /// -1 when there is none.
    int number() const { return station.isEmpty() ? -1 : station.chopped(1).toInt(); }

    /// `address`, a device address, at this one's station.
    QString at(const QString &address) const { return station + address; }

    /// With its "-"; empty when there is none.
    QString station;
    QString device;

private:
    Q_DECLARE_TR_FUNCTIONS(StationAddress)
};

/// Says whether tags have addresses that their devices know, more strictly than the library: a station has to be a
/// number, and one of the link's, and the first address of a dynamic family has to lie within the family's limits.
/// Remembers the links of one project from the first question on.
class AddressJudge
{
    Q_DECLARE_TR_FUNCTIONS(AddressJudge)

public:
    explicit AddressJudge(TagSystem &tags);

    /// `scale` is the length of a text.
    AddressVerdict judge(int linkId, int dataType, const QString &address, int scale);

    const LinkInfo &link(int id);

    /// The internal tags' link 0 first, then the project's, by number.
    const QList<int> &links();

private:
    LinkInfo readLink(int id);
    TagSystem &m_tags;
    QList<int> m_ids;
    QHash<int, LinkInfo> m_links;
};

#endif
