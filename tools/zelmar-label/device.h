// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef ZELMAR_LABEL_TOOL_DEVICE_H
#define ZELMAR_LABEL_TOOL_DEVICE_H

#include "zelmar_label/address_grammar/communicatorcommand.h"
#include "zelmar_label/label_table/addressdiagnosis.h"
#include "zelmar_label/label_table/labelloader.h"

#include <QString>
#include <QStringList>

#include <memory>

/// An address as the user gave it, and what the driver makes of it.
struct ResolvedAddress
{
    QString text;
    /// The address without its station.
    QString device;
    int station = -1;
    /// Type index of its row; -1 when it is refused.
    int row = -1;
    /// Why it is refused, in words; empty otherwise.
    QString reason;
    /// The same as a value, of the address without its station.
    label::AddressDiagnosis diagnosis;
    /// Position in `text` of what is wrong; -1 where no place is meant.
    int position = -1;
    /// Addresses that are accepted instead, at the station of this one.
    QStringList suggestions;

    bool isAccepted() const { return row >= 0; }
    /// The reason and what to write instead.
    QString advice() const;
    /// `address`, a device address, at the station of this one.
    QString atStation(const QString &address) const;
};

/// One driver, asked more strictly than the library asks itself: a station has to be a number, and what a label would
/// take unchecked is refused.
class Device
{
public:
    explicit Device(std::shared_ptr<label::LabelLoader> label);

    ResolvedAddress resolve(const QString &text, int type);

    label::LabelLoader &label() { return *m_label; }
    const label::CommandInformationTalbe &table() const { return m_label->deviceTypesTable(); }
    const label::CommandFormatter &row(int index) const { return *table().formatterAt(index); }

    /// The command of one item at the device address.
    static CommunicatorCommand command(const ResolvedAddress &address, int dataType);

    /// The register, without station, that holds the bit, and its row; an empty text and -1 when there is none.
    QString registerOfBit(const ResolvedAddress &bit, int &row);

private:
    static bool splitStation(ResolvedAddress &address);
    QStringList withoutStation(const ResolvedAddress &address, int type);

    std::shared_ptr<label::LabelLoader> m_label;
};

#endif
