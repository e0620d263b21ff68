// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef ZELMAR_LABEL_ADDRESSPARTS_P_H
#define ZELMAR_LABEL_ADDRESSPARTS_P_H

#include <QString>

namespace label {

/// A device address split at its range string, to make further addresses from it.
struct AddressParts
{
    QString prefix;
    QString suffix;
    int number = -1;
    int radix = 10;

    QString address(int value) const;
};

} // namespace label

#endif
