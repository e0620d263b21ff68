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

/// Why a label takes an address or refuses it. Get one from `diagnoseAddress`, and words for it from
/// `diagnosisSentence`.
///
/// A plain value of its own: it stays true when the label grows or is freed, and may go to other threads. Texts in it
/// are never translated; numbers and limits are written in the row's own radix, as they stand in an address.
struct AddressDiagnosis
{
    enum class Kind {
        Accepted,            ///< a row accepts it
        Empty,               ///< there is no device address
        UnknownFront,        ///< no format begins with the text up to `position` and the character there
        UnknownFamilyMember, ///< begins like a dynamic family, but the family has no such member; where it is a number
                             ///< in it that the family does not have, `number` and `limit` tell it
        FamilyName,          ///< is the name of a family's template row and no address
        StationBeforeFamily, ///< a new member of a family is recognised only without a station
        StationNotNumber,    ///< what stands before the "-", `station`, is no decimal number
        Incomplete,          ///< ends at `position`, where one of `expected` is still missing
        UnexpectedCharacter, ///< leaves its nearest format at `position`, where that has `expected`
        AboveLast,           ///< `number` is above the last one, `limit`
        BelowFirst,          ///< `number` is below the first one, `limit`
        NotAligned,          ///< `number` is not a multiple of `limit` (plus `remainder`); `nearest` are
        NumberTooLong,       ///< `number` is beyond any that can be told; the last one is `limit`
        LimitsUnreadable,    ///< the row's limits are no numbers: the driver database is wrong
        BitBeyondWord,       ///< the bit `number` is beyond the last one of its word, `limit`
        NoBits,              ///< a bit of an address whose bits cannot be addressed; that address ends at `position`
        WrongType,           ///< a row accepts it, but a bit where a register was asked for, or the reverse
        NumberRefused,       ///< a row matches but refuses `number`, and its limits cannot be asked for
    };

    /// What was probably meant, for texts that leave their format: a slip that turns the text into the first of
    /// `suggestions`, at `position`.
    enum class Slip {
        None,              ///< nothing that is known by name
        LetterCase,        ///< `written` has the wrong letter case; `meant` has the right one
        Blank,             ///< a blank
        LetterForDigit,    ///< the letter `written` (O, l, I and the like) for the digit `meant`
        DigitForLetter,    ///< the digit `written` for the letter `meant`
        NotAscii,          ///< `written` looks like the ASCII character `meant`, but is another (a wide digit, say)
        DigitOutsideRadix, ///< `written` is a decimal digit, but none of the row's radix
        MissingSeparator,  ///< `meant` is missing before the character at `position`
        WrongSeparator,    ///< the separator `written` for `meant`
    };

    Kind kind = Kind::Accepted;
    Slip slip = Slip::None;
    /// The type filter of the question: -1 any row, 0 bit rows, any other value register rows.
    int type = -1;
    /// True when `LabelInterface::addressValidation` gives a row although `kind` tells a fault: it holds the number of
    /// a new member of a family against nothing, nor its type, takes a family's name, and a number that it cannot read.
    bool isUnchecked = false;
    /// Type index of the row that the diagnosis is about; of a new member of a family the family's template row; -1 for
    /// none. Of refusing rows it is the one that the text follows furthest, of equals the one that the fewest changes
    /// lead to, of equals the first.
    int row = -1;
    /// The row's type, 0 for bits, and the radix of its numbers; -1 and 10 without a row.
    int rowType = -1;
    int radix = 10;
    /// The row's description as it stands in the driver database, and a short name: its symbol, or the form that the
    /// description begins with ("Dn.b"). Empty without a row.
    QString description;
    QString format;
    /// The row's first and last number as they stand in the driver database. Empty without a row, and where the label
    /// does not tell them.
    QString first;
    QString last;
    /// The device address, and the text before its "-" (null without one).
    QString address;
    QString station;
    /// Index of a character of `address`, from 0, up to its size: where the fault is. Of a number that is refused it is
    /// where the number begins. -1 where no place in the text is meant.
    int position = -1;
    /// The characters that could stand at `position`, and whether the address could end there. Only ASCII characters
    /// are told.
    QString expected;
    bool mayEnd = false;
    /// See `slip`; empty without one.
    QString written;
    QString meant;
    /// See `kind`; empty where it does not name them.
    QString number;
    QString limit;
    QString remainder;
    /// The next good numbers below and above, as far as there are any.
    QStringList nearest;
    /// The nearest addresses that the label accepts in the asked type, with number and type held against its limits;
    /// the best first, at most 5, with the station of the question. Empty for `Accepted`, and where nothing is near.
    QStringList suggestions;

    /// True exactly when `LabelInterface::addressValidation` gives a row for the address. Of a label that is no
    /// `LabelLoader`: when one of its rows takes the address without growing.
    bool isAccepted() const { return kind == Kind::Accepted || isUnchecked; }

    /// `position` in the text of the question, station included; -1 where no place is meant.
    int positionInText() const { return position < 0 || station.isNull() ? position : position + station.size() + 1; }
};

/// Says whether `label` takes `address`, which may carry a station, for the type filter `type`, and if not, why.
///
/// Adds no rows, changes no answer of the label, and shows what `addressValidation` would do with addresses of dynamic
/// families. Of a label that is no `LabelLoader` only its questions are known: what it tells about limits and families
/// is less, and the row is the first that could be meant. A creator of the caller's own is asked like any other.
///
/// Costs some microseconds for an address that is accepted and, for one that is refused, up to some microseconds for
/// each row of the device. Writes to the debug log only what the rows asked write: limits that are no numbers, and
/// scripts that fail or print. Never fails. Not while another thread uses the label.
ZELMAR_LABEL_EXPORT AddressDiagnosis diagnoseAddress(LabelInterface &label, const QString &address, int type);

/// As above, for a table without a creator of dynamic families.
ZELMAR_LABEL_EXPORT AddressDiagnosis diagnoseAddress(const CommandInformationTalbe &table, const QString &address,
                                                     int type);

/// The diagnosis for a person: what is wrong, without capital and full stop and without the suggestions; empty for
/// `Accepted`. Translated by `QCoreApplication::translate` in the context "AddressDiagnosis". Positions in it count
/// from
/// 1. Any thread.
ZELMAR_LABEL_EXPORT QString diagnosisSentence(const AddressDiagnosis &diagnosis);

} // namespace label

#endif
