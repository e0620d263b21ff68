// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "zelmar_label/label_table/commandinformationtalbe.h"

#include "zelmar_label/address_grammar/stationaddress_p.h"
#include "zelmar_label/label_table/addresstable_p.h"

#include <QDebug>
#include <QSet>

#include <utility>

namespace label {

namespace {

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

CommandInformationTalbe::CommandInformationTalbe()
    : m_rows(std::make_unique<AddressTable>())
{
}

CommandInformationTalbe::CommandInformationTalbe(const CommandInformationTalbe &other)
    : m_rows(std::make_unique<AddressTable>(*other.m_rows))
{
}

CommandInformationTalbe &CommandInformationTalbe::operator=(const CommandInformationTalbe &other)
{
    if (this != &other)
        m_rows = std::make_unique<AddressTable>(*other.m_rows);
    return *this;
}

CommandInformationTalbe::CommandInformationTalbe(CommandInformationTalbe &&) noexcept = default;
CommandInformationTalbe &CommandInformationTalbe::operator=(CommandInformationTalbe &&) noexcept = default;
CommandInformationTalbe::~CommandInformationTalbe() = default;

void CommandInformationTalbe::addCommandFormatter(const CommandFormatter &formatter)
{
    m_rows->append(std::make_shared<const CommandFormatter>(formatter));
}

void CommandInformationTalbe::addCommandFormatter(CommandFormatter &&formatter)
{
    m_rows->append(std::make_shared<const CommandFormatter>(std::move(formatter)));
}

void CommandInformationTalbe::compile() const
{
    m_rows->compile();
}

int CommandInformationTalbe::countFormatters() const
{
    return m_rows->size();
}

const CommandFormatter *CommandInformationTalbe::formatterAt(int index) const
{
    return isIndex(index) ? &row(index) : nullptr;
}

const CommandFormatter &CommandInformationTalbe::row(int index) const
{
    return m_rows->at(index);
}

const CommandFormatter &CommandInformationTalbe::formatterOrEmpty(int index) const
{
    static const CommandFormatter empty;
    return isIndex(index) ? row(index) : empty;
}

int CommandInformationTalbe::getFirstMatchedAddressIndex(const QString &address, int type) const
{
    return m_rows->first(splitStation(address).device, type);
}

QList<int> CommandInformationTalbe::getAllPartialMatchedAddressIndex(const QString &address, int type) const
{
    return m_rows->completions(splitStation(address).device, type);
}

QList<int> CommandInformationTalbe::getAllMatchedSymbo(const QString &symbol, int type) const
{
    QList<int> indexes;
    const int count = countFormatters();
    for (int index = 0; index < count; ++index) {
        const AddressColumns &columns = row(index).compiledRow().columns;
        if (passesTypeFilter(columns.type, type) && columns.prefixSymbol == symbol)
            indexes.append(index);
    }
    return indexes;
}

QString CommandInformationTalbe::getCatchTableName(const QString &address, int type) const
{
    return formatterOrEmpty(getFirstMatchedAddressIndex(address, type)).catchTable();
}

int CommandInformationTalbe::getFormatterIndexByPattern(const QString &pattern) const
{
    const int count = countFormatters();
    for (int index = 0; index < count; ++index) {
        if (row(index).compiledRow().columns.pattern == pattern)
            return index;
    }
    return -1;
}

CommandFormatter CommandInformationTalbe::getFormatterAtIndex(int index) const
{
    return isIndex(index) ? row(index) : CommandFormatter();
}

template<typename Selects>
QStringList CommandInformationTalbe::texts(QString (CommandFormatter::*text)() const, Selects selects) const
{
    QStringList texts;
    const int count = countFormatters();
    for (int index = 0; index < count; ++index) {
        if (selects(row(index).type()))
            texts.append((row(index).*text)());
    }
    return texts;
}

QStringList CommandInformationTalbe::formatStrings() const
{
    return texts(&CommandFormatter::formatString, [](int) { return true; });
}

QStringList CommandInformationTalbe::prefixSymbols() const
{
    return texts(&CommandFormatter::prefixSymbol, [](int) { return true; });
}

QStringList CommandInformationTalbe::formatStringsByType(label::Type type) const
{
    return texts(&CommandFormatter::formatString, [type](int rowType) { return rowType == type; });
}

QStringList CommandInformationTalbe::prefixSymbolsByType(label::Type type) const
{
    return texts(&CommandFormatter::prefixSymbol, [type](int rowType) { return rowType == type; });
}

QStringList CommandInformationTalbe::bitCommandFormats() const
{
    return texts(&CommandFormatter::formatString, isBitRow);
}

QStringList CommandInformationTalbe::registerCommandFormats() const
{
    return texts(&CommandFormatter::formatString, isRegisterRow);
}

QStringList CommandInformationTalbe::reserveCommandFormats() const
{
    return texts(&CommandFormatter::formatString, isReservedRow);
}

QStringList CommandInformationTalbe::bitPrefixSymbols() const
{
    return withoutRepeats(texts(&CommandFormatter::prefixSymbol, isBitRow));
}

QStringList CommandInformationTalbe::registerPrefixSymbols() const
{
    return withoutRepeats(texts(&CommandFormatter::prefixSymbol, isRegisterRow));
}

QStringList CommandInformationTalbe::reservePrefixSymbols() const
{
    return withoutRepeats(texts(&CommandFormatter::prefixSymbol, isReservedRow));
}

int CommandInformationTalbe::datatype(int typeIndex) const
{
    if (isIndex(typeIndex))
        return row(typeIndex).type();
    qDebug() << "CommandInformationTalbe::datatype wrong type_index " << typeIndex;
    return -1;
}

int CommandInformationTalbe::blocksize(int typeIndex) const
{
    if (isIndex(typeIndex))
        return row(typeIndex).blocksize();
    qDebug() << "CommandInformationTalbe::blocksize wrong type_index " << typeIndex;
    return -1;
}

int CommandInformationTalbe::datasize(int typeIndex) const
{
    if (isIndex(typeIndex))
        return static_cast<int>(row(typeIndex).datasize());
    qDebug() << "CommandInformationTalbe::"
             << "datasize"
             << " wrong type_index " << typeIndex;
    return -1;
}

int CommandInformationTalbe::addressRange(int typeIndex, const QString &address) const
{
    if (isIndex(typeIndex))
        return row(typeIndex).getAddresRangePart(address);
    qDebug() << "CommandInformationTalbe::"
             << "addressRange"
             << " wrong type_index " << typeIndex;
    return -1;
}

int CommandInformationTalbe::bitOffset(int typeIndex, const QString &address) const
{
    if (isIndex(typeIndex))
        return row(typeIndex).getbitOffset(address);
    qDebug() << "CommandInformationTalbe::bitOffset wrong type_index " << typeIndex;
    return -1;
}

bool CommandInformationTalbe::canConvertRegisterCommand(int typeIndex) const
{
    if (isIndex(typeIndex))
        return row(typeIndex).canConvertRegisterCommand();
    qDebug() << "CommandInformationTalbe::canConvertRegisterCommand wrong type_index " << typeIndex;
    return false;
}

QString CommandInformationTalbe::continueRule(int typeIndex) const
{
    if (isIndex(typeIndex))
        return row(typeIndex).continueRule();
    qDebug() << "CommandInformationTalbe::continueRule wrong type_index " << typeIndex;
    return QStringLiteral("N");
}

int CommandInformationTalbe::base(int typeIndex) const
{
    return isIndex(typeIndex) ? row(typeIndex).base() : 10;
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
