// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "zelmar_label/label_table/commandinformationtalbe.h"

#include "zelmar_label/address_grammar/stationaddress_p.h"

#include <QDebug>
#include <QSet>

#include <utility>

namespace label {

namespace {

template<typename Selects>
QStringList textsOf(const QList<CommandFormatter> &rows, QString (CommandFormatter::*text)() const, Selects selects)
{
    QStringList texts;
    for (const CommandFormatter &row : rows) {
        if (selects(row.type()))
            texts.append((row.*text)());
    }
    return texts;
}

bool isBitRow(int type)
{
    return type == BitType;
}

bool isRegisterRow(int type)
{
    return type != BitType;
}

bool isReservedRow(int type)
{
    return type == ReservedType;
}

QStringList withoutRepeats(const QStringList &texts)
{
    const QSet<QString> distinct(texts.begin(), texts.end());
    return QStringList(distinct.begin(), distinct.end());
}

} // namespace

void CommandInformationTalbe::addCommandFormatter(const CommandFormatter &formatter)
{
    m_formatters.append(formatter);
}

void CommandInformationTalbe::addCommandFormatter(CommandFormatter &&formatter)
{
    m_formatters.append(CommandFormatter());
    m_formatters.last() = std::move(formatter);
}

int CommandInformationTalbe::countFormatters() const
{
    return m_formatters.size();
}

const CommandFormatter *CommandInformationTalbe::formatterAt(int index) const
{
    return isIndex(index) ? &m_formatters.at(index) : nullptr;
}

const CommandFormatter &CommandInformationTalbe::formatterOrEmpty(int index) const
{
    static const CommandFormatter empty;
    return isIndex(index) ? m_formatters.at(index) : empty;
}

int CommandInformationTalbe::getFirstMatchedAddressIndex(const QString &address, int type) const
{
    const QString body = deviceAddress(address);
    for (int index = 0; index < m_formatters.size(); ++index) {
        const CommandFormatter &row = m_formatters.at(index);
        // In this order: a row of the other class still reports unreadable limits.
        if (row.isDeviceAddressValid(body) && passesTypeFilter(row.type(), type))
            return index;
    }
    return -1;
}

QList<int> CommandInformationTalbe::getAllPartialMatchedAddressIndex(const QString &address, int type) const
{
    const QString body = deviceAddress(address);
    QList<int> indexes;
    for (int index = 0; index < m_formatters.size(); ++index) {
        const CommandFormatter &row = m_formatters.at(index);
        if (passesTypeFilter(row.type(), type) && row.canBeCompleted(body))
            indexes.append(index);
    }
    return indexes;
}

QList<int> CommandInformationTalbe::getAllMatchedSymbo(const QString &symbol, int type) const
{
    QList<int> indexes;
    for (int index = 0; index < m_formatters.size(); ++index) {
        const CommandFormatter &row = m_formatters.at(index);
        if (passesTypeFilter(row.type(), type) && row.prefixSymbol() == symbol)
            indexes.append(index);
    }
    return indexes;
}

QString CommandInformationTalbe::getCatchTableName(const QString &address, int type) const
{
    const int index = getFirstMatchedAddressIndex(address, type);
    return index < 0 ? QString() : m_formatters.at(index).catchTable();
}

int CommandInformationTalbe::getFormatterIndexByPattern(const QString &pattern) const
{
    for (int index = 0; index < m_formatters.size(); ++index) {
        if (m_formatters.at(index).pattern() == pattern)
            return index;
    }
    return -1;
}

CommandFormatter CommandInformationTalbe::getFormatterAtIndex(int index) const
{
    return isIndex(index) ? m_formatters.at(index) : CommandFormatter();
}

QStringList CommandInformationTalbe::formatStrings() const
{
    return textsOf(m_formatters, &CommandFormatter::formatString, [](int) { return true; });
}

QStringList CommandInformationTalbe::prefixSymbols() const
{
    return textsOf(m_formatters, &CommandFormatter::prefixSymbol, [](int) { return true; });
}

QStringList CommandInformationTalbe::formatStringsByType(label::Type type) const
{
    return textsOf(m_formatters, &CommandFormatter::formatString, [type](int rowType) { return rowType == type; });
}

QStringList CommandInformationTalbe::prefixSymbolsByType(label::Type type) const
{
    return textsOf(m_formatters, &CommandFormatter::prefixSymbol, [type](int rowType) { return rowType == type; });
}

QStringList CommandInformationTalbe::bitCommandFormats() const
{
    return textsOf(m_formatters, &CommandFormatter::formatString, isBitRow);
}

QStringList CommandInformationTalbe::registerCommandFormats() const
{
    return textsOf(m_formatters, &CommandFormatter::formatString, isRegisterRow);
}

QStringList CommandInformationTalbe::reserveCommandFormats() const
{
    return textsOf(m_formatters, &CommandFormatter::formatString, isReservedRow);
}

QStringList CommandInformationTalbe::bitPrefixSymbols() const
{
    return withoutRepeats(textsOf(m_formatters, &CommandFormatter::prefixSymbol, isBitRow));
}

QStringList CommandInformationTalbe::registerPrefixSymbols() const
{
    return withoutRepeats(textsOf(m_formatters, &CommandFormatter::prefixSymbol, isRegisterRow));
}

QStringList CommandInformationTalbe::reservePrefixSymbols() const
{
    return withoutRepeats(textsOf(m_formatters, &CommandFormatter::prefixSymbol, isReservedRow));
}

int CommandInformationTalbe::datatype(int typeIndex) const
{
    if (isIndex(typeIndex))
        return m_formatters.at(typeIndex).type();
    qDebug() << "CommandInformationTalbe::datatype wrong type_index " << typeIndex;
    return -1;
}

int CommandInformationTalbe::blocksize(int typeIndex) const
{
    if (isIndex(typeIndex))
        return m_formatters.at(typeIndex).blocksize();
    qDebug() << "CommandInformationTalbe::blocksize wrong type_index " << typeIndex;
    return -1;
}

int CommandInformationTalbe::datasize(int typeIndex) const
{
    if (isIndex(typeIndex))
        return static_cast<int>(m_formatters.at(typeIndex).datasize());
    qDebug() << "CommandInformationTalbe::"
             << "datasize"
             << " wrong type_index " << typeIndex;
    return -1;
}

int CommandInformationTalbe::addressRange(int typeIndex, const QString &address) const
{
    if (isIndex(typeIndex))
        return m_formatters.at(typeIndex).getAddresRangePart(address);
    qDebug() << "CommandInformationTalbe::"
             << "addressRange"
             << " wrong type_index " << typeIndex;
    return -1;
}

int CommandInformationTalbe::bitOffset(int typeIndex, const QString &address) const
{
    if (isIndex(typeIndex))
        return m_formatters.at(typeIndex).getbitOffset(address);
    qDebug() << "CommandInformationTalbe::bitOffset wrong type_index " << typeIndex;
    return -1;
}

bool CommandInformationTalbe::canConvertRegisterCommand(int typeIndex) const
{
    if (isIndex(typeIndex))
        return m_formatters.at(typeIndex).canConvertRegisterCommand();
    qDebug() << "CommandInformationTalbe::canConvertRegisterCommand wrong type_index " << typeIndex;
    return false;
}

QString CommandInformationTalbe::continueRule(int typeIndex) const
{
    if (isIndex(typeIndex))
        return m_formatters.at(typeIndex).continueRule();
    qDebug() << "CommandInformationTalbe::continueRule wrong type_index " << typeIndex;
    return QStringLiteral("N");
}

int CommandInformationTalbe::base(int typeIndex) const
{
    return isIndex(typeIndex) ? m_formatters.at(typeIndex).base() : 10;
}

QString CommandInformationTalbe::formatstring(int typeIndex) const
{
    return formatterOrEmpty(typeIndex).formatString();
}

QString CommandInformationTalbe::getPrefixSymbolByTypeID(int typeIndex) const
{
    return formatterOrEmpty(typeIndex).prefixSymbol();
}

bool CommandInformationTalbe::needOptimize(int typeIndex) const
{
    return formatterOrEmpty(typeIndex).needOptimize();
}

bool CommandInformationTalbe::isTypeNeedAlignmentByte(int typeIndex) const
{
    return formatterOrEmpty(typeIndex).isTypeRangeNeedAlignmentByte();
}

int CommandInformationTalbe::alignmentSize(int typeIndex) const
{
    return formatterOrEmpty(typeIndex).aligmentSize();
}

bool CommandInformationTalbe::isSemenseSepcialType(int typeIndex) const
{
    return formatterOrEmpty(typeIndex).isSemenseSepcialType();
}

} // namespace label
