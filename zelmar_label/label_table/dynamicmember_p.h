// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef ZELMAR_LABEL_DYNAMICMEMBER_P_H
#define ZELMAR_LABEL_DYNAMICMEMBER_P_H

#include "zelmar_label/label_table/dynamiclabelcreatorinterface.h"

namespace label {

class CommandFormatter;

/// A row of a dynamic family that a label would add.
struct DynamicMember
{
    /// Type index of the family's template row.
    int templateIndex = -1;
    DynamicLabelItem item;

    /// Turns a copy of the template row into the member's row.
    void shape(CommandFormatter &row) const;
};

/// The creator's answer, without changing the creator. One that is no `FamilyCreator` is assumed to keep nothing
/// between calls; its `create` is called.
bool foresee(DynamicLabelCreatorInterface &creator, const QString &address, DynamicLabelItem &item);

} // namespace label

#endif
