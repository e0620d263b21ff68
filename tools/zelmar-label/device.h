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

/// An address from the user, and the driver's answer.
struct ResolvedAddress
{
    QString text;
    /// The address without its station.
    QString device;
    int station = -1;
    /// Type index of its row; -1 if it is refused.
    int row = -1;
    /// The reason of the refusal, as text; empty if accepted.
    QString reason;
    /// The same as a value, for the address without its station.
    label::AddressDiagnosis diagnosis;
    /// Position of the fault in `text`; -1 for no position.
    int position = -1;
    /// Addresses to use instead, at the same station.
    QStringList suggestions;

    bool isAccepted() const { return row >= 0; }
    /// The reason and the suggestions.
    QString advice() const;
    /// `address`, a device address, with the same station.
    QString atStation(const QString &address) const;
};

/// One driver with stricter checks than the library's: a station must be a number, and addresses that a label accepts
/// unchecked are refused.
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

    /// The register, without station, that holds the bit, and its row; an empty text and -1 if there is none.
    QString registerOfBit(const ResolvedAddress &bit, int &row);

private:
    static bool splitStation(ResolvedAddress &address);
    QStringList withoutStation(const ResolvedAddress &address, int type);

    std::shared_ptr<label::LabelLoader> m_label;
};

#endif
