// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "zelmar_label/label_table/commandinformationitem.h"

#include "zelmar_label/address_grammar/commandformatter.h"

#include <algorithm>

namespace label {

CommandInformationItem::CommandInformationItem() = default;

CommandInformationItem::CommandInformationItem(int datasize, const QString &name)
    : m_marker(-1)
    , m_datasize(datasize)
    , m_name(name)
{
}

int CommandInformationItem::datasize() const
{
    return m_datasize;
}

int CommandInformationItem::countCommands() const
{
    return m_formatters.size();
}

void CommandInformationItem::addCommandFormatter(CommandFormatter *formatter)
{
    if (formatter)
        m_formatters.append(formatter);
}

QList<CommandFormatter *> CommandInformationItem::commandFormatters() const
{
    return m_formatters;
}

bool CommandInformationItem::hasType(int type) const
{
    return std::any_of(m_formatters.begin(), m_formatters.end(),
                       [type](const CommandFormatter *formatter) { return formatter->type() == type; });
}

bool CommandInformationItem::isValid(const QString &address) const
{
    return std::any_of(m_formatters.begin(), m_formatters.end(),
                       [&address](const CommandFormatter *formatter) { return formatter->isAddressValid(address); });
}

bool CommandInformationItem::isBlockValid(const QString &, int) const
{
    return true;
}

} // namespace label
