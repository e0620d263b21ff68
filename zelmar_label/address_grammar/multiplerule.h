// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef ZELMAR_LABEL_MULTIPLERULE_H
#define ZELMAR_LABEL_MULTIPLERULE_H

#include <QString>
#include <QStringView>

#include <optional>

namespace label {

/// The parsed `multiple_rule` text of one address format: how a bit address splits into word and bit, the radix of the
/// bit, which numbers are aligned, and whether and where a bit can be reached through a register.
///
/// A text of the form `separator-radix:tail` ("dot-f:r", "union-oct:rm8a1_D") is compound: its tail sets alignment and
/// optimising. In any other, plain text the whole text sets them. Keywords are compared in lower case. An unknown word
/// is no error: it gives the "no" answers below.
///
/// A value; the constructor parses everything once. The text fields are for reading. It does not handle scripts.
class MultipleRule
{
public:
    /// No rule: all texts empty, no class, no radix, no alignment.
    MultipleRule() = default;

    /// Parses `ruleText`, any text.
    explicit MultipleRule(const QString &ruleText);

    /// True for a separator between word and bit: "dot", "slash", "dotpreslash", "dotaccslash", "dotposslash",
    /// "dotlenslash", "last1", "last2".
    bool isSplit() const { return m_separator == Separator::Text || isLastDigits(); }

    /// True for "union" and "nosep": a bit address is one number.
    bool isOnePart() const { return m_separator == Separator::None; }

    /// The word part of a range string: the text before the separator, in lower case; all but the last characters for
    /// "last1" and "last2" ("01" appended for a tail ":rfam3…"); the whole text on a one-part rule; empty on any other
    /// rule.
    QString wordPart(const QString &range) const;

    /// The number of the word part in `radix`; nothing when it is none. A digit of another radix and blanks make it
    /// slower, not wrong.
    std::optional<int> wordNumber(QStringView range, int radix) const;

    /// The bit part of a range string: the text between the first and the second separator, compared case-sensitively,
    /// or the last characters for "last1" and "last2". Empty when there is none.
    QString bitPart(const QString &range) const { return bitView(range).toString(); }

    /// The text after the word of a range string: separator and bit; empty on a rule that is not split, and without the
    /// separator.
    QString bitTail(const QString &range) const;

    /// The bit position that a split rule reads in a range string, from 0; -1 when the bit part is no number or the
    /// radix word is unknown. "fam3" counts bits from 1: its bit 1 is position 0.
    int bitOffset(const QString &range) const { return bitOffset(QStringView(range)); }
    int bitOffset(QStringView range) const;

    /// The bit position inside the aligned group that a one-part rule reads in a range string: the number, less 1 for
    /// the "a1" alignments, modulo `aligmentSize()`; -1 when the text is no number. A rule without a one-part radix
    /// gives -1 and writes a line to the debug log.
    int onePartBitOffset(const QString &range) const { return onePartBitOffset(QStringView(range)); }
    int onePartBitOffset(QStringView range) const;

    /// The separator in a range string; empty for rules without one.
    QString splitString() const { return m_splitString; }

    /// The text between word and bit in a new address.
    QString rebuildSeparator() const { return m_splitString; }

    /// The register symbol after the first "_" of the tail, or `defaultSymbol` without a "_".
    QString registerSymbol(const QString &defaultSymbol) const;

    /// The radix of the bit part and its steps; 32 means a decimal bit from 0 to 31; -1 none.
    int bitRadix() const { return m_bitRadix; }

    /// The radix in which a split rule reads its bits; -1 for an unknown radix word.
    int readRadix() const { return m_readRadix; }

    /// The number of the first bit of a word on a split rule: 1 for "fam3", else 0.
    int firstBit() const { return m_countsBitsFromOne ? 1 : 0; }

    /// The low bits of aligned numbers: those under `mask` are `rest`. Both are 0 without alignment.
    struct LowBits
    {
        int mask;
        int rest;
    };
    LowBits alignedBits() const;

    /// True when `value` is aligned, or when the rule has no alignment. Negative numbers may be aligned too.
    bool isAligned(int value) const { return (value & alignedBits().mask) == alignedBits().rest; }

    /// True when the rule has an alignment.
    bool hasAlignment() const { return m_alignment != Alignment::None; }

    /// Numbers in one aligned group: 8, 16, or 1 (also for "multiple of 64, plus 1").
    int aligmentSize() const;

    /// True when numbers count single bits: multiples of 8 or 16, with or without the plus 1.
    bool countsBits() const { return aligmentSize() > 1; }

    /// True when commands of the format may be optimised.
    bool needOptimize() const { return m_needOptimize; }

    /// True when a bit of the format can be reached through a register.
    bool canConvertToRegister() const { return m_canConvertToRegister; }

    /// True for the rule text "semens1".
    bool isSemenseSepcialType() const { return m_semenseSpecialType; }

    /// Minimum digits of a bit part in a new address: 2 when the text contains "last2", else 1.
    int minimumBitDigits() const { return m_minimumBitDigits; }

    /// Which numbers are valid. If a tail names several, the first of this list counts.
    enum class Alignment {
        None,      ///< every number
        Of8,       ///< multiples of 8
        Of8Plus1,  ///< multiples of 8, plus 1
        Of16,      ///< multiples of 16
        Of64Plus1, ///< multiples of 64, plus 1
        Of16Plus1, ///< multiples of 16, plus 1
    };

    /// The alignment of a bit's register on a rule that does not split: its number is rounded down to a valid one. Only
    /// the tail counts, also for a plain text. `None`: no register number can be made; never `Of64Plus1`.
    Alignment registerAlignment() const { return m_registerAlignment; }

    /// The rule text of the column.
    QString text;
    /// The three words of the compound form, searched anywhere in the text; ".", "f" and ":r" if it is not found.
    QString separatorWord;
    QString bitRadixWord;
    QString registerTail;

private:
    enum class Separator {
        Unknown, // neither split nor one-part
        Text,
        LastDigit,
        LastTwoDigits,
        None,
    };

    bool isLastDigits() const { return m_separator == Separator::LastDigit || m_separator == Separator::LastTwoDigits; }
    QStringView wordView(QStringView range) const;
    QStringView bitView(QStringView range) const;
    qsizetype separatorAt(QStringView range) const;
    int lastDigits() const { return m_separator == Separator::LastTwoDigits ? 2 : 1; }
    void parseSeparator();
    void parseBitRadix();
    void parseAlignment(bool isCompound);

    Separator m_separator = Separator::Unknown;
    Alignment m_alignment = Alignment::None;
    Alignment m_registerAlignment = Alignment::None;
    QString m_splitString;
    int m_bitRadix = -1;
    int m_readRadix = -1;
    int m_minimumBitDigits = 1;
    bool m_countsBitsFromOne = false;
    bool m_appendsFirstBit = false;
    bool m_needOptimize = true;
    bool m_canConvertToRegister = false;
    bool m_semenseSpecialType = false;
};

/// The five alignments of a number; they test the low bits, so negative numbers may be aligned too.
inline bool isMultipleOf8(int value)
{
    return (value & 7) == 0;
}
inline bool isMultipleOf8Plus1(int value)
{
    return (value & 7) == 1;
}
inline bool isMultipleOf16(int value)
{
    return (value & 15) == 0;
}
inline bool isMultipleOf16Plus1(int value)
{
    return (value & 15) == 1;
}
inline bool isMultipleOf64Plus1(int value)
{
    return (value & 63) == 1;
}

} // namespace label

#endif
