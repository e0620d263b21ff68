// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "zelmar_label/label_table/dynamicmember_p.h"

#include "zelmar_label/address_grammar/commandformatter.h"

namespace label {

void DynamicMember::shape(CommandFormatter &row) const
{
    row.setEditorPrefixSymbol(row.prefixSymbol());
    row.setPattern(item.pattern);
    row.setPrefixSymbol(item.prefixSymbol);
}

bool foresee(DynamicLabelCreatorInterface &creator, const QString &address, DynamicLabelItem &item)
{
    auto *const discreet = dynamic_cast<DiscreetCreator *>(&creator);
    return discreet ? discreet->foresee(address, item) : creator.create(address, item);
}

} // namespace label
