// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "zelmar_label/label_table/addressjudge_p.h"

#include "zelmar_label/label_table/dynamicmember_p.h"
#include "zelmar_label/label_table/labelloader.h"
#include "zelmar_label/label_table/rowdescription_p.h"

namespace label {

std::optional<AddressJudge::NewMember> AddressJudge::newMember(const QString &address)
{
    const std::optional<DynamicMember> member = m_loader ? m_loader->foreseenMember(address) : std::nullopt;
    if (!member)
        return std::nullopt;
    const CommandFormatter &familyRow = row(member->templateIndex);
    CommandFormatter &copy = m_copies.try_emplace(member->templateIndex, familyRow).first->second;
    copy.setPrefixSymbol(familyRow.prefixSymbol());
    member->shape(copy);
    return NewMember{member->templateIndex, &copy};
}

bool AddressJudge::accepts(const QString &address, int type)
{
    const int index = m_table.getFirstMatchedAddressIndex(address, type);
    if (index >= 0)
        return !isFamilyTemplate(row(index));
    const std::optional<NewMember> member = newMember(address);
    return member && passesTypeFilter(member->row->type(), type) && member->row->isDeviceAddressValid(address);
}

} // namespace label
