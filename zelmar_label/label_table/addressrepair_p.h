// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef ZELMAR_LABEL_ADDRESSREPAIR_P_H
#define ZELMAR_LABEL_ADDRESSREPAIR_P_H

#include <QList>
#include <QString>

namespace label {

class CommandFormatter;

/// A text that a row accepts, and the cost of changing another text into it: the lower, the more likely.
struct Repair
{
    QString address;
    int cost;
};

constexpr int costOfWrongCharacter = 8;

/// Corrections that cost this much more than a likely one are dropped.
constexpr int muchUnlikelier = 3;

/// Addresses of the row within a few likely typing errors, at most two, the most likely first.
QList<Repair> repaired(const CommandFormatter &row, const QString &deviceAddress);

/// The text with the row's symbol instead of a symbol with one typing error. Does not test whether these addresses are
/// accepted.
QList<Repair> withNearSymbol(const CommandFormatter &row, const QString &deviceAddress);

/// The text with its last word replaced by the one in the row's example; an empty address when the row does not accept
/// it.
Repair withLastWord(const CommandFormatter &row, const QString &deviceAddress);

/// True for costs of typing errors that are more likely than one in the symbol.
bool isLikelySlip(int cost);

/// An address of the row that completes a text like the row's example; empty when there is none.
QString completed(const CommandFormatter &row, const QString &deviceAddress);

/// `example` with its numbers replaced in order by those of `deviceAddress`; it keeps its own if there are fewer. Empty
/// if there are more.
QString withNumbersOf(const QString &deviceAddress, const QString &example);

} // namespace label

#endif
