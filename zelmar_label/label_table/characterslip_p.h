// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef ZELMAR_LABEL_CHARACTERSLIP_P_H
#define ZELMAR_LABEL_CHARACTERSLIP_P_H

#include "zelmar_label/label_table/addressdiagnosis.h"

#include <QString>

namespace label {

/// True for separators in addresses: point, colon, slashes, and the comma, which is read as a point.
bool isSeparator(QChar character);

bool isBlank(QChar character);
QString withoutBlanks(const QString &text);

/// The characters that this one may mean: 0 for O, O for 0, 1 for l and I, an ASCII character for its wide form.
QString lookAlikes(QChar character);

/// `deviceAddress` with digits for similar letters next to digits and before separators: 0 for O, 1 for l and I.
QString withoutDigitLetters(const QString &deviceAddress);

/// `text` with ASCII characters instead of their wide and other forms ("４" for "4") and of digits of other scripts.
QString toAscii(const QString &text);

/// Sets the slip between `deviceAddress` and `meant`, with its position and characters; changes nothing for an unknown
/// slip.
void nameSlip(const QString &deviceAddress, const QString &meant, AddressDiagnosis &diagnosis);

} // namespace label

#endif
