// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "zelmar_label/label_table/addressdigits_p.h"

#include "zelmar_label/address_grammar/radixnumber_p.h"

#include <algorithm>

namespace label {

QString numberInAddress(int number, int radix)
{
    return numberText(number, radix).toUpper();
}

bool isDigit(QChar character, int radix)
{
    return radix >= 2 && radix <= 36 && character.unicode() < 128 && character.isLetterOrNumber() &&
           readNumber(QString(character), radix).has_value();
}

bool areDigits(const QString &text, int radix)
{
    return !text.isEmpty() &&
           std::all_of(text.begin(), text.end(), [radix](QChar character) { return isDigit(character, radix); });
}

QString withoutLeadingZeros(const QString &digits)
{
    int zeros = 0;
    while (zeros < digits.size() - 1 && digits.at(zeros) == QLatin1Char('0'))
        ++zeros;
    return digits.mid(zeros);
}

} // namespace label
