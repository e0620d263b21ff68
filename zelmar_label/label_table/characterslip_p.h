// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef ZELMAR_LABEL_CHARACTERSLIP_P_H
#define ZELMAR_LABEL_CHARACTERSLIP_P_H

#include "zelmar_label/label_table/addressdiagnosis.h"

#include <QString>

namespace label {

/// True for characters that divide addresses: point, colon, strokes, and the comma that is taken for a point.
bool isSeparator(QChar character);

bool isBlank(QChar character);
QString withoutBlanks(const QString &text);

/// The characters that this one is taken for: 0 for O, O for 0, 1 for l and I, an ASCII character for its wide form.
QString lookAlikes(QChar character);

/// `deviceAddress` with digits for the letters that look like them, beside digits and before separators: 0 for O, 1 for
/// l and I.
QString withoutDigitLetters(const QString &deviceAddress);

/// `text` with ASCII characters in the place of their wide and other forms ("４" for "4"), and of other scripts'
/// digits; all else stays.
QString toAscii(const QString &text);

/// The slip that makes the difference between `deviceAddress` and `meant`, if it has a name, with its place and its
/// characters; else nothing is changed.
void nameSlip(const QString &deviceAddress, const QString &meant, AddressDiagnosis &diagnosis);

} // namespace label

#endif
