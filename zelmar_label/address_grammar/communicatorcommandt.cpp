// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "zelmar_label/address_grammar/communicatorcommandt.h"

#include "zelmar_label/address_grammar/commandkey_p.h"
#include "zelmar_label/address_grammar/communicatorcommand.h"
#include "zelmar_label/address_grammar/mutexlocker_p.h"
#include "zelmar_label/address_grammar/stationaddress_p.h"

#include <QDataStream>

namespace {

// For the static functions, which several threads may call for one command.
QBasicMutex s_stationMutex;

// Wraps around instead of overflowing: lengths come from streams and may be wrong.
int multiplied(qint32 length, quint32 bytes)
{
    return static_cast<int>(static_cast<quint32>(length) * bytes);
}

} // namespace

CommunicatorCommandT::CommunicatorCommandT()
    : address(label::nullCommandAddress())
{
}

CommunicatorCommandT::CommunicatorCommandT(const CommunicatorCommandT &other)
    : scanTime(other.scanTime)
    , dataType(other.dataType)
    , length(other.length)
    , address(other.address)
    , key(other.key)
{
}

CommunicatorCommandT &CommunicatorCommandT::operator=(const CommunicatorCommandT &other)
{
    address = other.address;
    dataType = other.dataType;
    length = other.length;
    scanTime = other.scanTime;
    key = other.key;
    return *this;
}

CommunicatorCommandT::CommunicatorCommandT(const CommunicatorCommand &command)
{
    *this = command;
}

CommunicatorCommandT &CommunicatorCommandT::operator=(const CommunicatorCommand &command)
{
    address = command.address;
    dataType = command.dataType;
    length = static_cast<qint32>(command.length);
    scanTime = command.scanTime;
    makekey();
    return *this;
}

CommunicatorCommandT::~CommunicatorCommandT() = default;

void CommunicatorCommandT::outputDataStream(QDataStream &stream)
{
    const label::MutexLocker locker(&mutex);
    stream << scanTime << dataType << length << address;
}

void CommunicatorCommandT::inputDataStream(QDataStream &stream)
{
    const label::MutexLocker locker(&mutex);
    stream >> scanTime >> dataType >> length >> address;
}

int CommunicatorCommandT::getStationId(const CommunicatorCommandT &command)
{
    const label::MutexLocker locker(&s_stationMutex);
    return label::stationNumber(command.address);
}

QString CommunicatorCommandT::getAddressString(const CommunicatorCommandT &command)
{
    const label::MutexLocker locker(&s_stationMutex);
    return label::deviceAddress(command.address);
}

QString CommunicatorCommandT::dataTypeName() const
{
    const label::MutexLocker locker(&mutex);
    switch (dataType) {
    case CommunicatorCommand::Bit:
        return QStringLiteral("Bit");
    case CommunicatorCommand::Byte:
        return QStringLiteral("Byte");
    case CommunicatorCommand::Word:
        return QStringLiteral("Word");
    case CommunicatorCommand::DoubleWord:
        return QStringLiteral("Double Word");
    default:
        return QStringLiteral("unknow type");
    }
}

bool CommunicatorCommandT::isReadOnce() const
{
    return scanTime == 0;
}

bool CommunicatorCommandT::isBlockCommand() const
{
    return length > 1;
}

bool CommunicatorCommandT::isNull() const
{
    const label::MutexLocker locker(&mutex);
    return address.isEmpty() || address == label::nullCommandAddress();
}

QString CommunicatorCommandT::stringKey() const
{
    return key;
}

int CommunicatorCommandT::getDataSize() const
{
    const label::MutexLocker locker(&mutex);
    switch (dataType) {
    case CommunicatorCommand::Bit:
        return length <= 1 ? length : (length >> 3) + 1;
    case CommunicatorCommand::Word:
        return multiplied(length, 2);
    case CommunicatorCommand::DoubleWord:
    case CommunicatorCommand::QuadWord:
        return multiplied(length, 4);
    default:
        return length;
    }
}

void CommunicatorCommandT::makekey()
{
    const label::MutexLocker locker(&mutex);
    key = label::commandKey(address, dataType, length);
}
