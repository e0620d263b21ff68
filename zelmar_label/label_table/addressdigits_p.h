// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef ZELMAR_LABEL_ADDRESSDIGITS_P_H
#define ZELMAR_LABEL_ADDRESSDIGITS_P_H

#include <QString>

namespace label {

/// A number in an address, in capitals.
QString numberInAddress(int number, int radix);

/// True for ASCII digits of the radix; false for an invalid radix.
bool isDigit(QChar character, int radix);

/// As above for every character of a text that is not empty.
bool areDigits(const QString &text, int radix);

/// The last digit stays, even a zero.
QString withoutLeadingZeros(const QString &digits);

} // namespace label

#endif
