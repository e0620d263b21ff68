// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "zelmar_label/address_grammar/addressrow.h"

#include "zelmar_label/address_grammar/radixnumber_p.h"

#include <utility>

namespace label {

AddressRow::AddressRow() = default;

AddressRow::AddressRow(AddressColumns rowColumns, QString path)
    : columns(std::move(rowColumns))
    , pattern(columns.pattern)
    , rule(columns.multipleRule)
    , first(readNumber(columns.start, columns.base))
    , last(readNumber(columns.end, columns.base))
    , scriptPath(std::move(path))
    , reader(columns, rule, first.value_or(0), last.value_or(-1))
{
}

AddressRow::AddressRow(AddressColumns rowColumns, const AddressRow &model)
    : columns(std::move(rowColumns))
    , pattern(columns.pattern == model.columns.pattern ? model.pattern : Pattern(columns.pattern))
    , rule(model.rule)
    , first(model.first)
    , last(model.last)
    , scriptPath(model.scriptPath)
    , reader(model.reader)
{
}

int AddressRow::number(QStringView range) const
{
    const RangeReader::Numbers read = reader.read(range);
    if (read.isKnown)
        return read.number;
    const std::optional<int> number = isBit() ? rule.wordNumber(range, columns.base) : readNumber(range, columns.base);
    return number.value_or(-1);
}

int AddressRow::bit(QStringView range) const
{
    const RangeReader::Numbers read = reader.read(range);
    if (read.isKnown && read.bit >= 0)
        return read.bit;
    return rule.isSplit() ? rule.bitOffset(range) : rule.onePartBitOffset(range);
}

} // namespace label
