// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef ZELMAR_LABEL_DIGITTEXTS_H
#define ZELMAR_LABEL_DIGITTEXTS_H

#include "zelmar_label/address_grammar/patternexpression_p.h"

#include <QString>

#include <functional>
#include <map>

/// Expressions of the texts that are numbers in one radix: digits, with letters of both cases and any leading zeros.
class DigitTexts
{
public:
    /// True for the even radices from 2 to 36: all but the odd ones, in which the last digits tell nothing of the
    /// remainder by 64.
    static bool isKnownRadix(int radix) { return radix >= 2 && radix <= 36 && radix % 2 == 0; }

    /// `radix` is a known one. `expressions` must live longer.
    DigitTexts(label::PatternExpressions &expressions, int radix);

    /// Numbers of any size.
    label::Expression all();

    /// Numbers from 0 to `number`; none for a negative one.
    label::Expression upTo(int number);

    /// Numbers whose remainder by 64 is wanted.
    label::Expression withRemainder(const std::function<bool(int)> &isWanted);

    /// Texts that surely cannot be read as numbers, without the `excluded` characters.
    label::Expression unreadable(const label::CharacterSet &excluded);

private:
    /// Bit n: remainder n is wanted.
    using Remainders = quint64;

    label::CharacterSet digits(int first, int last) const;
    label::Expression digit(int first, int last);
    label::Expression anyDigits(int count);
    label::Expression upToOfSameSize(const QString &number);
    label::Expression withRemainder(int digits, Remainders wanted);

    label::PatternExpressions &m_expressions;
    const int m_radix;
    std::map<std::pair<int, Remainders>, label::Expression> m_known;
};

#endif
