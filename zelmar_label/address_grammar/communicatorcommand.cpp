// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "zelmar_label/address_grammar/communicatorcommand.h"

#include "zelmar_label/address_grammar/commandkey_p.h"
#include "zelmar_label/address_grammar/stationaddress_p.h"

CommunicatorCommand::CommunicatorCommand()
    : address(label::nullCommandAddress())
{
}

quint64 CommunicatorCommand::getDataSize() const
{
    switch (dataType) {
    case Bit:
        return length == 0 ? 1 : (length + 7) / 8;
    case Byte:
    case Text:
        return length;
    case Word:
        return length * 2;
    case DoubleWord:
        return length * 4;
    case QuadWord:
        return length * 8;
    default:
        return 1;
    }
}

QString CommunicatorCommand::stringKey() const
{
    return label::commandKey(address, dataType, length);
}

int CommunicatorCommand::getStationId() const
{
    return label::stationNumber(address);
}

QString CommunicatorCommand::getAddressString() const
{
    return label::deviceAddress(address);
}
