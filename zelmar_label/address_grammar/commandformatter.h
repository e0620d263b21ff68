// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef ZELMAR_LABEL_COMMANDFORMATTER_H
#define ZELMAR_LABEL_COMMANDFORMATTER_H

#include "zelmar_label/address_grammar/communicatorcommand.h"
#include "zelmar_label/address_grammar/multiplerule.h"
#include "zelmar_label/address_grammar/scripthook.h"
#include "zelmar_label/address_grammar/textplace.h"
#include "zelmar_label/zelmar_label_export.h"

#include <QList>
#include <QString>
#include <QStringView>

#include <memory>
#include <optional>

namespace label {

class AddressRow;
class Pattern;
struct AddressColumns;
struct AddressParts;

/// One address format of one device, made from one row of its device table. It tests addresses, reads their number and
/// bit, tests the device's limits, makes the neighbouring addresses, and cuts data into commands.
///
/// Terms. The *device address* is an address without its station ("3-D100" is device address "D100" of station 3). The
/// whole device address must match the row's pattern. The *range string* is the text of the capture group
/// `address_group_index`; the prefix and the suffix text are left and right of it. The *number* is the integer in the
/// range string (on a bit row in its word part), in radix `base()`; limits and steps apply to it. The *bit offset* is
/// the position of a bit in its word. -1 means no number, no bit or no station.
///
/// A new address is the prefix text, the number in radix `base()` without leading zeros and in lower case, and the
/// suffix text.
///
/// A row whose rule text names an existing script file leaves some questions to the script (see `ScriptHook`).
///
/// Nothing throws. A value over a shared, compiled row: a copy costs a pointer, and on a row with a loaded script the
/// script's evaluation. Any number of threads may call the const operations of one formatter; calls of a script wait
/// for each other.
class ZELMAR_LABEL_EXPORT CommandFormatter
{
public:
    /// An empty format, which matches no address; its continue rule is "N".
    CommandFormatter();

    /// One row. `pattern` is a case-sensitive `QRegExp`; an invalid one matches nothing, silently. `type` is 0 for a
    /// bit row, else a register row, and becomes the data type of commands made from the row. `start` and `end` are the
    /// first and last valid number, inclusive, as text in radix `base`. `dataSize` is in bytes per addressable unit,
    /// `blocksize` in units. Loads the script if `multipleRule` names one. Writes one line to the debug log.
    CommandFormatter(const QString &pattern, int type, int addressGroupIndex, const QString &description,
                     const QString &prefixSymbol, QString start, QString end, unsigned long long dataSize,
                     const QString &multipleRule, const QString &catchTable, int base, int blocksize,
                     const QString &continueRule);

    CommandFormatter(const CommandFormatter &other);
    CommandFormatter &operator=(const CommandFormatter &other);

    /// Takes `other` with its loaded script; afterwards only assign to `other` or destroy it.
    CommandFormatter(CommandFormatter &&other) noexcept;
    CommandFormatter &operator=(CommandFormatter &&other) noexcept;

    ~CommandFormatter();

    /// Copies every field; loads a loaded script again.
    void copy(const CommandFormatter &other);

    /// \name The row's columns
    ///@{
    /// Replaces the pattern with a new case-sensitive expression.
    void setPattern(const QString &pattern);
    QString pattern() const;
    void setPrefixSymbol(const QString &symbol);
    QString prefixSymbol() const;
    /// The symbol that an editor shows instead of `prefixSymbol()`; empty for none. Set on rows of a dynamic family.
    void setEditorPrefixSymbol(const QString &symbol);
    /// The editor's symbol if there is one, else `prefixSymbol()`.
    QString getEditorUsedPrefixsymbol() const;
    /// The description for users.
    QString formatString() const;
    int type() const;
    /// Bytes of one addressable unit.
    unsigned long long datasize() const;
    /// Radix of the number.
    int base() const;
    /// Largest block, in units.
    int blocksize() const;
    QString catchTable() const;
    /// First and last valid number, inclusive, as text in radix `base()`.
    QString start() const;
    QString end() const;
    /// The `multiple_rule` text.
    QString ruleText() const;
    ///@}

