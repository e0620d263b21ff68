// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef ZELMAR_LABEL_NUMBERFAULT_P_H
#define ZELMAR_LABEL_NUMBERFAULT_P_H

#include "zelmar_label/label_table/addressdiagnosis.h"

namespace label {

class CommandFormatter;

// Faults of the numbers in a device address. Each function that recognises its fault fills in the kind and the numbers
// of the diagnosis, and offers addresses instead, the nearest first.

/// How far the number of a text that matches is outside the row's limits; 0 for one within them.
qint64 distanceFromLimits(const CommandFormatter &row, const QString &deviceAddress);

/// The row matches the text, and refuses its number.
void explainRefusedNumber(const CommandFormatter &row, const QString &deviceAddress, AddressDiagnosis &diagnosis,
                          QStringList &offers);

/// Patterns mostly allow as many digits as the last number has. A text that leaves a pattern at `reach`, in the middle
/// of a number, and would match with fewer digits, has too large a number, which says more than that a character is
/// wrong.
bool explainTooManyDigits(const CommandFormatter &row, const QString &deviceAddress, int reach,
                          AddressDiagnosis &diagnosis, QStringList &offers);

/// A bit row takes the text with another bit, but none as high as this.
bool explainBitBeyondWord(const CommandFormatter &row, const QString &deviceAddress, int reach,
                          AddressDiagnosis &diagnosis, QStringList &offers);

/// At `reach` stands a decimal digit that a row of radix 8 or less does not have. Leaves the kind alone.
bool explainDigitOutsideRadix(const CommandFormatter &row, const QString &deviceAddress, int reach,
                              AddressDiagnosis &diagnosis, QStringList &offers);

/// The row accepts the text, but its number cannot be told: it is too long, or its digits are of another script.
bool explainUnreadNumber(const CommandFormatter &row, const QString &deviceAddress, AddressDiagnosis &diagnosis,
                         QStringList &offers);

} // namespace label

#endif
