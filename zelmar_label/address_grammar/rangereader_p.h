// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef ZELMAR_LABEL_RANGEREADER_P_H
#define ZELMAR_LABEL_RANGEREADER_P_H

#include "zelmar_label/address_grammar/radixnumber_p.h"

#include <QStringView>

#include <limits>

namespace label {

struct AddressColumns;
class MultipleRule;

/// Reads a range string of the usual form in one pass: digits, or digits, a separator and the digits of a bit. What it
/// reads equals what the rule reads; it leaves every other text to the rule.
///
/// A small value without pointers, so that an index can keep it where it is needed. Any number of threads may use it.
class RangeReader
{
public:
    struct Numbers
    {
        int number = -1;
        int bit = -1;
        bool isKnown = false; ///< false for a text that the rule must read
    };

    /// Leaves every text to the rule.
    RangeReader() = default;

    RangeReader(const AddressColumns &columns, const MultipleRule &rule, int first, int last);

    Numbers read(QStringView range) const
    {
        const QChar *at = range.begin();
        Numbers read;
        read.number = readDigits(at, range.end(), m_radix);
        if (at == range.begin())
            return read;
        if (m_bitRadix == 0) {
            read.isKnown = at == range.end() && read.number >= m_firstBit;
            read.bit = m_hasBits ? (read.number - m_firstBit) & m_bitMask : -1;
            return read;
        }
        if (at == range.end() || at->unicode() != m_separator)
            return read;
        const QChar *const bit = ++at;
        read.bit = readDigits(at, range.end(), m_bitRadix) - m_firstBit;
        read.isKnown = at == range.end() && at != bit && read.bit >= 0;
        return read;
    }

    /// True when the number is within the limits, and aligned on a register row.
    bool isValid(int number) const
    {
        return m_first <= number && number <= m_last && (number & m_alignmentMask) == m_alignmentRest;
    }

private:
    void setSplitBits(const MultipleRule &rule, int radix);
    void setOnePartBits(const MultipleRule &rule, int radix);

    /// Moves `at` behind the digits. A number beyond `int` ends at its last digit that fits.
    static int readDigits(const QChar *&at, const QChar *end, int radix)
    {
        qint64 number = 0;
        for (; at != end; ++at) {
            const int digit = digitValue(at->unicode());
            const qint64 longer = number * radix + digit;
            if (digit >= radix || longer > std::numeric_limits<int>::max())
                break;
            number = longer;
        }
        return static_cast<int>(number);
    }

    int m_first = 0;
    int m_last = -1;
    ushort m_separator = 0;
    /// 0 for a text that the rule must read: no character is a digit.
    uchar m_radix = 0;
    /// The radix behind the separator; 0 without one.
    uchar m_bitRadix = 0;
    /// On a row without separator the bit is a part of the number.
    uchar m_bitMask = 0;
    uchar m_firstBit = 0;
    uchar m_alignmentMask = 0;
    uchar m_alignmentRest = 0;
    bool m_hasBits = false;
};

} // namespace label

#endif
