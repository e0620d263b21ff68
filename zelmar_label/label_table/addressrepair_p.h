// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef ZELMAR_LABEL_ADDRESSREPAIR_P_H
#define ZELMAR_LABEL_ADDRESSREPAIR_P_H

#include <QList>
#include <QString>

namespace label {

class CommandFormatter;

/// A text that a row accepts, and what it costs to get there from another: the less, the likelier it was meant.
struct Repair
{
    QString address;
    int cost;
};

constexpr int costOfWrongCharacter = 8;

/// Beside a likely slip those are noise that cost so much more.
constexpr int muchUnlikelier = 3;

/// Addresses of the row that few likely slips lead away from, at most two, the likeliest first.
QList<Repair> repaired(const CommandFormatter &row, const QString &deviceAddress);

/// The text with the row's symbol in place of what may be that symbol with one slip in it. Whether such addresses are
/// accepted is not asked.
QList<Repair> withNearSymbol(const CommandFormatter &row, const QString &deviceAddress);

/// The text with its last word exchanged for the one that the row's example has there; an empty address when the row
/// does not accept that.
Repair withLastWord(const CommandFormatter &row, const QString &deviceAddress);

/// True for costs of slips that are likelier than one in the symbol.
bool isLikelySlip(int cost);

/// An address of the row that continues a text which ends too soon, like the row's example; empty when there is none.
QString completed(const CommandFormatter &row, const QString &deviceAddress);

/// `example` with the numbers of `deviceAddress` in the place of its own, the first to the first, and its own where
/// there are no more; empty where there are too many.
QString withNumbersOf(const QString &deviceAddress, const QString &example);

} // namespace label

#endif
