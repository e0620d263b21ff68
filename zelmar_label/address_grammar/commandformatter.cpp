// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "zelmar_label/address_grammar/commandformatter.h"

#include "zelmar_label/address_grammar/addressparts_p.h"
#include "zelmar_label/address_grammar/addressrow.h"
#include "zelmar_label/address_grammar/radixnumber_p.h"
#include "zelmar_label/address_grammar/stationaddress_p.h"

#include <QDebug>

#include <algorithm>
#include <utility>

namespace label {

namespace {

bool isNameCharacter(QChar character)
{
    return character.isLetterOrNumber() || character == QLatin1Char('_');
}

std::shared_ptr<const AddressRow> emptyRow()
{
    static const auto row = std::make_shared<const AddressRow>();
    return row;
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
    : m_row(emptyRow())
{
}

CommandFormatter::CommandFormatter(const QString &pattern, int type, int addressGroupIndex, const QString &description,
                                   const QString &prefixSymbol, QString start, QString end, unsigned long long dataSize,
                                   const QString &multipleRule, const QString &catchTable, int base, int blocksize,
                                   const QString &continueRule)
{
    qDebug() << "------------------------------------------    commandformatter";
    auto script = std::make_unique<ScriptHook>(multipleRule);
    AddressColumns columns{pattern,        type,     addressGroupIndex, description, prefixSymbol, std::move(start),
                           std::move(end), dataSize, multipleRule,      catchTable,  base,         blocksize,
                           continueRule,   QString()};
    m_row = std::make_shared<const AddressRow>(std::move(columns), script->path);
    script->load();
    if (script->loaded)
        m_script = std::move(script);
}

CommandFormatter::CommandFormatter(const CommandFormatter &other)
{
    *this = other;
}

CommandFormatter &CommandFormatter::operator=(const CommandFormatter &other)
{
    m_row = other.m_row;
    // An engine is not copied: its file is read again, and may be gone.
    m_script = other.m_script ? std::make_unique<ScriptHook>(*other.m_script) : nullptr;
    if (m_script && !m_script->loaded)
        m_script.reset();
    return *this;
}

CommandFormatter::CommandFormatter(CommandFormatter &&) noexcept = default;
CommandFormatter &CommandFormatter::operator=(CommandFormatter &&) noexcept = default;
CommandFormatter::~CommandFormatter() = default;

void CommandFormatter::copy(const CommandFormatter &other)
{
    *this = other;
}

const AddressColumns &CommandFormatter::columns() const
{
    return m_row->columns;
}

const ScriptHook &CommandFormatter::script() const
{
    static const ScriptHook none;
    return m_script ? *m_script : none;
}

void CommandFormatter::change(AddressColumns columns)
{
    m_row = std::make_shared<const AddressRow>(std::move(columns), *m_row);
}

void CommandFormatter::setPattern(const QString &pattern)
{
    AddressColumns changed = columns();
    changed.pattern = pattern;
    change(std::move(changed));
}

QString CommandFormatter::pattern() const
{
    return columns().pattern;
}

void CommandFormatter::setPrefixSymbol(const QString &symbol)
{
    AddressColumns changed = columns();
    changed.prefixSymbol = symbol;
    change(std::move(changed));
}

QString CommandFormatter::prefixSymbol() const
{
    return columns().prefixSymbol;
}

void CommandFormatter::setEditorPrefixSymbol(const QString &symbol)
{
    AddressColumns changed = columns();
    changed.editorPrefixSymbol = symbol;
    change(std::move(changed));
}

QString CommandFormatter::getEditorUsedPrefixsymbol() const
{
    return columns().editorPrefixSymbol.isEmpty() ? columns().prefixSymbol : columns().editorPrefixSymbol;
}

QString CommandFormatter::formatString() const
{
    return columns().description;
}

int CommandFormatter::type() const
{
    return columns().type;
}

unsigned long long CommandFormatter::datasize() const
{
    return columns().dataSize;
}

int CommandFormatter::base() const
{
    return columns().base;
}

int CommandFormatter::blocksize() const
{
    return columns().blocksize;
}

QString CommandFormatter::catchTable() const
{
    return columns().catchTable;
}

QString CommandFormatter::start() const
{
    return columns().start;
}

QString CommandFormatter::end() const
{
    return columns().end;
}

QString CommandFormatter::ruleText() const
{
    return m_row->rule.text;
}

const MultipleRule &CommandFormatter::rule() const
{
    return m_row->rule;
}

std::optional<int> CommandFormatter::firstNumber() const
{
    return m_row->first;
}

std::optional<int> CommandFormatter::lastNumber() const
{
    return m_row->last;
}

const Pattern &CommandFormatter::compiledPattern() const
{
    return m_row->pattern;
}

TextPlace CommandFormatter::rangePlace(QStringView deviceAddress) const
{
    return m_row->pattern.group(columns().addressGroupIndex, deviceAddress);
}

bool CommandFormatter::isFamilyTemplate() const
{
    return !columns().pattern.isEmpty() &&
           std::all_of(columns().pattern.begin(), columns().pattern.end(), isNameCharacter);
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
    parts.radix = columns().base;
    parts.number = getAddresRangePart(deviceAddress);
    const TextPlace range = rangePlace(deviceAddress);
    parts.prefix = deviceAddress.left(range.start);
    if (range.start >= 0)
        parts.suffix = deviceAddress.mid(range.start + range.size);
    return parts;
}

} // namespace label
