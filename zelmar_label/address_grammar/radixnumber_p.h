// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef ZELMAR_LABEL_RADIXNUMBER_P_H
#define ZELMAR_LABEL_RADIXNUMBER_P_H

#include <QString>
#include <QStringView>

#include <limits>
#include <optional>

namespace label {

/// The value of an ASCII digit or letter in a number; 99 for another character.
inline int digitValue(uint unit)
{
    constexpr int noDigit = 99;
    if (unit - '0' < 10)
        return static_cast<int>(unit - '0');
    const uint letter = (unit | 0x20) - 'a';
    return letter < 26 ? static_cast<int>(letter) + 10 : noDigit;
}

constexpr bool isRadix(int radix)
{
    return radix >= 2 && radix <= 36;
}

/// As `readNumber`, for a text with another character than digits, and for radix 0.
std::optional<int> readAnyNumber(QStringView text, int radix);

/// `text` as an `int` written in `radix`, as `QString::toInt` reads it: blanks around it, a sign, "0x" in radix 16 and
/// radix 0, which follows the text's prefix, are accepted. Nothing for any other text, for a number beyond `int` and
/// for a radix that is not 0 or 2 to 36.
///
/// Digits alone are read in place; any other text is copied.
inline std::optional<int> readNumber(QStringView text, int radix)
{
    if (text.isEmpty() || (radix != 0 && !isRadix(radix)))
        return std::nullopt;
    qint64 number = 0;
    for (const QChar character : text) {
        const int digit = digitValue(character.unicode());
        if (digit >= radix)
            return readAnyNumber(text, radix);
        number = number * radix + digit;
        if (number > std::numeric_limits<int>::max())
            return std::nullopt;
    }
    return static_cast<int>(number);
}

/// `value` in `radix`, lower-case letters; in decimal for a radix outside 2 to 36, which `QString::number` does not
/// allow.
QString numberText(int value, int radix);

/// The sum in 32 bits, wrapping around: addresses may be anything, and an overflow must not be undefined.
inline int wrappingSum(int left, int right)
{
    return static_cast<int>(static_cast<unsigned>(left) + static_cast<unsigned>(right));
}

/// The difference in 32 bits, wrapping around.
inline int wrappingDifference(int left, int right)
{
    return static_cast<int>(static_cast<unsigned>(left) - static_cast<unsigned>(right));
}

/// The product in 32 bits, wrapping around.
inline int wrappingProduct(int left, int right)
{
    return static_cast<int>(static_cast<unsigned>(left) * static_cast<unsigned>(right));
}

} // namespace label

#endif
