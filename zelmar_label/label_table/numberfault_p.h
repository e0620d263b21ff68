// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef ZELMAR_LABEL_NUMBERFAULT_P_H
#define ZELMAR_LABEL_NUMBERFAULT_P_H

#include "zelmar_label/label_table/addressdiagnosis.h"

namespace label {

class CommandFormatter;

// Faults of the numbers in a device address. Each function that recognises its fault sets the kind and the numbers of
// the diagnosis, and offers addresses, the nearest first.

/// How far the number of a matching text is outside the row's limits; 0 within them.
qint64 distanceFromLimits(const CommandFormatter &row, const QString &deviceAddress);

/// The row matches the text but refuses its number.
void explainRefusedNumber(const CommandFormatter &row, const QString &deviceAddress, AddressDiagnosis &diagnosis,
                          QStringList &offers);

/// Patterns mostly allow as many digits as the last number has. If a text leaves a pattern at `reach`, inside a number,
/// and would match with fewer digits, the number is too large. That is a better reason than a wrong character.
bool explainTooManyDigits(const CommandFormatter &row, const QString &deviceAddress, int reach,
                          AddressDiagnosis &diagnosis, QStringList &offers);

/// A bit row accepts the text with another bit, but no bit this high.
bool explainBitBeyondWord(const CommandFormatter &row, const QString &deviceAddress, int reach,
                          AddressDiagnosis &diagnosis, QStringList &offers);

/// The character at `reach` is a decimal digit that a row of radix 8 or less does not have. Does not change the kind.
bool explainDigitOutsideRadix(const CommandFormatter &row, const QString &deviceAddress, int reach,
                              AddressDiagnosis &diagnosis, QStringList &offers);

/// The row accepts the text, but its number is unreadable: it is too long, or its digits are of another script.
bool explainUnreadNumber(const CommandFormatter &row, const QString &deviceAddress, AddressDiagnosis &diagnosis,
                         QStringList &offers);

} // namespace label

#endif
