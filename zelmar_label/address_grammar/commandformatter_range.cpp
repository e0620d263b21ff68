// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "zelmar_label/address_grammar/commandformatter.h"

#include "zelmar_label/address_grammar/addressrow.h"
#include "zelmar_label/address_grammar/radixnumber_p.h"
#include "zelmar_label/address_grammar/stationaddress_p.h"

#include <QDebug>
#include <QVariant>

namespace label {

int CommandFormatter::matchedLength(const QString &address) const
{
    const QString device = deviceAddress(address);
    return compiledPattern().matches(device) ? address.size() : compiledPattern().front(device);
}

bool CommandFormatter::canBeCompleted(const QString &deviceAddress) const
{
    return compiledPattern().canBeCompleted(deviceAddress);
}

int CommandFormatter::matchedFront(const QString &deviceAddress) const
{
    return compiledPattern().matches(deviceAddress) ? deviceAddress.size() + 1
                                                    : qMax(0, compiledPattern().front(deviceAddress));
}

QString CommandFormatter::withNumber(const QString &deviceAddress, const QString &digits) const
{
    const TextPlace range = rangePlace(deviceAddress);
    if (range.start < 0)
        return QString();
    const int bitSize = m_row->isBit() ? rule().bitTail(deviceAddress.mid(range.start, range.size)).size() : 0;
    return deviceAddress.left(range.start) + digits + deviceAddress.mid(range.start + range.size - bitSize);
}

QString CommandFormatter::getRangeString(const QString &address) const
{
    const TextPlace range = rangePlace(address);
    return range.start < 0 ? QString() : address.mid(range.start, range.size);
}

QString CommandFormatter::getEditorUsedRangeString(const QString &address) const
{
    const QString &symbol = columns().editorPrefixSymbol;
    return symbol.isEmpty() ? getRangeString(address) : address.mid(symbol.size());
}

int CommandFormatter::getAddresRangePart(const QString &address) const
{
    if (m_script)
        return m_script->getAddressRange(address);
    const TextPlace range = rangePlace(address);
    return m_row->number(QStringView(address).mid(qMax(0, range.start), range.size));
}

int CommandFormatter::getbitOffset(const QString &address) const
{
    if (!m_row->isBit())
        return -1;
    const TextPlace range = rangePlace(address);
    if (range.start < 0 && !m_row->pattern.isFoundIn(address))
        return -1;
    if (m_script)
        return m_script->bitoffset(address);
    return m_row->bit(QStringView(address).mid(qMax(0, range.start), range.size));
}

void CommandFormatter::bitOffsetCarry(int &word, int &bit, int base) const
{
    if (base == 10 && m_row->rule.isSplit()) {
        const int bitsPerWord = m_row->rule.bitRadix() == 32 ? 32 : 16;
        const int words = bit / bitsPerWord;
        bit %= bitsPerWord;
        word = wrappingSum(word, words);
        return;
    }
    const int digits = m_row->rule.minimumBitDigits();
    const QString text = numberText(bit, base);
    if (text.size() <= digits)
        return;
    word = wrappingSum(word, QVariant(text.left(text.size() - digits)).toInt());
    bit = QVariant(text.right(digits)).toInt();
}

bool CommandFormatter::isRangeValid(int value) const
{
    if (!m_row->isBit() && !validateMultiple(value))
        return false;
    if (!m_row->first || !m_row->last) {
        qDebug() << "isRangeValid"
                 << "CommandFormatter isRangeValid data error";
        return false;
    }
    return *m_row->first <= value && value <= *m_row->last;
}

bool CommandFormatter::isAddressValid(const QString &address) const
{
    return isDeviceAddressValid(deviceAddress(address));
}

bool CommandFormatter::isDeviceAddressValid(const QString &deviceAddress) const
{
    if (!compiledPattern().matches(deviceAddress))
        return false;
    const int number = getAddresRangePart(deviceAddress);
    return number == -1 || isRangeValid(number);
}

bool CommandFormatter::isAddressDataTypeMatch(const QString &address, CommunicatorCommand::DataType type) const
{
    if (!compiledPattern().matches(address) || !isRangeValid(getAddresRangePart(address)))
        return false;
    return (type == CommunicatorCommand::Bit) == m_row->isBit();
}

} // namespace label
