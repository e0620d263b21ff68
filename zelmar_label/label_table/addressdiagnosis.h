// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef ZELMAR_LABEL_ADDRESSDIAGNOSIS_H
#define ZELMAR_LABEL_ADDRESSDIAGNOSIS_H

#include "zelmar_label/zelmar_label_export.h"

#include <QString>
#include <QStringList>

#include <variant>

namespace label {

class CommandInformationTalbe;
class LabelInterface;

/// Why a label accepts or refuses an address. Get one from `diagnoseAddress`, and its text from `diagnosisSentence`.
///
/// A plain value: it stays valid when the label grows or is freed, and may go to other threads. Its texts are never
/// translated; numbers and limits are in the row's radix, as in an address. A position is an index in `address`, from 0
/// up to its size.
struct AddressDiagnosis
{
    /// The alternatives of `Reason`, in their order.
    enum class Kind {
        Accepted,
        Empty,
        UnknownFront,
        UnknownFamilyMember,
        FamilyNumber,
        FamilyName,
        StationBeforeFamily,
        StationNotNumber,
        Incomplete,
        UnexpectedCharacter,
        AboveLast,
        BelowFirst,
        NotAligned,
        NumberTooLong,
        LimitsUnreadable,
        BitBeyondWord,
        NoBits,
        WrongType,
        NumberRefused,
    };

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

    /// The first typing error in a text that leaves its format. Correcting it leads to the first suggestion.
    struct TypingError
    {
        Slip slip = Slip::None;
        int position = -1;
        QString written;
        QString meant;
    };

    /// The row of the diagnosis; the template row for a new member of a dynamic family. Among refusing rows it is the
    /// one that the text matches furthest, then the one with the fewest changes, then the first. Without a row all
    /// texts are empty.
    struct RowFacts
    {
        int index = -1; ///< type index, -1 for no row
        int type = -1;  ///< 0 for bits, -1 without a row
        int radix = 10; ///< of its numbers
        /// The description in the driver database, and a short name: the symbol, or the form at the start of the
        /// description ("Dn.b").
        QString description;
        QString format;
        /// First and last number in the driver database; empty when the label does not provide them.
        QString first;
        QString last;
    };

    /// A row accepts the address.
    struct Accepted
    {
    };
    /// There is no device address.
    struct Empty
    {
    };
    /// No format begins with the text up to `position` and the character there.
    struct UnknownFront
    {
        int position = 0;
        TypingError typingError;
    };
    /// The text begins like a dynamic family, but the family has no such member.
    struct UnknownFamilyMember
    {
        TypingError typingError;
    };
    /// The family has members like this, but only up to, or from, the number `limit`.
    struct FamilyNumber
    {
        int position = 0;
        QString number;
        QString limit;
        bool isTooHigh = false;
    };
    /// The address is the name of a family's template row.
    struct FamilyName
    {
    };
    /// A new member of a family is recognised only without a station.
    struct StationBeforeFamily
    {
    };
    /// The text before the "-", `station`, is no decimal number.
    struct StationNotNumber
    {
    };
    /// The address ends at `position`, where one of `expected` is missing. `expected` has only ASCII characters; it is
    /// empty when they are unknown.
    struct Incomplete
    {
        int position = 0;
        QString expected;
        TypingError typingError;
    };
    /// The address leaves its nearest format at `position`, where the format has one of `expected` (as above), or, for
    /// `mayEnd`, nothing.
    struct UnexpectedCharacter
    {
        int position = 0;
        QString expected;
        bool mayEnd = false;
        TypingError typingError;
    };
    struct AboveLast
    {
        int position = 0;
        QString number;
        QString last;
    };
    struct BelowFirst
    {
        int position = 0;
        QString number;
        QString first;
    };
    /// The number is not a multiple of `group`, plus `remainder` if that is not empty. `nearest`: the next valid
    /// numbers below and above.
    struct NotAligned
    {
        int position = 0;
        QString number;
        QString group;
        QString remainder;
        QStringList nearest;
    };
    /// The number is too large to read.
    struct NumberTooLong
    {
        int position = 0;
        QString number;
        QString last;
    };
    /// The row's limits are no numbers: the driver database is wrong.
    struct LimitsUnreadable
    {
        int position = 0;
        QString number;
    };
    /// The word has no bit after `last`.
    struct BitBeyondWord
    {
        int position = 0;
        QString bit;
        QString last;
    };
    /// A bit of an address whose bits cannot be addressed; that address ends at `position`.
    struct NoBits
    {
        int position = 0;
    };
    /// A row accepts the address, but it is a bit instead of a register, or the reverse.
    struct WrongType
    {
    };
    /// A row matches but refuses the number, and its limits are unknown.
    struct NumberRefused
    {
        QString number;
    };

    using Reason =
        std::variant<Accepted, Empty, UnknownFront, UnknownFamilyMember, FamilyNumber, FamilyName, StationBeforeFamily,
                     StationNotNumber, Incomplete, UnexpectedCharacter, AboveLast, BelowFirst, NotAligned,
                     NumberTooLong, LimitsUnreadable, BitBeyondWord, NoBits, WrongType, NumberRefused>;

    Reason reason;
    /// The type filter of the question: -1 any row, 0 bit rows, any other value register rows.
    int type = -1;
    /// True when `LabelInterface::addressValidation` returns a row although the reason is a fault. That call tests
    /// neither the number nor the type of a new member of a family, and accepts a family's name and an unreadable
    /// number.
    bool isUnchecked = false;
    RowFacts row;
    /// The device address, and the text before its "-" (null without one).
    QString address;
    QString station;
    /// The nearest addresses that the label accepts for this type filter, with number and type tested; the best first,
    /// at most 5, with the station of the address. Empty for `Accepted`, and when nothing is near.
    QStringList suggestions;

    Kind kind() const { return static_cast<Kind>(reason.index()); }

    /// True exactly when `LabelInterface::addressValidation` returns a row for the address. For a label that is no
    /// `LabelLoader`: when one of its present rows accepts the address.
    bool isAccepted() const { return kind() == Kind::Accepted || isUnchecked; }

    /// The typing error that explains the reason; null for none.
    ZELMAR_LABEL_EXPORT const TypingError *typingError() const;

    /// Where the typing error is, else where the reason applies; -1 for no place. For a refused number, the index of
    /// its first character.
    ZELMAR_LABEL_EXPORT int position() const;

    /// `position` in the whole text, station included; -1 for no place.
    int positionInText() const
    {
        return position() < 0 || station.isNull() ? position() : position() + station.size() + 1;
    }
};

/// Returns whether `label` accepts `address`, with or without station, for the type filter `type`, and if not, why.
///
/// Adds no rows, changes no answer of the label, and shows what `addressValidation` would do with addresses of dynamic
/// families. For a label that is no `LabelLoader` it can use only the interface: it knows neither the characters of a
/// format nor its limits, suggests nothing, and the row is the first possible one. It uses a caller's own creator like
/// any other.
///
/// Takes some microseconds for an accepted address, and some tens of microseconds for a refused one. Only the rows
/// write to the debug log: limits that are no numbers, and scripts that fail or print. Never fails. Not while another
/// thread uses the label.
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
