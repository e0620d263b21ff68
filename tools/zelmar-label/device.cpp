// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "device.h"

#include "addressjudge.h"

QString ResolvedAddress::atStation(const QString &address) const
{
    return station < 0 ? address : QString::number(station) + QLatin1Char('-') + address;
}

QString ResolvedAddress::advice() const
{
    if (suggestions.isEmpty())
        return reason;
    return QStringLiteral("%1; try %2").arg(reason, suggestions.join(QStringLiteral(" or ")));
}

Device::Device(std::shared_ptr<label::LabelLoader> label)
    : m_label(std::move(label))
{
}

/// False, with a reason, if the station is invalid.
bool Device::splitStation(ResolvedAddress &address)
{
    const StationAddress parts(address.text);
    address.device = parts.device;
    address.reason = parts.problem();
    if (!address.reason.isEmpty())
        address.diagnosis.reason = label::AddressDiagnosis::StationNotNumber{};
    else
        address.station = parts.number();
    return address.reason.isEmpty();
}

/// Likely corrections of an address with an invalid station: without the "-", with a separator in its place, or without
/// the station.
QStringList Device::withoutStation(const ResolvedAddress &address, int type)
{
    QStringList texts;
    for (const char *const separator : {"", ".", ":", "/"})
        texts.append(QString(address.text).replace(QLatin1Char('-'), QLatin1String(separator)));
    texts.append(address.device);
    QStringList accepted;
    for (const QString &text : qAsConst(texts)) {
        if (!text.contains(QLatin1Char('-')) && !accepted.contains(text) &&
            label::diagnoseAddress(label(), text, type).kind() == label::AddressDiagnosis::Kind::Accepted)
            accepted.append(text);
    }
    return accepted;
}

ResolvedAddress Device::resolve(const QString &text, int type)
{
    ResolvedAddress address;
    address.text = text;
    if (!splitStation(address)) {
        address.suggestions = withoutStation(address, type);
        return address;
    }
    address.diagnosis = label::diagnoseAddress(label(), address.device, type);
    if (address.diagnosis.kind() == label::AddressDiagnosis::Kind::Accepted) {
        address.row = m_label->addressValidation(address.device, type);
        return address;
    }
    address.reason = label::diagnosisSentence(address.diagnosis);
    if (address.diagnosis.position() >= 0)
        address.position = address.diagnosis.position() + text.size() - address.device.size();
    for (const QString &suggestion : qAsConst(address.diagnosis.suggestions))
        address.suggestions.append(address.atStation(suggestion));
    return address;
}

CommunicatorCommand Device::command(const ResolvedAddress &address, int dataType)
{
    CommunicatorCommand command;
    command.address = address.device;
    command.dataType = static_cast<CommunicatorCommand::DataType>(dataType);
    return command;
}

QString Device::registerOfBit(const ResolvedAddress &bit, int &row)
{
    row = -1;
    if (!m_label->canConvertToRegisterCommand(bit.row))
        return QString();
    const CommunicatorCommand converted =
        m_label->convertBitCommandToRegisterCommand(command(bit, label::BitType), row);
    if (converted.address != CommunicatorCommand().address)
        return converted.address;
    row = -1;
    return QString();
}
