// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "zelmar_label/address_grammar/commandformatter.h"

#include "zelmar_label/address_grammar/addressparts_p.h"
#include "zelmar_label/address_grammar/patternprefix_p.h"
#include "zelmar_label/address_grammar/radixnumber_p.h"
#include "zelmar_label/address_grammar/stationaddress_p.h"

#include <QDebug>

namespace label {

namespace {

/// An upper bound of the nesting depth of groups.
int nesting(const QString &pattern)
{
    int depth = 0;
    int deepest = 0;
    for (const QChar character : pattern) {
        if (character == QLatin1Char('('))
            deepest = qMax(deepest, ++depth);
        else if (character == QLatin1Char(')'))
            depth = qMax(0, depth - 1);
    }
    return deepest;
}

QRegExp expressionOf(const QString &pattern)
{
    // The parser of expressions is recursive and its stack is limited: an expression with thousands of nested groups
    // counts as invalid.
    constexpr int deepestNesting = 1000;
    if (nesting(pattern) > deepestNesting)
        return QRegExp(QStringLiteral("("));
    return QRegExp(pattern, Qt::CaseSensitive, QRegExp::RegExp);
}

// The fields that a change of station keeps; it drops the auxiliary text and flag.
CommunicatorCommand commandAt(const QString &address, const CommunicatorCommand &model)
{
    CommunicatorCommand command;
    command.address = address;
    command.scanTime = model.scanTime;
    command.dataType = model.dataType;
    command.length = model.length;
    command.auxiliaryNumber = model.auxiliaryNumber;
    return command;
}

} // namespace

CommandFormatter::CommandFormatter()
    : m_continueRuleText(QStringLiteral("N"))
    , m_patternPrefix(std::make_shared<PatternPrefix>(QString()))
{
}

CommandFormatter::CommandFormatter(const QString &pattern, int type, int addressGroupIndex, const QString &description,
                                   const QString &prefixSymbol, QString start, QString end, unsigned long long dataSize,
                                   const QString &multipleRule, const QString &catchTable, int base, int blocksize,
                                   const QString &continueRule)
    : m_pattern(expressionOf(pattern))
    , m_patternText(pattern)
    , m_type(type)
    , m_addressGroupIndex(addressGroupIndex)
    , m_dataSize(dataSize)
    , m_start(std::move(start))
    , m_end(std::move(end))
    , m_base(base)
    , m_description(description)
    , m_prefixSymbol(prefixSymbol)
    , m_catchTable(catchTable)
    , m_multipleRule(multipleRule)
    , m_blocksize(blocksize)
    , m_continueRuleText(continueRule)
    , m_script(multipleRule)
    , m_patternPrefix(std::make_shared<PatternPrefix>(pattern))
{
    qDebug() << "------------------------------------------    commandformatter";
    readLimits();
    m_script.load();
}

CommandFormatter::CommandFormatter(const CommandFormatter &) = default;
CommandFormatter &CommandFormatter::operator=(const CommandFormatter &) = default;
CommandFormatter::CommandFormatter(CommandFormatter &&) noexcept = default;
CommandFormatter &CommandFormatter::operator=(CommandFormatter &&) noexcept = default;
CommandFormatter::~CommandFormatter() = default;

void CommandFormatter::copy(const CommandFormatter &other)
{
    *this = other;
}

void CommandFormatter::readLimits()
{
    m_firstNumber = readNumber(m_start, m_base);
    m_lastNumber = readNumber(m_end, m_base);
}

void CommandFormatter::setPattern(const QString &pattern)
{
    m_pattern = expressionOf(pattern);
    m_patternText = pattern;
    m_patternPrefix = std::make_shared<PatternPrefix>(pattern);
}

QString CommandFormatter::pattern() const
{
    return m_patternText;
}

void CommandFormatter::setPrefixSymbol(const QString &symbol)
{
    m_prefixSymbol = symbol;
}

QString CommandFormatter::prefixSymbol() const
{
    return m_prefixSymbol;
}

void CommandFormatter::setEditorPrefixSymbol(const QString &symbol)
{
    m_editorPrefixSymbol = symbol;
}

QString CommandFormatter::getEditorUsedPrefixsymbol() const
{
    return m_editorPrefixSymbol.isEmpty() ? m_prefixSymbol : m_editorPrefixSymbol;
}

QString CommandFormatter::formatString() const
{
    return m_description;
}

int CommandFormatter::type() const
{
    return m_type;
}

unsigned long long CommandFormatter::datasize() const
{
    return m_dataSize;
}

int CommandFormatter::base() const
{
    return m_base;
}

int CommandFormatter::blocksize() const
{
    return m_blocksize;
}

QString CommandFormatter::catchTable() const
{
    return m_catchTable;
}

QString CommandFormatter::start() const
{
    return m_start;
}

QString CommandFormatter::end() const
{
    return m_end;
}

QString CommandFormatter::ruleText() const
{
    return m_multipleRule.text;
}

bool CommandFormatter::hadStationID(const QString &address) const
{
    return hasStation(address);
}

bool CommandFormatter::hadStationID(const CommunicatorCommand &command) const
{
    return hasStation(command.address);
}

QString CommandFormatter::removeStationID(const QString &address) const
{
    return deviceAddress(address);
}

CommunicatorCommand CommandFormatter::removeStationID(const CommunicatorCommand &command) const
{
    return commandAt(deviceAddress(command.address), command);
}

CommunicatorCommand CommandFormatter::addStationID(int stationId, const CommunicatorCommand &command) const
{
    if (stationId == noStation)
        return command;
    return commandAt(withStation(stationId, deviceAddress(command.address)), command);
}

AddressParts CommandFormatter::splitAddress(const QString &deviceAddress) const
{
    AddressParts parts;
    parts.radix = m_base;
    parts.number = getAddresRangePart(deviceAddress);
    const QString range = getRangeString(deviceAddress);
    const int position = m_pattern.pos(m_addressGroupIndex);
    parts.prefix = deviceAddress.left(position);
    if (position >= 0)
        parts.suffix = deviceAddress.mid(position + range.size());
    return parts;
}

} // namespace label
