// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "zelmar_label/address_grammar/commandformatter.h"

#include "zelmar_label/address_grammar/patternprefix_p.h"
#include "zelmar_label/address_grammar/radixnumber_p.h"
#include "zelmar_label/address_grammar/stationaddress_p.h"

#include <QDebug>
#include <QVariant>

namespace label {

int CommandFormatter::matchedLength(const QString &address) const
{
    return m_pattern.exactMatch(deviceAddress(address)) ? address.size() : m_pattern.matchedLength();
}

bool CommandFormatter::canBeCompleted(const QString &deviceAddress) const
{
    if (m_patternPrefix->rulesOutCompletion(deviceAddress))
        return false;
    return m_pattern.exactMatch(deviceAddress) || m_pattern.matchedLength() >= deviceAddress.size();
}

int CommandFormatter::matchedFront(const QString &deviceAddress) const
{
    return m_pattern.exactMatch(deviceAddress) ? deviceAddress.size() + 1 : qMax(0, m_pattern.matchedLength());
}

int CommandFormatter::possibleFront(const QString &deviceAddress) const
{
    const int front = m_patternPrefix->possibleFront(deviceAddress);
    return front < deviceAddress.size() ? front : deviceAddress.size() + 1;
}

QString CommandFormatter::withNumber(const QString &deviceAddress, const QString &digits) const
{
    if (m_pattern.indexIn(deviceAddress) < 0)
        return QString();
    const int position = m_pattern.pos(m_addressGroupIndex);
    if (position < 0)
        return QString();
    const QString range = m_pattern.cap(m_addressGroupIndex);
    const int bitSize = m_type == CommunicatorCommand::Bit ? m_multipleRule.bitTail(range).size() : 0;
    return deviceAddress.left(position) + digits + deviceAddress.mid(position + range.size() - bitSize);
}

QString CommandFormatter::getRangeString(const QString &address) const
{
    return m_pattern.indexIn(address) < 0 ? QString() : m_pattern.cap(m_addressGroupIndex);
}

QString CommandFormatter::getEditorUsedRangeString(const QString &address) const
{
    if (m_editorPrefixSymbol.isEmpty())
        return getRangeString(address);
    return address.mid(m_editorPrefixSymbol.size());
}

int CommandFormatter::getAddresRangePart(const QString &address) const
{
    if (m_script.loaded)
        return m_script.getAddressRange(address);
    const QString range = getRangeString(address);
    const QString digits = m_type == CommunicatorCommand::Bit ? m_multipleRule.wordPart(range) : range;
    if (digits.isEmpty())
        return -1;
    return readNumber(digits, m_base).value_or(-1);
}

int CommandFormatter::getbitOffset(const QString &address) const
{
    if (m_pattern.indexIn(address) < 0 || m_type != CommunicatorCommand::Bit)
        return -1;
    if (m_script.loaded)
        return m_script.bitoffset(address);
    const QString range = m_pattern.cap(m_addressGroupIndex);
    return m_multipleRule.isSplit() ? m_multipleRule.bitOffset(range) : m_multipleRule.onePartBitOffset(range);
}

void CommandFormatter::bitOffsetCarry(int &word, int &bit, int base) const
{
    if (base == 10 && m_multipleRule.isSplit()) {
        const int bitsPerWord = m_multipleRule.bitRadix() == 32 ? 32 : 16;
        const int words = bit / bitsPerWord;
        bit %= bitsPerWord;
        word = wrappingSum(word, words);
        return;
    }
    const int digits = m_multipleRule.minimumBitDigits();
    const QString text = numberText(bit, base);
    if (text.size() <= digits)
        return;
    word = wrappingSum(word, QVariant(text.left(text.size() - digits)).toInt());
    bit = QVariant(text.right(digits)).toInt();
}

bool CommandFormatter::isRangeValid(int value) const
{
    if (m_type != CommunicatorCommand::Bit && !validateMultiple(value))
        return false;
    if (!m_firstNumber || !m_lastNumber) {
        qDebug() << "isRangeValid"
                 << "CommandFormatter isRangeValid data error";
        return false;
    }
    return *m_firstNumber <= value && value <= *m_lastNumber;
}

bool CommandFormatter::isAddressValid(const QString &address) const
{
    return isDeviceAddressValid(deviceAddress(address));
}

bool CommandFormatter::isDeviceAddressValid(const QString &deviceAddress) const
{
    if (m_patternPrefix->rulesOutMatch(deviceAddress) || !m_pattern.exactMatch(deviceAddress))
        return false;
    const int number = getAddresRangePart(deviceAddress);
    return number == -1 || isRangeValid(number);
}

bool CommandFormatter::isAddressDataTypeMatch(const QString &address, CommunicatorCommand::DataType type) const
{
    if (!m_pattern.exactMatch(address) || !isRangeValid(getAddresRangePart(address)))
        return false;
    return (type == CommunicatorCommand::Bit) == (m_type == CommunicatorCommand::Bit);
}

} // namespace label
