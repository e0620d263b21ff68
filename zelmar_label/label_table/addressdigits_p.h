// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef ZELMAR_LABEL_ADDRESSDIGITS_P_H
#define ZELMAR_LABEL_ADDRESSDIGITS_P_H

#include <QString>

namespace label {

/// A number as a person writes it: in capitals.
QString numberInAddress(int number, int radix);

/// True for ASCII digits of the radix; false for a radix that is none.
bool isDigit(QChar character, int radix);

/// As above for all of a text, which is not empty.
bool areDigits(const QString &text, int radix);

/// The last digit stays, if it is a zero.
QString withoutLeadingZeros(const QString &digits);

} // namespace label

#endif
