// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef TAG_EDITOR_PICKERLABEL_H
#define TAG_EDITOR_PICKERLABEL_H

#include "labelforwarder.h"

#include <QStringList>

/// A device for `SimpleAddressPicker`. Its dialog sorts the symbols, but finds the symbol of an address by its index in
/// the label's list. It opens on the right symbol only if the label returns them sorted.
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
