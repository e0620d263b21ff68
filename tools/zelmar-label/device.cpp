// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "device.h"

#include "zelmar_label/label_table/addressdiagnosis.h"

#include <algorithm>

namespace {

bool isDecimal(const QString &text)
{
    bool fits = false;
    text.toInt(&fits);
    return fits && std::all_of(text.begin(), text.end(), [](QChar character) {
               return character >= QLatin1Char('0') && character <= QLatin1Char('9');
           });
}

} // namespace

QString ResolvedAddress::atStation(const QString &address) const
{
    return station < 0 ? address : QString::number(station) + QLatin1Char('-') + address;
}

Device::Device(std::shared_ptr<label::LabelLoader> label)
    : m_label(std::move(label))
    , m_ownRows(m_label->countType(0))
{
}

/// False with a reason when the station is none. The library takes any text as station 0 and drops what follows a
/// second "-", which hides slips of the pen.
bool Device::splitStation(ResolvedAddress &address) const
{
    const int separator = address.text.indexOf(QLatin1Char('-'));
    address.device = address.text.mid(separator + 1);
    if (separator < 0)
        return true;
    const QString station = address.text.left(separator);
    if (station.isEmpty())
        address.reason = QStringLiteral("the station number in front of \"-\" is missing");
    else if (!isDecimal(station))
        address.reason = QStringLiteral("the station \"%1\" is no decimal number").arg(station);
    else if (address.device.contains(QLatin1Char('-')))
        address.reason = QStringLiteral("a second \"-\" follows; only a station is set off by one");
    else
        address.station = station.toInt();
    return address.reason.isEmpty();
}

ResolvedAddress Device::resolve(const QString &text, int type)
{
    ResolvedAddress address;
    address.text = text;
    if (!splitStation(address))
        return address;
    int index = table().getFirstMatchedAddressIndex(address.device, type);
    if (index < 0) {
        const label::AddressDiagnosis diagnosis = label::diagnoseAddress(table(), address.device, type);
        // The family's row is there already; the label would add it again for each address that the row refuses.
        if (diagnosis.row >= m_ownRows) {
            address.reason = label::diagnosisSentence(diagnosis);
            return address;
        }
        index = m_label->addressValidation(address.device, type);
    }
    const bool accepts =
        index >= 0 && row(index).isAddressValid(address.device) && label::passesTypeFilter(row(index).type(), type);
    if (!accepts) {
        address.reason = label::diagnosisSentence(label::diagnoseAddress(table(), address.device, type));
        return address;
    }
    // A template matches its own name.
    if (label::isFamilyTemplate(row(index))) {
        address.reason = QStringLiteral("it is the name of a family of formats and no address; an address is %1")
                             .arg(label::exampleAddress(row(index)));
        return address;
    }
    address.row = index;
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
