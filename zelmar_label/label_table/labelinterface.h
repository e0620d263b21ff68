// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef ZELMAR_LABEL_LABELINTERFACE_H
#define ZELMAR_LABEL_LABELINTERFACE_H

#include "zelmar_label/address_grammar/communicatorcommand.h"
#include "zelmar_label/label_table/labeltype.h"
#include "zelmar_label/zelmar_label_export.h"

#include <QList>
#include <QString>
#include <QStringList>

namespace label {

/// The address grammar of one device, for tags and widgets. Get one from `createLabel`.
///
/// Terms. A *type index* is the position of a row (an address format) in the device's table, from 0, stable for the
/// life of the label. The argument `type` of a lookup is a filter: -1 any row, 0 bit rows, any other value every
/// register row. A *device address* has no station. -1 means no row, no number, no bit or no station. The *null
/// command* is a default `CommunicatorCommand`, address "S>NULL".
///
/// Nothing throws. A type index outside the table returns the stated failure value and mostly writes a line to the
/// debug log.
///
/// The store that made a label owns it; callers hold plain pointers. The destructor is not virtual: never delete a
/// label, call `freeLabel`.
///
/// Any number of threads may use a label of the store at once. Rows are only added, by `addressValidation` and
/// `convertBitCommandToRegisterCommand`; they never change or move. Calls of one row's script wait for each other.
class ZELMAR_LABEL_EXPORT LabelInterface
{
public:
    /// Number of all rows, bit or not.
    virtual int countBitTypes() = 0;

    /// Number of all rows, bit or not: the same as `countBitTypes`.
    virtual int countRegisterTypes() = 0;

    /// Radix of the row's numbers; 10 for a wrong index.
    virtual int base(int typeIndex) = 0;

    /// The row's type, 0 for a bit row; it becomes the data type of the row's commands. -1 for a wrong index.
    virtual int datatype(int typeIndex) = 0;

    /// Bytes of one addressable unit; -1 for a wrong index.
    virtual int datasize(int typeIndex) = 0;

    /// The number in a device address of the row; -1 when there is none, and for a wrong index.
    virtual int addressRange(int typeIndex, const QString &address) = 0;

    /// Splits an address, with or without station, into the symbol and the text after it as an editor shows them.
    /// Returns false and leaves both texts when no row accepts the address. Adds no rows: an address of a dynamic
    /// family is known only after `addressValidation`.
    virtual bool parseAddress(const QString &address, QString &prefix, QString &range) = 0;

    /// The type index of the first row that accepts `address`; -1 when it is not valid. For an address of a dynamic
    /// family whose prefix no row has yet, adds a row at the end of the table; this first call does not test the number
    /// against the limits. A family is recognised only in a device address.
    virtual int addressValidation(const QString &address, int type) = 0;

    /// The rows, ascending, that accept `address` or could after further typing. Adds no rows.
    virtual QList<int> getAllMatchedIndex(const QString &address, int type) = 0;

    /// The rows, ascending, whose prefix symbol is exactly `symbol`.
    virtual QList<int> getAllMatchedSymbol(const QString &symbol, int type) = 0;

    /// The row's symbol, which block commands put before the number; empty for a wrong index.
    virtual QString getPrefixSymbolByTypeID(int typeIndex) = 0;

    /// The symbol that an editor shows: the family's for a dynamic family, else the row's; empty for a wrong index.
    virtual QString getEditUsedPrifixSymbolByTypeId(int typeIndex) = 0;

    /// The row's description for users; empty for a wrong index.
    virtual QString getFormatString(int typeIndex) = 0;

    /// The catch table text of the first row that accepts `address`; empty if there is none.
    virtual QString getCatchTableName(const QString &address, int type) = 0;

    /// Largest block command of this driver.
    virtual int getBlockCommandMaxSize() = 0;

    /// Largest block command of bits of this driver.
    virtual int getBitCommandMaxSize() = 0;

    /// True when commands of the row must be continuous: its continue rule is "y" or "yes" in any case.
    virtual bool isMustContinue(int typeIndex) = 0;

