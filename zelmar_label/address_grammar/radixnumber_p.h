// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef ZELMAR_LABEL_RADIXNUMBER_P_H
#define ZELMAR_LABEL_RADIXNUMBER_P_H

#include <QString>
#include <QStringView>

#include <optional>

namespace label {

/// `text` as an `int` written in `radix`, as `QString::toInt` reads it: blanks around it, a sign, "0x" in radix 16 and
/// radix 0, which follows the text's prefix, are accepted. Nothing for any other text, for a number beyond `int` and
/// for a radix that is not 0 or 2 to 36.
///
/// Digits alone are read in place; any other text is copied.
std::optional<int> readNumber(QStringView text, int radix);

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
