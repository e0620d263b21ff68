// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef ZELMAR_LABEL_COMMANDINFORMATIONTALBE_H
#define ZELMAR_LABEL_COMMANDINFORMATIONTALBE_H

#include "zelmar_label/address_grammar/commandformatter.h"
#include "zelmar_label/label_table/labeltype.h"
#include "zelmar_label/zelmar_label_export.h"

#include <QList>
#include <QString>
#include <QStringList>

#include <memory>

namespace label {

class AddressTable;

/// The address formats of one device, in the order of matching.
///
/// A row's position, from 0, is its *type index*. It never changes: rows are only appended. If several rows accept an
/// address, the lowest type index wins.
///
/// The argument `type` of a lookup is a type filter: -1 any row, 0 bit rows, any other value every register row
/// (`passesTypeFilter`). A type index outside the table returns the stated value; nothing throws.
///
/// A value. A copy has the same compiled rows, and shares the engines of their scripts. Any number of threads may ask a
/// table, also while one adds rows; other changes need a table that no other thread uses.
class ZELMAR_LABEL_EXPORT CommandInformationTalbe
{
public:
    CommandInformationTalbe();
    CommandInformationTalbe(const CommandInformationTalbe &other);
    CommandInformationTalbe &operator=(const CommandInformationTalbe &other);
    /// Afterwards only assign to `other` or destroy it.
    CommandInformationTalbe(CommandInformationTalbe &&other) noexcept;
    CommandInformationTalbe &operator=(CommandInformationTalbe &&other) noexcept;
    ~CommandInformationTalbe();

    /// Appends a copy of `formatter`; its type index is the old number of rows.
    void addCommandFormatter(const CommandFormatter &formatter);

    /// As above, without a copy: a loaded script of `formatter` is not loaded again.
    void addCommandFormatter(CommandFormatter &&formatter);

    /// Compiles the rows for matching. The first question does it otherwise.
    void compile() const;

    /// The rows and their automaton, for the library's own use.
    const AddressTable &rows() const { return *m_rows; }

    /// Number of rows.
    int countFormatters() const;

    /// The row, owned by the table and valid as long as the table; null for an index outside the table.
    const CommandFormatter *formatterAt(int index) const;

    /// \name Finding rows
    ///@{
    /// The first row that accepts `address`, with or without station, and passes the filter; -1 if there is none.
    int getFirstMatchedAddressIndex(const QString &address, int type) const;

    /// All rows, ascending, that accept `address` or could after further typing, and pass the filter.
    QList<int> getAllPartialMatchedAddressIndex(const QString &address, int type) const;

    /// All rows, ascending, whose prefix symbol is exactly `symbol`, and which pass the filter.
    QList<int> getAllMatchedSymbo(const QString &symbol, int type) const;

    /// The `catch_table` text of the row that `getFirstMatchedAddressIndex` returns; empty if there is none.
    QString getCatchTableName(const QString &address, int type) const;

    /// The first row whose pattern text is exactly `pattern`; -1 if there is none. Finds the templates of dynamic
    /// families.
    int getFormatterIndexByPattern(const QString &pattern) const;

    /// A copy of the row, a default-built formatter for an index outside the table.
    CommandFormatter getFormatterAtIndex(int index) const;
    ///@}

    /// \name Texts of all rows, in row order, repeats kept
    ///@{
    QStringList formatStrings() const;
    QStringList prefixSymbols() const;
    /// Of the rows whose type is exactly `type`.
    QStringList formatStringsByType(label::Type type) const;
    QStringList prefixSymbolsByType(label::Type type) const;
    QStringList bitCommandFormats() const;
    /// Of all rows that are not bit rows, reserved ones included.
    QStringList registerCommandFormats() const;
    /// Of the rows of type 5.
    QStringList reserveCommandFormats() const;
    ///@}

    /// \name Symbols without repeats, in no particular order
    ///@{
    QStringList bitPrefixSymbols() const;
    QStringList registerPrefixSymbols() const;
    QStringList reservePrefixSymbols() const;
    ///@}

