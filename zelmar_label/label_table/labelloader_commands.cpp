// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "zelmar_label/label_table/labelloader.h"

#include "zelmar_label/address_grammar/radixnumber_p.h"

#include <QDebug>

namespace label {

namespace {

constexpr int bitsPerByte = 8;

bool isNullCommand(const CommunicatorCommand &command)
{
    return command.stringKey() == CommunicatorCommand().stringKey();
}

} // namespace

CommunicatorCommand LabelLoader::convertBitCommandToRegisterCommand(const CommunicatorCommand &command, int &typeIndex)
{
    QString convertedAddress;
    const int known = deviceTypes.countFormatters();
    CommunicatorCommand converted =
        deviceTypes.convertBitCommandToRegisterCommand(command, typeIndex, convertedAddress);
    if (!isNullCommand(converted) || addDynamicRow(convertedAddress, WordType, known) < 0)
        return converted;
    return deviceTypes.convertBitCommandToRegisterCommand(command, typeIndex, convertedAddress);
}

bool LabelLoader::isMustContinue(int typeIndex)
{
    const QString rule = deviceTypes.continueRule(typeIndex).toLower();
    return rule == QLatin1String("y") || rule == QLatin1String("yes");
}

bool LabelLoader::isCommandInBlockRange(int typeIndex, const CommunicatorCommand &command,
                                        const CommunicatorCommand &block)
{
    if (command.getStationId() != block.getStationId())
        return false;
    qint64 first = addressRange(typeIndex, command.getAddressString());
    if (first == -1)
        return false;
    const QString blockAddress = block.getAddressString();
    if (deviceTypes.getFirstMatchedAddressIndex(blockAddress, block.dataType) != typeIndex)
        return false;
    qint64 blockStart = addressRange(typeIndex, blockAddress);
    if (blockStart == -1)
        return false;
    qint64 units = static_cast<int>(block.length);
    if (isTypeNeedAlignmentByte(typeIndex)) {
        first /= bitsPerByte;
        blockStart /= bitsPerByte;
        units *= datasize(typeIndex);
    }
    return blockStart <= first && first <= blockStart + units - 1;
}

int LabelLoader::calculateOffsetByte(int typeIndex, const CommunicatorCommand &base, const CommunicatorCommand &command)
{
    const int size = datasize(typeIndex);
    if (size == -1)
        return -1;
    const int low = addressRange(typeIndex, base.getAddressString());
    const int high = addressRange(typeIndex, command.getAddressString());
    if (low == -1 || high == -1)
        return -1;
    if (low > high) {
        qDebug() << "LabelLoader::"
                 << "calculateOffsetByte" << command.address << "range is less then" << base.address;
        return -1;
    }
    const int distance = wrappingDifference(high, low);
    if (isTypeNeedAlignmentByte(typeIndex))
        return distance >> 3;
    return deviceTypes.isSemenseSepcialType(typeIndex) ? distance : wrappingProduct(size, distance);
}

} // namespace label