    /// \name What is read of the columns
    ///@{
    /// All of it, for the library's own use; shared by copies of the formatter and valid as long as one of them.
    const AddressRow &compiledRow() const { return *m_row; }
    /// The rule.
    const MultipleRule &rule() const;
    /// The limits as numbers, inclusive; nothing for one that is no number in radix `base()`.
    std::optional<int> firstNumber() const;
    std::optional<int> lastNumber() const;
    /// The compiled pattern, for the library's own use.
    const Pattern &compiledPattern() const;
    /// The place of the range string in a device address; a start of -1 when the pattern is not found in it.
    TextPlace rangePlace(QStringView deviceAddress) const;
    /// True when a script parses the addresses of the row.
    bool isScripted() const { return m_script != nullptr; }
    /// True when the row is the template of a dynamic family: its pattern is a plain name, not an expression.
    bool isFamilyTemplate() const;
    ///@}

    /// \name Station prefix
    ///@{
    bool hadStationID(const QString &address) const;
    bool hadStationID(const CommunicatorCommand &command) const;
    /// The device address.
    QString removeStationID(const QString &address) const;
    /// A new command with the device address; it keeps scan time, data type, length and auxiliary number, not the
    /// auxiliary text and flag.
    CommunicatorCommand removeStationID(const CommunicatorCommand &command) const;
    /// `command` at station `stationId` instead of an old station; it keeps the same fields as `removeStationID`. A
    /// full copy of `command` for -1; other negative numbers count as stations.
    CommunicatorCommand addStationID(int stationId, const CommunicatorCommand &command) const;
    ///@}

    /// \name Matching and validity
    ///@{
    /// How much of `address` this row accepts: on an exact match of the device address the length of the whole
    /// `address`, station included; otherwise the length of the part of the device address that can still be completed,
    /// or -1.
    int matchedLength(const QString &address) const;

    /// The range string of a device address; empty when the pattern is not found in it.
    QString getRangeString(const QString &address) const;

    /// The part of a device address that an editor shows beside the symbol: the range string, or, on a row with an
    /// editor's symbol, the characters after that symbol's length.
    QString getEditorUsedRangeString(const QString &address) const;

    /// The number in a device address; -1 when there is none that fits an `int`.
    int getAddresRangePart(const QString &address) const;

    /// The bit offset in a device address; -1 on a register row, when the pattern is not found or the bit cannot be
    /// read.
    int getbitOffset(const QString &address) const;

    /// Moves whole words out of `bit` into `word`; `base` is the value of `bitbase()`. A decimal bit part carries at 16
    /// (at 32 for the radix word "31"). Any other radix carries digit by digit and reads its digits as decimal ones, so
    /// a step to a letter after the carried digit gives bit 0.
    void bitOffsetCarry(int &word, int &bit, int base) const;

    /// True when `value` is within the limits and, on a register row, aligned. Limits that are no numbers in radix
    /// `base()` give false and a line in the debug log.
    bool isRangeValid(int value) const;

    /// True when the device address in `address` matches and its number is valid. A number of -1 counts as valid: the
    /// match is enough. Does not test the bit; the pattern must.
    bool isAddressValid(const QString &address) const;

    /// True when `address`, which must not carry a station, matches, has a valid number, and row and `type` are both
    /// bit or both register types; widths are not compared.
    bool isAddressDataTypeMatch(const QString &address, CommunicatorCommand::DataType type) const;

    /// As `isAddressValid`, for a text without a station.
    bool isDeviceAddressValid(const QString &deviceAddress) const;

    /// True when a device address matches, or could after further typing: `matchedLength` reaches the end of the text.
    bool canBeCompleted(const QString &deviceAddress) const;

    /// How many leading characters of a device address can begin an address of the row; its size plus one when it
    /// matches, with any number.
    int matchedFront(const QString &deviceAddress) const;
    int possibleFront(const QString &deviceAddress) const { return matchedFront(deviceAddress); }

    /// A matching device address with `digits` instead of its number (on a bit row, of the word). Empty when the
    /// pattern is not found in it. Does not test whether the device has this address.
    QString withNumber(const QString &deviceAddress, const QString &digits) const;
    ///@}

