// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "zelmar_label/address_grammar/radixnumber_p.h"

#include <limits>

namespace label {

namespace {

bool isRadix(int radix)
{
    return radix >= 2 && radix <= 36;
}

/// The value of an ASCII digit; `noDigit` for another character.
int digitValue(QChar character)
{
    constexpr int noDigit = 99;
    const int unit = character.unicode();
    if (unit >= '0' && unit <= '9')
        return unit - '0';
    const int letter = unit | 0x20;
    return letter >= 'a' && letter <= 'z' ? letter - 'a' + 10 : noDigit;
}

std::optional<int> readAnyNumber(QStringView text, int radix)
{
    bool ok = false;
    const int number = text.toString().toInt(&ok, radix);
    return ok ? std::optional<int>(number) : std::nullopt;
}

} // namespace

std::optional<int> readNumber(QStringView text, int radix)
{
    if (radix != 0 && !isRadix(radix))
        return std::nullopt;
    qint64 number = 0;
    for (const QChar character : text) {
        const int digit = digitValue(character);
        if (digit >= radix)
            return readAnyNumber(text, radix);
        number = qMin<qint64>(number * radix + digit, std::numeric_limits<qint64>::max() / 64);
    }
    const bool fits = !text.isEmpty() && number <= std::numeric_limits<int>::max();
    return fits ? std::optional<int>(static_cast<int>(number)) : std::nullopt;
}

QString numberText(int value, int radix)
{
    return QString::number(value, isRadix(radix) ? radix : 10);
}

} // namespace label
