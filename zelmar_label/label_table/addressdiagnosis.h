// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef ZELMAR_LABEL_ADDRESSDIAGNOSIS_H
#define ZELMAR_LABEL_ADDRESSDIAGNOSIS_H

#include "zelmar_label/zelmar_label_export.h"

#include <QString>
#include <QStringList>

namespace label {

class CommandInformationTalbe;
class LabelInterface;

/// Why a label accepts or refuses an address. Get one from `diagnoseAddress`, and its text from `diagnosisSentence`.
///
/// A plain value: it stays valid when the label grows or is freed, and may go to other threads. Its texts are never
/// translated; numbers and limits are in the row's radix, as in an address.
struct AddressDiagnosis
{
    enum class Kind {
        Accepted,            ///< a row accepts it
        Empty,               ///< no device address
        UnknownFront,        ///< no format begins with the text up to `position` and the character there
        UnknownFamilyMember, ///< begins like a dynamic family, but the family has no such member; for a number that the
                             ///< family does not have, see `number` and `limit`
        FamilyName,          ///< the name of a family's template row, not an address
        StationBeforeFamily, ///< a new member of a family is recognised only without a station
        StationNotNumber,    ///< the text before the "-", `station`, is no decimal number
        Incomplete,          ///< ends at `position`; one of `expected` is missing there
        UnexpectedCharacter, ///< leaves its nearest format at `position`; the format has `expected` there
        AboveLast,           ///< `number` is above the last one, `limit`
        BelowFirst,          ///< `number` is below the first one, `limit`
        NotAligned,          ///< `number` is not a multiple of `limit` (plus `remainder`); see `nearest`
        NumberTooLong,       ///< `number` is too large to read; the last one is `limit`
        LimitsUnreadable,    ///< the row's limits are no numbers: the driver database is wrong
        BitBeyondWord,       ///< the bit `number` is beyond the last one of its word, `limit`
        NoBits,              ///< a bit of an address whose bits cannot be addressed; that address ends at `position`
        WrongType,           ///< a row accepts it, but it is a bit instead of a register, or the reverse
        NumberRefused,       ///< a row matches but refuses `number`, and its limits are unknown
    };

    /// The probable typing error in a text that leaves its format. Correcting it at `position` gives the first of
    /// `suggestions`.
    enum class Slip {
        None,              ///< no known typing error
        LetterCase,        ///< `written` has the wrong letter case; `meant` has the right one
        Blank,             ///< a blank
        LetterForDigit,    ///< the letter `written` (O, l, I and the like) for the digit `meant`
        DigitForLetter,    ///< the digit `written` for the letter `meant`
        NotAscii,          ///< `written` looks like the ASCII character `meant`, but is another (a wide digit)
        DigitOutsideRadix, ///< `written` is a decimal digit, but not in the row's radix
        MissingSeparator,  ///< `meant` is missing before the character at `position`
        WrongSeparator,    ///< the separator `written` for `meant`
    };

    Kind kind = Kind::Accepted;
    Slip slip = Slip::None;
    /// The type filter of the question: -1 any row, 0 bit rows, any other value register rows.
    int type = -1;
    /// True when `LabelInterface::addressValidation` returns a row although `kind` is a fault. That call tests neither
    /// the number nor the type of a new member of a family, and accepts a family's name and an unreadable number.
    bool isUnchecked = false;
    /// Type index of the row of the diagnosis; the family's template row for a new member of a family; -1 for none.
    /// Among refusing rows it is the one that the text matches furthest, then the one with the fewest changes, then the
    /// first.
    int row = -1;
    /// The row's type, 0 for bits, and the radix of its numbers; -1 and 10 without a row.
    int rowType = -1;
    int radix = 10;
    /// The row's description in the driver database, and a short name: its symbol, or the form at the start of the
    /// description ("Dn.b"). Empty without a row.
    QString description;
    QString format;
    /// The row's first and last number in the driver database. Empty without a row, and when the label does not provide
    /// them.
    QString first;
    QString last;
    /// The device address, and the text before its "-" (null without one).
    QString address;
    QString station;
    /// Index of the fault in `address`, from 0 up to its size; for a refused number, the index of its first character.
    /// -1 for no place in the text.
    int position = -1;
    /// The characters allowed at `position`, only ASCII ones, and whether the address could end there.
    QString expected;
    bool mayEnd = false;
    /// See `slip`; empty without one.
    QString written;
    QString meant;
    /// See `kind`; empty if it does not name them.
    QString number;
    QString limit;
    QString remainder;
    /// The next valid numbers below and above, if any.
    QStringList nearest;
    /// The nearest addresses that the label accepts for this type filter, with number and type tested; the best first,
    /// at most 5, with the station of the address. Empty for `Accepted`, and when nothing is near.
    QStringList suggestions;

    /// True exactly when `LabelInterface::addressValidation` returns a row for the address. For a label that is no
    /// `LabelLoader`: when one of its present rows accepts the address.
    bool isAccepted() const { return kind == Kind::Accepted || isUnchecked; }

    /// `position` in the whole text, station included; -1 for no place.
    int positionInText() const { return position < 0 || station.isNull() ? position : position + station.size() + 1; }
};

/// Returns whether `label` accepts `address`, with or without station, for the type filter `type`, and if not, why.
///
/// Adds no rows, changes no answer of the label, and shows what `addressValidation` would do with addresses of dynamic
/// families. For a label that is no `LabelLoader` it can use only the interface: it knows less about limits and
/// families, and the row is the first possible one. It uses a caller's own creator like any other.
///
/// Takes some microseconds for an accepted address, and up to some microseconds per row for a refused one. Only the
/// rows write to the debug log: limits that are no numbers, and scripts that fail or print. Never fails. Not while
/// another thread uses the label.
ZELMAR_LABEL_EXPORT AddressDiagnosis diagnoseAddress(LabelInterface &label, const QString &address, int type);

/// As above, for a table without a creator of dynamic families.
ZELMAR_LABEL_EXPORT AddressDiagnosis diagnoseAddress(const CommandInformationTalbe &table, const QString &address,
                                                     int type);

/// Returns what is wrong as text for users, without capital, full stop and suggestions; empty for `Accepted`.
/// Translated by `QCoreApplication::translate` in the context "AddressDiagnosis". It counts positions from 1. Any
/// thread.
ZELMAR_LABEL_EXPORT QString diagnosisSentence(const AddressDiagnosis &diagnosis);

} // namespace label

#endif
