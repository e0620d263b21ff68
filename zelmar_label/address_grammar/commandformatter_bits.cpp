// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "zelmar_label/address_grammar/commandformatter.h"

#include "zelmar_label/address_grammar/addressrow.h"
#include "zelmar_label/address_grammar/radixnumber_p.h"
#include "zelmar_label/address_grammar/stationaddress_p.h"

#include <QDebug>

namespace label {

QList<CommunicatorCommand> CommandFormatter::makeBitContinueCommand(const CommunicatorCommand &command, int count,
                                                                    int step, bool checkRange) const
{
    if (m_script)
        return m_script->makeBitContinueCommand(command, count, step);
    const int station = command.getStationId();
    const QString address = command.getAddressString();
    int word = getAddresRangePart(address);
    int bit = getbitOffset(address);
    const int bitRadix = bitbase();
    const QString separator = m_row->rule.rebuildSeparator();
    const QString prefix = command.address.left(rangePlace(address).start);

    QList<CommunicatorCommand> run;
    if (m_row->rule.isOnePart()) {
        for (int pass = 0; pass < count && !(checkRange && isBeyondLimits(word, step)); ++pass) {
            makeOnePartBitCommands(run, prefix, word, checkRange, station);
            word = wrappingSum(word, step);
        }
        return run;
    }
    for (int pass = 0; pass < count; ++pass) {
        makeTwoPartBitCommands(run, prefix, word, bit, bitRadix, separator, checkRange, station);
        bit = wrappingSum(bit, step);
        bitOffsetCarry(word, bit, bitRadix);
    }
    return run;
}

void CommandFormatter::makeOnePartBitCommands(QList<CommunicatorCommand> &list, QString prefix, int value,
                                              bool checkRange, int stationId) const
{
    if (checkRange && !isRangeValid(value))
        return;
    prefix += numberText(value, columns().base);
    appendNew(list, prefix, stationId);
}

void CommandFormatter::makeTwoPartBitCommands(QList<CommunicatorCommand> &list, QString prefix, int word, int bit,
                                              int bitRadix, QString separator, bool checkRange, int stationId) const
{
    // The limits are word limits, but they are tested against the bit: words beyond the end pass, so a run may cross
    // it.
    if (checkRange && !isRangeValid(bit))
        return;
    // 32 means a bit from 0 to 31 in decimal.
    separator += stringWithDigits(numberText(bit, bitRadix == 32 ? 10 : bitRadix));
    prefix += numberText(word, columns().base);
    prefix += separator;
    appendNew(list, prefix, stationId);
}

CommunicatorCommand CommandFormatter::makeBlockCommand(int stationId, int value, int length) const
{
    CommunicatorCommand block;
    block.address = withStation(stationId, columns().prefixSymbol + numberText(value, columns().base));
    block.dataType = static_cast<CommunicatorCommand::DataType>(columns().type);
    block.length = static_cast<quint64>(static_cast<qint64>(length));
    return block;
}

QString CommandFormatter::convertToRegisterAddress(const CommunicatorCommand &command) const
{
    if (m_script)
        return m_script->convertToRegisterAddress(command.address);
    const QString address =
        convertedRegisterCommandSymbol() + convertedRagisterCommandRange(command.getAddressString());
    return withStation(command.getStationId(), address);
}

QString CommandFormatter::convertedRegisterCommandSymbol() const
{
    return m_row->rule.registerSymbol(columns().prefixSymbol);
}

QString CommandFormatter::convertedRagisterCommandRange(const QString &address) const
{
    QString word = m_row->rule.wordPart(getRangeString(address));
    if (m_row->rule.isSplit())
        return word;
    const std::optional<int> number = readNumber(word, columns().base);
    if (!number) {
        qDebug() << "convertedRegisterTypeCommandRange"
                 << "Convert range string to number fail" << address;
        return QString();
    }
    const int value = *number;
    // Wraps, because the number before the lowest one must not be undefined.
    const int before = wrappingDifference(value, 1);
    switch (m_row->rule.registerAlignment()) {
    case MultipleRule::Alignment::Of8:
        return numberText(value - value % 8, columns().base);
    case MultipleRule::Alignment::Of8Plus1:
        return numberText(before / 8 * 8 + 1, columns().base);
    case MultipleRule::Alignment::Of16:
        return numberText(value - value % 16, columns().base);
    case MultipleRule::Alignment::Of16Plus1:
        return numberText(before / 16 * 16 + 1, columns().base);
    case MultipleRule::Alignment::None:
    case MultipleRule::Alignment::Of64Plus1:
        break;
    }
    return QString();
}

} // namespace label
