// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef ZELMAR_LABEL_DYNAMICLABELCREATORINTERFACE_H
#define ZELMAR_LABEL_DYNAMICLABELCREATORINTERFACE_H

#include <QString>

namespace label {

/// How to clone a template row of a device table for one concrete prefix.
struct DynamicLabelItem
{
    QString basePattern;  ///< pattern text of the template row
    QString pattern;      ///< regular expression of the new row
    QString prefixSymbol; ///< prefix symbol of the new row
};

/// Recognises address families that are too large for a table: every data block, every data file. It only decides and
/// describes; the `LabelLoader` that owns it clones and appends the row.
///
/// The destructor is not virtual: a loader gives back a creator's own storage and does not run its destructor.
class DynamicLabelCreatorInterface
{
public:
    /// True when `address`, without a station, belongs to a family that this creator knows; `item` then tells the row
    /// to clone. On false the contents of `item` are not to be used. Not for two threads at once.
    virtual bool create(const QString &address, DynamicLabelItem &item) = 0;
};

} // namespace label

#endif
