// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "zelmar_label/label_table/dynamicmember_p.h"

#include "zelmar_label/address_grammar/commandformatter.h"
#include "zelmar_label/label_table/addressfamily.h"

namespace label {

void DynamicMember::shape(CommandFormatter &row) const
{
    row.setEditorPrefixSymbol(row.prefixSymbol());
    row.setPattern(item.pattern);
    row.setPrefixSymbol(item.prefixSymbol);
}

bool foresee(DynamicLabelCreatorInterface &creator, const QString &address, DynamicLabelItem &item)
{
    const auto *const known = dynamic_cast<const FamilyCreator *>(&creator);
    return known ? known->foresee(address, item) : creator.create(address, item);
}

} // namespace label