    /// Numbers in one aligned group of the row; 1 without alignment and for a wrong index.
    virtual int alignmentSize(int typeIndex) = 0;

    /// The bit offset in a device address of the row; -1 when there is none, and for a wrong index.
    virtual int bitOffset(int typeIndex, const QString &address) = 0;

    /// True when a bit of the row can be reached through a register; false for a wrong index.
    virtual bool canConvertToRegisterCommand(int typeIndex) = 0;

    /// The register command that holds the bit of `command`, with length 1 and scan time 1; `typeIndex` becomes its
    /// row. The null command, and a line in the debug log, when there is none. May add a row for the register's prefix.
    virtual CommunicatorCommand convertBitCommandToRegisterCommand(const CommunicatorCommand &command,
                                                                   int &typeIndex) = 0;

    /// True when `block`, a block command of the row, covers the start of `command`. Always false for different
    /// stations.
    virtual bool isCommandInBlockRange(int typeIndex, const CommunicatorCommand &command,
                                       const CommunicatorCommand &block) = 0;

    /// Bytes from the start of `base` forward to the start of `command`; -1 when one has no number, when `base` is the
    /// later one (with a line in the debug log), and for a wrong index.
    virtual int calculateOffsetByte(int typeIndex, const CommunicatorCommand &base,
                                    const CommunicatorCommand &command) = 0;

    /// Symbols of the rows of exactly this type, in row order.
    virtual QStringList prefixSymbolsByType(label::Type type) = 0;

    /// Descriptions of the rows of exactly this type, in row order.
    virtual QStringList commandFormatsByType(label::Type type) = 0;

    /// Descriptions of all register rows, reserved ones included, in row order.
    virtual QStringList registerCommandFormats() = 0;

    /// Descriptions of all bit rows, in row order.
    virtual QStringList bitCommandFormats() = 0;

    /// Descriptions of all reserved rows (type 5), in row order.
    virtual QStringList reservCommandFormats() = 0;

    /// Symbols of all register rows, each once, in no particular order.
    virtual QStringList registerPrefixSymbols() = 0;

    /// Symbols of all bit rows, each once, in no particular order.
    virtual QStringList bitPrefixSymbols() = 0;

    /// Symbols of all reserved rows, each once, in no particular order.
    virtual QStringList reservPrefixSymbols() = 0;

    /// Symbols of all rows, in row order.
    virtual QStringList prefixSymbols() = 0;

    /// Cuts `command` into commands of one unit of the row that together cover its data; leaves out units beyond the
    /// limits. Empty for a wrong index.
    virtual QList<CommunicatorCommand> normalizeCommand(int typeIndex, const CommunicatorCommand &command) = 0;

    /// `count` commands at the row's natural spacing, starting with `command`; commands beyond the limits are left out.
    /// Empty for a wrong index.
    virtual QList<CommunicatorCommand> makeContinueCommand(int typeIndex, const CommunicatorCommand &command,
                                                           int count) = 0;

    /// As above, `cap` units apart; `checkRange` switches limits and alignment on. Empty for a wrong index.
    virtual QList<CommunicatorCommand> makeContinueCommandwithCap(int typeIndex, const CommunicatorCommand &command,
                                                                  int count, int cap, bool checkRange) = 0;

    /// One block command of any length for `length` numbers from `start`; the null command for a wrong index.
    virtual CommunicatorCommand makeBlockCommandWithoutSizeLimit(int stationId, int typeIndex, int start,
                                                                 int length) = 0;

    /// Cuts `length` numbers from `start` into block commands no larger than the row's block size. Empty for a length
    /// of 0 or below, for a row without a positive block size, and for a wrong index.
    virtual QList<CommunicatorCommand> makeBlockCommand(int stationId, int typeIndex, int start, int length) = 0;

    /// True when commands of the row may be optimised; true for a wrong index.
    virtual bool needOptimize(int typeIndex) = 0;

    /// True when the row's numbers count single bits; false for a wrong index.
    virtual bool isTypeNeedAlignmentByte(int typeIndex) = 0;

    /// Largest block of the row, in units; -1 for a wrong index.
    virtual int blocksize(int typeIndex) = 0;
};

} // namespace label

#endif
