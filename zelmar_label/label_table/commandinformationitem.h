// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef ZELMAR_LABEL_COMMANDINFORMATIONITEM_H
#define ZELMAR_LABEL_COMMANDINFORMATIONITEM_H

#include "zelmar_label/zelmar_label_export.h"

#include <QList>
#include <QString>

namespace label {

class CommandFormatter;

/// A group of formatters under one size, which it does not own: they must outlive it.
class ZELMAR_LABEL_EXPORT CommandInformationItem
{
public:
    /// An empty group of size 0.
    CommandInformationItem();

    /// An empty group of the size `datasize`, in bytes.
    CommandInformationItem(int datasize, const QString &name);

    /// The size given to the constructor.
    int datasize() const;

    /// Number of formatters in the group.
    int countCommands() const;

    /// Appends `formatter`, which stays the caller's. A null pointer is ignored.
    void addCommandFormatter(CommandFormatter *formatter);

    QList<CommandFormatter *> commandFormatters() const;

    /// True when some formatter has exactly this row type.
    bool hasType(int type) const;

    /// True when some formatter accepts the address, which may carry a station.
    bool isValid(const QString &address) const;

    /// Always true: the group knows no block rule.
    bool isBlockValid(const QString &address, int length) const;

private:
    [[maybe_unused]] int m_marker = 0;
    int m_datasize = 0;
    QString m_name;
    QList<CommandFormatter *> m_formatters;
};

} // namespace label

#endif
