// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef TAG_EDITOR_PICKERLABEL_H
#define TAG_EDITOR_PICKERLABEL_H

#include "labelforwarder.h"

#include <QStringList>

/// A device as `SimpleAddressPicker` needs to see it. The dialog behind it sorts the symbols, but finds the one of an
/// address by its place in the label's list: it opens on the right one only for a label that gives them sorted.
class PickerLabel final : public LabelForwarder
{
public:
    using LabelForwarder::LabelForwarder;

    QStringList registerPrefixSymbols() override { return sorted(LabelForwarder::registerPrefixSymbols()); }
    QStringList bitPrefixSymbols() override { return sorted(LabelForwarder::bitPrefixSymbols()); }

private:
    static QStringList sorted(QStringList symbols)
    {
        symbols.sort();
        return symbols;
    }
};

#endif
