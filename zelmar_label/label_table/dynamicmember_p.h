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

    /// Makes the member's row of a copy of the template row.
    void shape(CommandFormatter &row) const;
};

/// A creator whose answers depend on what it was asked before: it can be asked so that later answers do not change.
class DiscreetCreator
{
public:
    /// As `create` would answer now.
    virtual bool foresee(const QString &address, DynamicLabelItem &item) = 0;

protected:
    ~DiscreetCreator() = default;
};

/// What the creator would answer, left as it was. A creator that is no `DiscreetCreator` is taken for one that keeps
/// nothing between calls, and is asked.
bool foresee(DynamicLabelCreatorInterface &creator, const QString &address, DynamicLabelItem &item);

} // namespace label

#endif
