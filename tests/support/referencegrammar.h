// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef ZELMAR_LABEL_TESTS_REFERENCEGRAMMAR_H
#define ZELMAR_LABEL_TESTS_REFERENCEGRAMMAR_H

#include "support/labelfixtures.h"

#include <QList>
#include <QRegExp>
#include <QString>

#include <memory>

class QScriptEngine;

/// A second, plain implementation of the address tests: each call works step by step on the row's texts, parses
/// everything again, and skips no work. The library must give the same answers and the same lines in the debug log.
///
/// Beyond `int` or a valid radix it follows the library: numbers wrap in 32 bits, a radix outside 2 to 36 prints in
/// decimal and reads nothing (0 reads by the text's prefix), and a count of pieces beyond `int` is none.
namespace reference {

/// The questions about a rule text, without a script.
class Rule
{
public:
    explicit Rule(const QString &text);

    bool isSplit() const;
    bool isOnePart() const;
    QString wordPart(const QString &range) const;
    QString bitPart(const QString &range) const;
    int bitOffset(const QString &range) const;
    int onePartBitOffset(const QString &range) const;
    QString separator() const;
    QString registerSymbol(const QString &defaultSymbol) const;
    QString registerNumber(int number, int base) const;
    int bitRadix() const;
    bool isAligned(int value) const;
    int aligmentSize() const;
    bool countsBits() const;
    bool needOptimize() const;
    bool canConvertToRegister() const;

    bool m8() const;
    bool m8add1() const;
    bool m16() const;
    bool m64add1() const;
    bool m16add1() const;

    QString text;

private:
    QString word(int group) const;
    bool isCompound() const;
    bool tailHolds(const char *expression) const;
};

/// The script file that a rule text names.
class Script
{
public:
    explicit Script(const QString &ruleText);

    bool exists() const;
    void load();

    QString path;
    bool loaded = false;
    int bitBase = 10;
    bool needOptimize = false;
    bool needAligment = false;
    int aligmentSize = 1;
    bool canConvertToRegister = false;
    int addressStartPos = 0;
    std::shared_ptr<QScriptEngine> engine;
};

/// One row. Logs as the row constructor does.
class Format
{
public:
    explicit Format(const Row &row);

    int matchedLength(const QString &address) const;
    bool isAddressValid(const QString &address) const;
    bool isAddressDataTypeMatch(const QString &address, int type) const;
    QString getRangeString(const QString &address) const;
    int getAddresRangePart(const QString &address) const;
    int getbitOffset(const QString &address) const;
    bool isRangeValid(int value) const;
    void bitOffsetCarry(int &word, int &bit, int base) const;

    bool validateMultiple(int value) const;
    bool needOptimize() const;
    int aligmentSize() const;
    bool isTypeRangeNeedAlignmentByte() const;
    int bitbase() const;
    bool canConvertRegisterCommand() const;

    QList<CommunicatorCommand> autoCompleteCommand(const CommunicatorCommand &command) const;
    QList<CommunicatorCommand> autoCompleteStringCommand(const CommunicatorCommand &command) const;
    QList<CommunicatorCommand> makeContinueCommand(const CommunicatorCommand &command, int count) const;
    QList<CommunicatorCommand> makeContinueCommandwithCap(const CommunicatorCommand &command, int count, int cap,
                                                          bool checkRange) const;
    QList<CommunicatorCommand> makeBitContinueCommand(const CommunicatorCommand &command, int count, int step,
                                                      bool checkRange) const;
    CommunicatorCommand makeBlockCommand(int stationId, int value, int length) const;
    QString convertToRegisterAddress(const CommunicatorCommand &command) const;

    Row row;

private:
    struct Cut;

    QRegExp expression() const;
    Cut cut(const QString &deviceAddress) const;
    QList<CommunicatorCommand> pieces(const CommunicatorCommand &command, unsigned long long size) const;
    int unitStep() const;

    Script m_script;
};

/// The rows of a device, walked one by one.
class Table
{
public:
    int getFirstMatchedAddressIndex(const QString &address, int type) const;
    QList<int> getAllPartialMatchedAddressIndex(const QString &address, int type) const;
    CommunicatorCommand convertBitCommandToRegisterCommand(const CommunicatorCommand &command, int &typeIndex,
                                                           QString &convertedAddress) const;
    QList<CommunicatorCommand> makeBlockCommand(int stationId, int typeIndex, int start, int length) const;

    QList<Format> rows;
};

} // namespace reference

#endif
