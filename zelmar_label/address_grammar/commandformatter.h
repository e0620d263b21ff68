// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef ZELMAR_LABEL_COMMANDFORMATTER_H
#define ZELMAR_LABEL_COMMANDFORMATTER_H

#include "zelmar_label/address_grammar/communicatorcommand.h"
#include "zelmar_label/address_grammar/multiplerule.h"
#include "zelmar_label/address_grammar/scripthook.h"
#include "zelmar_label/zelmar_label_export.h"

#include <QList>
#include <QRegExp>
#include <QString>

#include <memory>
#include <optional>

namespace label {

class PatternPrefix;
struct AddressParts;

/// One address format of one device, made from one row of its device table: which texts belong to it, which number and
/// bit stand in them, whether the device has them, how the neighbouring addresses read, and how data is cut into
/// commands.
///
/// Terms. The *device address* is an address without its station ("3-D100" is device address "D100" of station 3). The
/// whole device address has to match the row's pattern. The *range string* is the text of the capture group
/// `address_group_index`; what stands left and right of it is the prefix and the suffix text. The *number* is the
/// integer in the range string (on a bit row in its word part), read in radix `base()`; the limits apply to it and
/// steps count in it. The *bit offset* is the position of a bit in its word. -1 stands for no number, no bit and no
/// station.
///
/// New addresses are put together as prefix text, number in radix `base()` without leading zeros and in lower case,
/// suffix text.
///
/// A row whose rule text names an existing script file leaves some questions to the script (see `ScriptHook`).
///
/// Nothing here fails by exception. A value, but copying costs: the pattern, and for a loaded script one evaluation of
/// it. Not safe for use by two threads at once, not even through const operations: pattern and script keep state of
/// their last use. Callers serialise.
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

    /// Takes over `other` with its loaded script; `other` may then only be assigned to or destroyed.
    CommandFormatter(CommandFormatter &&other) noexcept;
    CommandFormatter &operator=(CommandFormatter &&other) noexcept;

    ~CommandFormatter();

    /// Takes over every field; a loaded script is loaded anew.
    void copy(const CommandFormatter &other);

    /// \name The row's columns
    ///@{
    /// Replaces the pattern by a new case-sensitive expression.
    void setPattern(const QString &pattern);
    QString pattern() const;
    void setPrefixSymbol(const QString &symbol);
    QString prefixSymbol() const;
    /// The symbol that an editor shows instead of `prefixSymbol()`; empty for none. Set on rows of a dynamic family.
    void setEditorPrefixSymbol(const QString &symbol);
    /// The editor's symbol if there is one, else `prefixSymbol()`.
    QString getEditorUsedPrefixsymbol() const;
    /// The description that a user reads.
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

    /// \name Station prefix
    ///@{
    bool hadStationID(const QString &address) const;
    bool hadStationID(const CommunicatorCommand &command) const;
    /// The device address.
    QString removeStationID(const QString &address) const;
    /// A fresh command with the device address, keeping scan time, data type, length and auxiliary number; the
    /// auxiliary text and flag are lost.
    CommunicatorCommand removeStationID(const CommunicatorCommand &command) const;
    /// `command` at station `stationId`, an old station replaced; fields are kept as by `removeStationID`. For -1 a
    /// full copy of `command`; other negative numbers count as stations.
    CommunicatorCommand addStationID(int stationId, const CommunicatorCommand &command) const;
    ///@}

    /// \name Matching and validity
    ///@{
    /// How much of `address` this row accepts: on an exact match of the device address the length of the whole of
    /// `address`, station included; otherwise the length of the part of the device address that could still be
    /// completed, or -1.
    int matchedLength(const QString &address) const;

    /// The range string of a device address; empty when the pattern is not found in it.
    QString getRangeString(const QString &address) const;

    /// The part of a device address that an editor shows beside the symbol: the range string, or, on a row with an
    /// editor's symbol, the last characters that this symbol does not account for.
    QString getEditorUsedRangeString(const QString &address) const;

    /// The number in a device address; -1 when there is none, or none that fits an `int`.
    int getAddresRangePart(const QString &address) const;

    /// The bit offset in a device address; -1 on a register row, when the pattern is not found or the bit cannot be
    /// read.
    int getbitOffset(const QString &address) const;

    /// Moves whole words out of `bit` into `word`; `base` is the value of `bitbase()`. A decimal bit part carries at 16
    /// (at 32 for the radix word "31"). Any other radix carries digit by digit, its digits read as decimal ones, so
    /// that a step that lands on a letter behind the carried digit gives bit 0.
    void bitOffsetCarry(int &word, int &bit, int base) const;

    /// True when `value` lies within the limits and, on a register row, obeys the alignment. Limits that are no numbers
    /// in radix `base()` give false and a line in the debug log.
    bool isRangeValid(int value) const;

    /// True when the device address in `address` matches and its number is valid. A number of -1 is taken as valid: the
    /// match alone is enough. The bit is not examined; the pattern has to guard it.
    bool isAddressValid(const QString &address) const;

    /// True when `address`, which must not carry a station, matches, has a valid number, and row and `type` are both
    /// bit or both register types; widths are not compared.
    bool isAddressDataTypeMatch(const QString &address, CommunicatorCommand::DataType type) const;

    /// As `isAddressValid`, for a text that is known to carry no station.
    bool isDeviceAddressValid(const QString &deviceAddress) const;

    /// True when a device address matches, or could after further typing. The same as a `matchedLength` that reaches
    /// the end of the text.
    bool canBeCompleted(const QString &deviceAddress) const;

    /// How many characters of a device address, from its front, an address of the row could begin with; one more than
    /// all of them when it matches as it stands, whatever its number.
    int matchedFront(const QString &deviceAddress) const;

