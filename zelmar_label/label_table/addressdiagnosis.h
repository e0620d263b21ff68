// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef ZELMAR_LABEL_ADDRESSDIAGNOSIS_H
#define ZELMAR_LABEL_ADDRESSDIAGNOSIS_H

#include <QString>
#include <QStringList>

namespace label {

class CommandFormatter;
class CommandInformationTalbe;

/// Why no row of a table accepts an address. A plain value: it stays true however the table grows.
///
/// Numbers and limits are texts in the row's own radix, as they stand in an address.
struct AddressDiagnosis
{
    enum class Kind {
        Accepted,            ///< a row accepts it; `row` says which
        Empty,               ///< there is no text
        UnknownFront,        ///< no format begins as far as `position` and the character there
        UnknownFamilyMember, ///< begins like a dynamic family (`row` is its template), but the family has no such
                             ///< member
        Incomplete,          ///< ends at `position`, where `expected` is still missing
        UnexpectedCharacter, ///< leaves its nearest format at `position`, where that has `expected`
        AboveLast,           ///< `number` is above the last one, `limit`
        BelowFirst,          ///< `number` is below the first one, `limit`
        NotAligned,          ///< `number` is not a multiple of `limit`; `nearest` are
        NumberTooLong,       ///< `number` is beyond any that can be told; the last one is `limit`
        LimitsUnreadable,    ///< `limit`, the row's two limits, are no numbers: the driver database is wrong
        WrongType,           ///< a row accepts it, but a bit where a register was asked for, or the reverse
    };

    Kind kind = Kind::Accepted;
    /// The type filter of the question.
    int type = -1;
    /// Type index of the row that the diagnosis is about, -1 for none. Of refusing rows it is the one that matches
    /// furthest, the first of equals.
    int row = -1;
    /// Index of a character of `address`, from 0; -1 where no place in the text is meant.
    int position = -1;
    /// The device address.
    QString address;
    /// What to call the row.
    QString format;
    QString number;
    QString limit;
    /// The next good numbers below and above, as far as there are any.
    QStringList nearest;
    /// What could stand at `position`, in words.
    QString expected;
    /// An address that differs in letter case or blanks only, and which a row accepts; mostly empty.
    QString suggestion;
};

/// Says why no row of `table` that passes the type filter `type` accepts `address`; `Accepted` exactly when one does. A
/// station in front is left out of account. Adds no rows: an address of a dynamic family is known only after
/// `LabelInterface::addressValidation`. Takes some microseconds a row, and more for an address that is refused.
AddressDiagnosis diagnoseAddress(const CommandInformationTalbe &table, const QString &address, int type);

/// The diagnosis for a person: a sentence without capital and full stop; empty for `Accepted`.
QString diagnosisSentence(const AddressDiagnosis &diagnosis);

/// True when the row is the template of a dynamic family: its pattern is a plain name and no expression.
bool isFamilyTemplate(const CommandFormatter &row);

/// What to call the row in a sentence: the concrete symbol on a row of a dynamic family, else the form that its
/// description begins with ("Dn.b: bit of a register"), else its symbol.
QString formatName(const CommandFormatter &row);

/// An address of the row's format: the one behind "e.g." in its description, else its symbol with its first number.
QString exampleAddress(const CommandFormatter &row);

/// "bit", "byte", "word", "double word", "quad word", "text"; "type 7" for a type without a name.
QString dataTypeWord(int type);

/// " (octal)", " (hexadecimal)" or " (radix 2)", to stand behind numbers of this radix; empty for decimal ones.
QString radixRemark(int radix);

} // namespace label

#endif
