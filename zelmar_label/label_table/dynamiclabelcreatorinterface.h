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
/// describes; its owner, the `LabelLoader`, clones and appends the row.
///
/// The destructor is not virtual: a loader frees a creator's own storage and does not run its destructor.
class DynamicLabelCreatorInterface
{
public:
    /// Returns true when `address`, without a station, belongs to a family of this creator; `item` then describes the
    /// row to clone. On false, do not use `item`. Not thread-safe.
    virtual bool create(const QString &address, DynamicLabelItem &item) = 0;
};

} // namespace label

#endif