    /// An upper bound of `matchedFront`, found without the expression, hundreds of times as fast.
    int possibleFront(const QString &deviceAddress) const;

    /// A device address that matches, with `digits` in the place of its number (on a bit row of the word); all else
    /// stays. Empty when the pattern is not found in it. Whether the device has such an address is not asked.
    QString withNumber(const QString &deviceAddress, const QString &digits) const;
    ///@}

    /// \name Rule
    ///@{
    /// True when `value` obeys the alignment, or when the row has none.
    bool validateMultiple(int value) const;
    static bool M8(int value);
    static bool M8add1(int value);
    static bool M16(int value);
    static bool M16add1(int value);
    static bool M64add1(int value);
    /// `digits` with "0" in front up to the rule's width of a bit part: 2 for rules with "last2", else 1.
    QString stringWithDigits(QString digits) const;
    /// True when commands of the row may be optimised.
    bool needOptimize() const;
    /// The `continue` column; "y" and "yes" in any case mean that commands of the row must be continuous.
    QString continueRule() const;
    /// Numbers in one aligned group: 8, 16 or 1, or what the script announces.
    int aligmentSize() const;
    /// True when the row's numbers count single bits, so that one unit spans `datasize() * 8` numbers.
    bool isTypeRangeNeedAlignmentByte() const;
    /// Radix of the bit part; 32 marks a decimal bit from 0 to 31; -1 for none.
    int bitbase() const;
    /// True when a bit of the row can be reached through a register. On register rows without meaning.
    bool canConvertRegisterCommand() const;
    /// True for the rule text "semens1": byte distances are differences of numbers.
    bool isSemenseSepcialType() const;
    ///@}

    /// \name Making commands
    ///@{
    /// `command` cut into units of the row that together cover its bytes; `command` itself when one unit is enough,
    /// when it is a bit command or when its address does not match. Units beyond the limits are left out. A length
    /// above 1 goes to `autoCompleteStringCommand`.
    QList<CommunicatorCommand> autoCompleteCommand(const CommunicatorCommand &command) const;

    /// As above, with `command.length` taken as the size in bytes whatever the data type; even a single element gets
    /// length 1 and the row's type.
    QList<CommunicatorCommand> autoCompleteStringCommand(const CommunicatorCommand &command) const;

    /// The `count` addresses from `command` on, itself included, at the natural spacing; a command one or two widths
    /// wider than the row steps 2 or 4 units. Numbers beyond the limits are left out. New commands have length 1 and
    /// scan time 1. `command` alone when its address does not match.
    QList<CommunicatorCommand> makeContinueCommand(const CommunicatorCommand &command, int count) const;

    /// As above, `cap` units apart, with length and scan time of `command` and the row's type. `checkRange` turns the
    /// limits and the alignment step on.
    QList<CommunicatorCommand> makeContinueCommandwithCap(const CommunicatorCommand &command, int count, int cap,
                                                          bool checkRange) const;

    /// The `count` bit addresses from `command` on, `step` bits apart. A suffix text of the pattern has no place in
    /// them. The prefix text is cut from the address as it came in, at the place found in the device address: callers
    /// pass device addresses. The range check of a two-part rule tests the bit, not the word.
    QList<CommunicatorCommand> makeBitContinueCommand(const CommunicatorCommand &command, int count, int step,
                                                      bool checkRange) const;

    /// Appends to `list` the bit command at number `value`, unless `checkRange` forbids it. `stationId` -1: none.
    void makeOnePartBitCommands(QList<CommunicatorCommand> &list, QString prefix, int value, bool checkRange,
                                int stationId) const;

    /// Appends to `list` the bit command at `word`, `separator`, `bit`, unless `checkRange` is set and `bit` is beyond
    /// the limits.
    void makeTwoPartBitCommands(QList<CommunicatorCommand> &list, QString prefix, int word, int bit, int bitRadix,
                                QString separator, bool checkRange, int stationId) const;

    /// One command of `length` units at the row's symbol followed by `value`. Nothing is checked.
    CommunicatorCommand makeBlockCommand(int stationId, int value, int length) const;
    ///@}

    /// \name Bit to register
    ///@{
    /// The address of the register that holds the bit of `command`, with its station; just the symbol where no number
    /// can be made. Answers for any row, whether or not it can convert.
    QString convertToRegisterAddress(const CommunicatorCommand &command) const;

    /// The symbol of that register address: the one that the rule names, else the row's own.
    QString convertedRegisterCommandSymbol() const;

    /// The number part of that register address for a device address; empty, with a line in the debug log, when the
    /// number cannot be read; empty in silence when the rule tells no alignment.
    QString convertedRagisterCommandRange(const QString &address) const;
    ///@}

private:
    AddressParts splitAddress(const QString &deviceAddress) const;
    void readLimits();
    int unitStep() const;
    QList<CommunicatorCommand> unitCommands(const CommunicatorCommand &command, unsigned long long size) const;
    void appendNew(QList<CommunicatorCommand> &list, const QString &address, int stationId) const;
    bool isBeyondLimits(int value, int step) const;

    QRegExp m_pattern;
    QString m_patternText;
    int m_type = 0;
    int m_addressGroupIndex = 0;
    unsigned long long m_dataSize = 0;
    QString m_start;
    QString m_end;
    int m_base = 0;
    QString m_description;
    QString m_prefixSymbol;
    QString m_catchTable;
    MultipleRule m_multipleRule;
    int m_blocksize = 0;
    QString m_continueRuleText;
    ScriptHook m_script;
    QString m_editorPrefixSymbol;

    std::optional<int> m_firstNumber;
    std::optional<int> m_lastNumber;
    std::shared_ptr<const PatternPrefix> m_patternPrefix;
};

} // namespace label

#endif