    /// \name Rule
    ///@{
    /// True when `value` is aligned, or when the row has no alignment.
    bool validateMultiple(int value) const;
    static bool M8(int value);
    static bool M8add1(int value);
    static bool M16(int value);
    static bool M16add1(int value);
    static bool M64add1(int value);
    /// `digits`, padded with leading "0" to the width of the rule's bit part: 2 for rules with "last2", else 1.
    QString stringWithDigits(QString digits) const;
    /// True when commands of the row may be optimised.
    bool needOptimize() const;
    /// The `continue` column; "y" and "yes" in any case: commands of the row must be continuous.
    QString continueRule() const;
    /// Numbers in one aligned group: 8, 16 or 1, or the script's value.
    int aligmentSize() const;
    /// True when the row's numbers count single bits, so that one unit spans `datasize() * 8` numbers.
    bool isTypeRangeNeedAlignmentByte() const;
    /// Radix of the bit part; 32 marks a decimal bit from 0 to 31; -1 for none.
    int bitbase() const;
    /// True when a bit of the row can be reached through a register. No meaning on register rows.
    bool canConvertRegisterCommand() const;
    /// True for the rule text "semens1": byte distances are differences of numbers.
    bool isSemenseSepcialType() const;
    ///@}

    /// \name Making commands
    ///@{
    /// Cuts `command` into units of the row that together cover its bytes. Returns `command` itself when one unit is
    /// enough, when it is a bit command or when its address does not match. Leaves out units beyond the limits. Calls
    /// `autoCompleteStringCommand` for a length above 1.
    QList<CommunicatorCommand> autoCompleteCommand(const CommunicatorCommand &command) const;

    /// As above, but `command.length` is the size in bytes for every data type; a single element also gets length 1 and
    /// the row's type.
    QList<CommunicatorCommand> autoCompleteStringCommand(const CommunicatorCommand &command) const;

    /// `count` addresses at the natural spacing, starting with `command`; a command one or two widths wider than the
    /// row steps 2 or 4 units. Leaves out numbers beyond the limits. New commands have length 1 and scan time 1. Only
    /// `command` when its address does not match.
    QList<CommunicatorCommand> makeContinueCommand(const CommunicatorCommand &command, int count) const;

    /// As above, `cap` units apart, with length and scan time of `command` and the row's type. `checkRange` switches on
    /// the limits and the alignment step.
    QList<CommunicatorCommand> makeContinueCommandwithCap(const CommunicatorCommand &command, int count, int cap,
                                                          bool checkRange) const;

    /// `count` bit addresses, starting with `command`, `step` bits apart, without the pattern's suffix text. The prefix
    /// text is cut from the given address at the position found in the device address: callers pass device addresses.
    /// The range check of a two-part rule tests the bit, not the word.
    QList<CommunicatorCommand> makeBitContinueCommand(const CommunicatorCommand &command, int count, int step,
                                                      bool checkRange) const;

    /// Appends to `list` the bit command at number `value`, unless `checkRange` forbids it. `stationId` -1: none.
    void makeOnePartBitCommands(QList<CommunicatorCommand> &list, QString prefix, int value, bool checkRange,
                                int stationId) const;

    /// Appends to `list` the bit command at `word`, `separator`, `bit`, unless `checkRange` is true and `bit` is beyond
    /// the limits.
    void makeTwoPartBitCommands(QList<CommunicatorCommand> &list, QString prefix, int word, int bit, int bitRadix,
                                QString separator, bool checkRange, int stationId) const;

    /// One command of `length` units at the row's symbol followed by `value`. Checks nothing.
    CommunicatorCommand makeBlockCommand(int stationId, int value, int length) const;
    ///@}

    /// \name Bit to register
    ///@{
    /// The address of the register that contains the bit of `command`, with its station; only the symbol if no number
    /// can be made. Works for any row, also for one that cannot convert.
    QString convertToRegisterAddress(const CommunicatorCommand &command) const;

    /// The symbol of that register address: the one in the rule, else the row's own.
    QString convertedRegisterCommandSymbol() const;

    /// The number part of that register address for a device address. Empty, with a line in the debug log, when the
    /// number cannot be read; empty without a line when the rule has no alignment.
    QString convertedRagisterCommandRange(const QString &address) const;
    ///@}

private:
    const AddressColumns &columns() const;
    const ScriptHook &script() const;
    template<typename Answer>
    Answer chosen(Answer byScript, Answer byRule) const;
    void change(AddressColumns columns);
    AddressParts splitAddress(const QString &deviceAddress) const;
    int unitStep() const;
    QList<CommunicatorCommand> unitCommands(const CommunicatorCommand &command, unsigned long long size) const;
    void appendNew(QList<CommunicatorCommand> &list, const QString &address, int stationId) const;
    bool isBeyondLimits(int value, int step) const;

    std::shared_ptr<const AddressRow> m_row;
    std::unique_ptr<ScriptHook> m_script;
};

} // namespace label

#endif
