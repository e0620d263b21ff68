// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "zelmar_label/label_table/commandinformationtalbe.h"

#include "zelmar_label/address_grammar/radixnumber_p.h"

#include <QDebug>

#include <algorithm>
#include <cmath>
#include <limits>

namespace label {

namespace {

/// Whole or begun units in a number of bits.
int unitsOfBits(int bits, int unitBytes)
{
    return unitBytes <= 0 ? 0 : static_cast<int>(std::ceil(bits / (unitBytes * 8.0)));
}

/// The next multiple of `alignment` above `length`: a multiple itself grows by a whole group.
int paddedLength(int length, int alignment)
{
    return wrappingSum(length, alignment - length % alignment);
}

void reportWrongIndex(const char *text, int typeIndex)
{
    qDebug() << text << typeIndex;
}

} // namespace

QList<CommunicatorCommand> CommandInformationTalbe::normalizeCommand(int typeIndex,
                                                                     const CommunicatorCommand &command) const
{
    if (isIndex(typeIndex))
        return row(typeIndex).autoCompleteCommand(command);
    reportWrongIndex("CommandInformationTalbe::autoCompleteCommand wrong type_index ", typeIndex);
    return {};
}

QList<CommunicatorCommand>
CommandInformationTalbe::makeContinueCommand(int typeIndex, const CommunicatorCommand &command, int count) const
{
    if (isIndex(typeIndex))
        return row(typeIndex).makeContinueCommand(command, count);
    reportWrongIndex("CommandInformationTalbe::makeContinueCommand wrong type_index ", typeIndex);
    return {};
}

QList<CommunicatorCommand> CommandInformationTalbe::makeContinueCommandwithCap(int typeIndex,
                                                                               const CommunicatorCommand &command,
                                                                               int count, int cap,
                                                                               bool checkRange) const
{
    if (isIndex(typeIndex))
        return row(typeIndex).makeContinueCommandwithCap(command, count, cap, checkRange);
    reportWrongIndex("CommandInformationTalbe::makeContinueCommand wrong type_index ", typeIndex);
    return {};
}

QList<CommunicatorCommand> CommandInformationTalbe::makeBlockCommand(int stationId, int typeIndex, int start,
                                                                     int length) const
{
    const int size = datasize(typeIndex);
    const int units = blocksize(typeIndex);
    if (!isIndex(typeIndex)) {
        reportWrongIndex("CommandInformationTalbe::makeBlockCommand wrong type_index ", typeIndex);
        return {};
    }
    const CommandFormatter &formatter = row(typeIndex);
    const bool countsBits = formatter.isTypeRangeNeedAlignmentByte();
    const bool advancesInBits = formatter.aligmentSize() > 1;
    const qint64 limit =
        countsBits ? qBound<qint64>(0, qint64(units) * size, std::numeric_limits<int>::max()) * 8 : units;
    QList<CommunicatorCommand> blocks;
    // Without room for one number the loop would never end.
    if (limit <= 0)
        return blocks;
    while (length > 0) {
        int chunk = static_cast<int>(std::min<qint64>(length, limit));
        length -= chunk;
        if (countsBits)
            chunk = unitsOfBits(chunk, size);
        blocks.append(formatter.makeBlockCommand(stationId, start, chunk));
        const int numbersInUnit = advancesInBits ? wrappingProduct(size, 8) : 1;
        start = wrappingSum(start, wrappingProduct(chunk, numbersInUnit));
    }
    return blocks;
}

CommunicatorCommand CommandInformationTalbe::makeBlockCommandWithoutSizeLimit(int stationId, int typeIndex, int start,
                                                                              int length) const
{
    if (!isIndex(typeIndex)) {
        reportWrongIndex("CommandInformationTalbe::makeBlockCommand wrong type_index ", typeIndex);
        return CommunicatorCommand();
    }
    const CommandFormatter &formatter = row(typeIndex);
    if (formatter.isTypeRangeNeedAlignmentByte()) {
        const int alignment = formatter.aligmentSize();
        const int bits = alignment > 1 ? paddedLength(length, alignment) : length;
        length = unitsOfBits(bits, static_cast<int>(formatter.datasize()));
    }
    return formatter.makeBlockCommand(stationId, start, length);
}

CommunicatorCommand CommandInformationTalbe::convertBitCommandToRegisterCommand(const CommunicatorCommand &command,
                                                                                int &typeIndex,
                                                                                QString &convertedAddress) const
{
    if (command.dataType != CommunicatorCommand::Bit) {
        qDebug() << "CommandInformationTalbe::convertBitCommandToRegisterCommand -- Argument cmd is not bit type";
        return CommunicatorCommand();
    }
    const QString body = command.getAddressString();
    const int bitRow = getFirstMatchedAddressIndex(body, command.dataType);
    if (bitRow < 0) {
        qDebug() << QStringLiteral("No match address (%1) in specific type (%2)")
                        .arg(command.address, QString::number(command.dataType));
        return CommunicatorCommand();
    }
    const CommandFormatter &formatter = row(bitRow);
    const int offset = formatter.getbitOffset(body);
    convertedAddress = formatter.convertToRegisterAddress(command);
    typeIndex = getFirstMatchedAddressIndex(convertedAddress, WordType);
    if (typeIndex < 0) {
        qDebug() << "convertBitCommandToRegisterCommand"
                 << QStringLiteral("ERROR: %1 cant not match any type. ").arg(convertedAddress);
        return CommunicatorCommand();
    }
    const int registerBits = wrappingProduct(datasize(typeIndex), 8);
    if (registerBits < offset) {
        qDebug() << "convertBitCommandToRegisterCommand"
                 << QStringLiteral("ERROR: [%1] bit offset(%2) is bigger than converted command [%3] datasize(%4).")
                        .arg(command.address, QString::number(offset), convertedAddress, QString::number(registerBits));
        return CommunicatorCommand();
    }
    CommunicatorCommand converted;
    converted.dataType = static_cast<CommunicatorCommand::DataType>(datatype(typeIndex));
    converted.address = convertedAddress;
    return converted;
}

} // namespace label