    /// \name Questions to one row
    /// The value in brackets is returned for an index outside the table; those marked * also write a line to the debug
    /// log.
    ///@{
    int datatype(int typeIndex) const;                             ///< its type [-1*]
    int blocksize(int typeIndex) const;                            ///< its largest block, in units [-1*]
    int datasize(int typeIndex) const;                             ///< bytes of one unit [-1*]
    int addressRange(int typeIndex, const QString &address) const; ///< the number in a device address [-1*]
    int bitOffset(int typeIndex, const QString &address) const;    ///< the bit in a device address [-1*]
    bool canConvertRegisterCommand(int typeIndex) const;           ///< whether a register holds its bits [false*]
    QString continueRule(int typeIndex) const;                     ///< its continue rule ["N"*]
    int base(int typeIndex) const;                                 ///< radix of its numbers [10]
    QString formatstring(int typeIndex) const;                     ///< its description [empty]
    QString getPrefixSymbolByTypeID(int typeIndex) const;          ///< its symbol [empty]
    bool needOptimize(int typeIndex) const;                        ///< whether commands may be optimised [true]
    bool isTypeNeedAlignmentByte(int typeIndex) const;             ///< whether numbers count bits [false]
    int alignmentSize(int typeIndex) const;                        ///< numbers in an aligned group [1]
    bool isSemenseSepcialType(int typeIndex) const;                ///< whether its rule is "semens1" [false]
    ///@}

    /// \name Making commands
    ///@{
    /// `CommandFormatter::autoCompleteCommand` of the row; an empty list and a debug line for an index outside the
    /// table.
    QList<CommunicatorCommand> normalizeCommand(int typeIndex, const CommunicatorCommand &command) const;

    /// `CommandFormatter::makeContinueCommand` of the row; an empty list and a debug line for an index outside the
    /// table.
    QList<CommunicatorCommand> makeContinueCommand(int typeIndex, const CommunicatorCommand &command, int count) const;

    /// `CommandFormatter::makeContinueCommandwithCap` of the row; an empty list and a debug line for an index outside
    /// the table.
    QList<CommunicatorCommand> makeContinueCommandwithCap(int typeIndex, const CommunicatorCommand &command, int count,
                                                          int cap, bool checkRange) const;

    /// Cuts `length` numbers from `start` into block commands no larger than the row's block size. `start` and `length`
    /// are in the row's numbers (bits if `isTypeNeedAlignmentByte`); block lengths are in units. `stationId` -1: none.
    /// Empty for a length of 0 or below, for a row whose block size is not positive, and, with a debug line, for an
    /// index outside the table.
    QList<CommunicatorCommand> makeBlockCommand(int stationId, int typeIndex, int start, int length) const;

    /// The run as one command of any length. On a row whose numbers count bits, `length` is first padded to the next
    /// aligned number; an aligned one grows by a whole group. The null command, with a debug line, for an index outside
    /// the table.
    CommunicatorCommand makeBlockCommandWithoutSizeLimit(int stationId, int typeIndex, int start, int length) const;

    /// The register command, of length 1 and scan time 1, that holds the bit of `command`; the null command, with a
    /// debug line that says why, when `command` is no bit command, no bit row accepts it, no register row accepts the
    /// converted address, or the register is too narrow. `typeIndex` becomes the register's row and `convertedAddress`
    /// its address; after a failure they may be set or not.
    CommunicatorCommand convertBitCommandToRegisterCommand(const CommunicatorCommand &command, int &typeIndex,
                                                           QString &convertedAddress) const;
    ///@}

private:
    bool isIndex(int index) const { return index >= 0 && index < countFormatters(); }
    const CommandFormatter &row(int index) const;
    const CommandFormatter &formatterOrEmpty(int index) const;
    template<typename Selects>
    QStringList texts(QString (CommandFormatter::*text)() const, Selects selects) const;

    std::unique_ptr<AddressTable> m_rows;
};

} // namespace label

#endif
