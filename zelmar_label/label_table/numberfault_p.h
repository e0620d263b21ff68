// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef ZELMAR_LABEL_NUMBERFAULT_P_H
#define ZELMAR_LABEL_NUMBERFAULT_P_H

#include "zelmar_label/address_grammar/automaton_p.h"
#include "zelmar_label/label_table/addressdiagnosis.h"

#include <optional>

namespace label {

class CommandFormatter;
class Pattern;

// Faults of the numbers in a device address. `reach` is where the address leaves the pattern of the row.

/// What is wrong with a device address, and addresses to offer instead, the nearest first.
struct NumberFinding
{
    AddressDiagnosis::Reason reason;
    QStringList offers;
};

/// How far the number of a matching address is outside the row's limits; 0 within them.
qint64 distanceFromLimits(const CommandFormatter &row, const QString &deviceAddress);

/// The row matches the address but refuses its number.
NumberFinding refusedNumber(const CommandFormatter &row, const QString &deviceAddress);

/// The row accepts the address, but its number is unreadable: it is too long, or its digits are of another script.
std::optional<NumberFinding> unreadNumber(const CommandFormatter &row, const QString &deviceAddress);

/// Patterns mostly allow as many digits as the last number has. The address would match with fewer digits, but they are
/// no leading zeros: the number is too large.
std::optional<NumberFinding> tooManyDigits(const CommandFormatter &row, const QString &deviceAddress, int reach);

/// A bit row accepts the address with another bit, but no bit this high.
std::optional<NumberFinding> bitBeyondWord(const CommandFormatter &row, const QString &deviceAddress, int reach);

/// A family of this pattern has the address with another number.
std::optional<NumberFinding> familyNumber(const Pattern &pattern, const QString &deviceAddress, bool isBit);

struct RadixFinding
{
    AddressDiagnosis::TypingError error;
    QStringList offers;
};
/// The character at `reach` is a decimal digit that a row of radix 8 or less does not have.
std::optional<RadixFinding> digitOutsideRadix(const CommandFormatter &row, const QString &deviceAddress, int reach);

/// A matching address with the row's nearest valid number; empty when there is none.
QString withValidNumber(const CommandFormatter &row, const QString &deviceAddress);

} // namespace label

#endif
