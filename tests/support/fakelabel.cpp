// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "support/fakelabel.h"

namespace {

QString textOf(const QString &text)
{
    return text;
}

QString textOf(int number)
{
    return QString::number(number);
}

QString textOf(bool yes)
{
    return yes ? QStringLiteral("true") : QStringLiteral("false");
}

QString textOf(const CommunicatorCommand &command)
{
    return command.address;
}

} // namespace

template<typename... Arguments>
void FakeLabel::note(const char *operation, const Arguments &...arguments)
{
    const QStringList texts{textOf(arguments)...};
    m_asked.append(QLatin1String(operation) + QLatin1Char('(') + texts.join(QLatin1String(", ")) + QLatin1Char(')'));
}

QStringList FakeLabel::take()
{
    QStringList asked;
    asked.swap(m_asked);
    return asked;
}

QStringList FakeLabel::take(const QString &operation)
{
    return take().filter(operation + QLatin1Char('('));
}

int FakeLabel::countBitTypes()
{
    note("countBitTypes");
    return formats.size();
}

int FakeLabel::countRegisterTypes()
{
    note("countRegisterTypes");
    return formats.size();
}

int FakeLabel::base(int typeIndex)
{
    note("base", typeIndex);
    return 10;
}

int FakeLabel::datatype(int typeIndex)
{
    note("datatype", typeIndex);
    return -1;
}

int FakeLabel::datasize(int typeIndex)
{
    note("datasize", typeIndex);
    return -1;
}

int FakeLabel::addressRange(int typeIndex, const QString &address)
{
    note("addressRange", typeIndex, address);
    return -1;
}

bool FakeLabel::parseAddress(const QString &address, QString &prefix, QString &range)
{
    note("parseAddress", address);
    const auto found = parts.constFind(address);
    if (found == parts.constEnd())
        return false;
    prefix = found->section(QLatin1Char('|'), 0, 0);
    range = found->section(QLatin1Char('|'), 1);
    return true;
}

int FakeLabel::addressValidation(const QString &address, int type)
{
    note("addressValidation", address, type);
    return validRows.value(address, -1);
}

QList<int> FakeLabel::getAllMatchedIndex(const QString &address, int type)
{
    note("getAllMatchedIndex", address, type);
    return rowsOfAddress.value(address);
}

QList<int> FakeLabel::getAllMatchedSymbol(const QString &symbol, int type)
{
    note("getAllMatchedSymbol", symbol, type);
    return rowsOfSymbol.value(symbol);
}

QString FakeLabel::getPrefixSymbolByTypeID(int typeIndex)
{
    note("getPrefixSymbolByTypeID", typeIndex);
    return {};
}

QString FakeLabel::getEditUsedPrifixSymbolByTypeId(int typeIndex)
{
    note("getEditUsedPrifixSymbolByTypeId", typeIndex);
    return {};
}

QString FakeLabel::getFormatString(int typeIndex)
{
    note("getFormatString", typeIndex);
    return formats.value(typeIndex);
}

QString FakeLabel::getCatchTableName(const QString &address, int type)
{
    note("getCatchTableName", address, type);
    return {};
}

int FakeLabel::getBlockCommandMaxSize()
{
    note("getBlockCommandMaxSize");
    return 0;
}

int FakeLabel::getBitCommandMaxSize()
{
    note("getBitCommandMaxSize");
    return 0;
}

bool FakeLabel::isMustContinue(int typeIndex)
{
    note("isMustContinue", typeIndex);
    return false;
}

int FakeLabel::alignmentSize(int typeIndex)
{
    note("alignmentSize", typeIndex);
    return 1;
}

int FakeLabel::bitOffset(int typeIndex, const QString &address)
{
    note("bitOffset", typeIndex, address);
    return -1;
}

bool FakeLabel::canConvertToRegisterCommand(int typeIndex)
{
    note("canConvertToRegisterCommand", typeIndex);
    return false;
}

CommunicatorCommand FakeLabel::convertBitCommandToRegisterCommand(const CommunicatorCommand &command, int &typeIndex)
{
    note("convertBitCommandToRegisterCommand", command);
    typeIndex = -1;
    return {};
}

bool FakeLabel::isCommandInBlockRange(int typeIndex, const CommunicatorCommand &command,
                                      const CommunicatorCommand &block)
{
    note("isCommandInBlockRange", typeIndex, command, block);
    return false;
}

int FakeLabel::calculateOffsetByte(int typeIndex, const CommunicatorCommand &base, const CommunicatorCommand &command)
{
    note("calculateOffsetByte", typeIndex, base, command);
    return -1;
}

QStringList FakeLabel::prefixSymbolsByType(label::Type type)
{
    note("prefixSymbolsByType", type);
    return {};
}

QStringList FakeLabel::commandFormatsByType(label::Type type)
{
    note("commandFormatsByType", type);
    return {};
}

QStringList FakeLabel::registerCommandFormats()
{
    note("registerCommandFormats");
    return {};
}

QStringList FakeLabel::bitCommandFormats()
{
    note("bitCommandFormats");
    return {};
}

QStringList FakeLabel::reservCommandFormats()
{
    note("reservCommandFormats");
    return {};
}

QStringList FakeLabel::registerPrefixSymbols()
{
    note("registerPrefixSymbols");
    return registerSymbols;
}

QStringList FakeLabel::bitPrefixSymbols()
{
    note("bitPrefixSymbols");
    return bitSymbols;
}

QStringList FakeLabel::reservPrefixSymbols()
{
    note("reservPrefixSymbols");
    return {};
}

QStringList FakeLabel::prefixSymbols()
{
    note("prefixSymbols");
    return {};
}

QList<CommunicatorCommand> FakeLabel::normalizeCommand(int typeIndex, const CommunicatorCommand &command)
{
    note("normalizeCommand", typeIndex, command);
    return {};
}

QList<CommunicatorCommand> FakeLabel::makeContinueCommand(int typeIndex, const CommunicatorCommand &command, int count)
{
    note("makeContinueCommand", typeIndex, command, count);
    return {};
}

QList<CommunicatorCommand> FakeLabel::makeContinueCommandwithCap(int typeIndex, const CommunicatorCommand &command,
                                                                 int count, int cap, bool checkRange)
{
    note("makeContinueCommandwithCap", typeIndex, command, count, cap, checkRange);
    return {};
}

CommunicatorCommand FakeLabel::makeBlockCommandWithoutSizeLimit(int stationId, int typeIndex, int start, int length)
{
    note("makeBlockCommandWithoutSizeLimit", stationId, typeIndex, start, length);
    return {};
}

QList<CommunicatorCommand> FakeLabel::makeBlockCommand(int stationId, int typeIndex, int start, int length)
{
    note("makeBlockCommand", stationId, typeIndex, start, length);
    return {};
}

bool FakeLabel::needOptimize(int typeIndex)
{
    note("needOptimize", typeIndex);
    return true;
}

bool FakeLabel::isTypeNeedAlignmentByte(int typeIndex)
{
    note("isTypeNeedAlignmentByte", typeIndex);
    return false;
}

int FakeLabel::blocksize(int typeIndex)
{
    note("blocksize", typeIndex);
    return -1;
}
