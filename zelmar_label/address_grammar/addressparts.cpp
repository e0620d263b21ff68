// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "zelmar_label/address_grammar/addressparts_p.h"

#include "zelmar_label/address_grammar/radixnumber_p.h"

namespace label {

QString AddressParts::address(int value) const
{
    return prefix + numberText(value, radix) + suffix;
}

} // namespace label
