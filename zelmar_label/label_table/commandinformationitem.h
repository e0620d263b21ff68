// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef ZELMAR_LABEL_COMMANDINFORMATIONITEM_H
#define ZELMAR_LABEL_COMMANDINFORMATIONITEM_H

#include "zelmar_label/zelmar_label_export.h"

#include <QList>
#include <QString>

namespace label {

class CommandFormatter;

/// A group of formatters with one size. It does not own them: they must outlive it.
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

    /// Appends `formatter`; the caller keeps ownership. Ignores a null pointer.
    void addCommandFormatter(CommandFormatter *formatter);

    QList<CommandFormatter *> commandFormatters() const;

    /// True when a formatter has exactly this row type.
    bool hasType(int type) const;

    /// True when a formatter accepts the address, with or without station.
    bool isValid(const QString &address) const;

    /// Always true: the group has no block rule.
    bool isBlockValid(const QString &address, int length) const;

private:
    [[maybe_unused]] int m_marker = 0;
    int m_datasize = 0;
    QString m_name;
    QList<CommandFormatter *> m_formatters;
};

} // namespace label

#endif
