// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "zelmar_label/address_grammar/rangereader_p.h"

#include "zelmar_label/address_grammar/addressrow.h"

namespace label {

RangeReader::RangeReader(const AddressColumns &columns, const MultipleRule &rule, int first, int last)
    : m_first(first)
    , m_last(last)
{
    const bool isBit = columns.type == 0;
    if (!isBit) {
        m_alignmentMask = static_cast<uchar>(rule.alignedBits().mask);
        m_alignmentRest = static_cast<uchar>(rule.alignedBits().rest);
    }
    if (!isRadix(columns.base))
        return;
    if (!isBit) {
        m_radix = static_cast<uchar>(columns.base);
    } else if (rule.isSplit()) {
        setSplitBits(rule, columns.base);
    } else if (rule.isOnePart()) {
        setOnePartBits(rule, columns.base);
    }
}

void RangeReader::setSplitBits(const MultipleRule &rule, int radix)
{
    const QString separator = rule.splitString();
    if (separator.size() != 1 || separator.at(0).isLetterOrNumber() || !isRadix(rule.readRadix()))
        return;
    m_radix = static_cast<uchar>(radix);
    m_separator = separator.at(0).unicode();
    m_bitRadix = static_cast<uchar>(rule.readRadix());
    m_firstBit = static_cast<uchar>(rule.firstBit());
}

void RangeReader::setOnePartBits(const MultipleRule &rule, int radix)
{
    m_hasBits = rule.bitRadix() >= 0;
    if (m_hasBits && rule.bitRadix() != radix)
        return;
    m_radix = static_cast<uchar>(radix);
    m_bitMask = static_cast<uchar>(rule.aligmentSize() - 1);
    m_firstBit = static_cast<uchar>(m_bitMask == 0 ? 0 : rule.alignedBits().rest);
}

} // namespace label
