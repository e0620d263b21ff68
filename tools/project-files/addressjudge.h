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

/// A link of a project.
struct LinkInfo
{
    int id = 0;
    /// Empty if the project does not name its links.
    QString name;
    QString driver;
    bool exists = false;
    bool isEnabled = true;
    /// Ascending.
    QList<int> stations;
    /// Null for link 0 of internal tags, and for a missing driver. The library owns it.
    label::LabelInterface *label = nullptr;

    /// The link's name in lists.
    QString title() const;

private:
    Q_DECLARE_TR_FUNCTIONS(LinkInfo)
};

/// The check result of an address on its link's device.
struct AddressVerdict
{
    /// Why there is no such address; empty if there is.
    QString reason;
    /// Nearest valid addresses, best first.
    QStringList suggestions;

    bool isAccepted() const { return reason.isEmpty(); }
};

/// An address text, split at its station.
struct StationAddress
{
    explicit StationAddress(const QString &text);

    /// Why the station is invalid; empty if it is valid or missing. The library reads any text as station 0 and drops
    /// the text after a second "-", which hides typing errors.
    QString problem() const;

    /// -1 if there is none.
    int number() const { return station.isEmpty() ? -1 : station.chopped(1).toInt(); }

    /// `address`, a device address, with the station of this one.
    QString at(const QString &address) const { return station + address; }

    /// With its "-"; empty if there is none.
    QString station;
    QString device;

private:
    Q_DECLARE_TR_FUNCTIONS(StationAddress)
};

/// Checks the addresses of tags with stricter rules than the library: a station must be a number and a station of the
/// link, and the first address of a dynamic family must be within the family's limits. Stores the links of one project
/// at the first call.
class AddressJudge
{
    Q_DECLARE_TR_FUNCTIONS(AddressJudge)

public:
    explicit AddressJudge(TagSystem &tags);

    /// `scale` is the length of a text.
    AddressVerdict judge(int linkId, int dataType, const QString &address, int scale);

    const LinkInfo &link(int id);

    /// First link 0 of the internal tags, then the project's links by number.
    const QList<int> &links();

private:
    LinkInfo readLink(int id);
    TagSystem &m_tags;
    QList<int> m_ids;
    QHash<int, LinkInfo> m_links;
};

#endif
