// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "zelmar_label/address_grammar/radixnumber_p.h"

namespace label {

std::optional<int> readAnyNumber(QStringView text, int radix)
{
    bool ok = false;
    const int number = text.toString().toInt(&ok, radix);
    return ok ? std::optional<int>(number) : std::nullopt;
}

QString numberText(int value, int radix)
{
    return QString::number(value, isRadix(radix) ? radix : 10);
}

} // namespace label
