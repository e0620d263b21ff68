// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef ZELMAR_LABEL_TYPINGERRORS_P_H
#define ZELMAR_LABEL_TYPINGERRORS_P_H

#include "zelmar_label/address_grammar/automaton_p.h"
#include "zelmar_label/label_table/addressdiagnosis.h"

#include <QString>

#include <vector>

namespace label {

/// `text` with ASCII characters instead of their wide and other forms, and of digits of other scripts.
QString toAscii(const QString &text);

/// `text` in ASCII and capitals, without blanks, with digits for similar letters beside digits.
QString folded(const QString &text);

/// The highest cost of a near address; up to two characters may be wrong.
constexpr int mostTypingCost = 155;
/// Corrections that cost this much more than a likely one are dropped.
constexpr int muchUnlikelier = 30;
/// The cost of another number than the written one.
constexpr int otherNumberCost = 50;
/// Corrections of letter case, blanks, similar characters and separators cost less.
constexpr int unlikelyCost = 40;

/// The changes that may correct a device address.
class TypingErrors
{
public:
    enum class Scope {
        Any,
        OtherFormat, ///< the address is right, but for another format: its numbers stay
    };

    TypingErrors(const QString &deviceAddress, Scope scope);

    /// The changes for a format that the address leaves at `reach`. Valid until the next call.
    const std::vector<PositionEdits> &edits(int reach);

private:
    PositionEdits editsAt(int at) const;
    void addSlips(PositionEdits &edits, int at) const;
    bool mayChange(int at) const;
    bool isInWord(int at) const;
    bool isDigitAt(int at) const;
    bool isLetterAt(int at) const;

    const QString m_text;
    const Scope m_scope;
    std::vector<PositionEdits> m_edits;
    int m_reach = -1;
};

/// What the first change of a device address corrects; `Slip::None` for an unknown typing error.
AddressDiagnosis::TypingError typingError(const QString &deviceAddress, const TextChange &change);

} // namespace label

#endif
