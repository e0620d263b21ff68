// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "zelmar_label/address_grammar/radixnumber_p.h"

namespace label {

namespace {

bool isRadix(int radix)
{
    return radix >= 2 && radix <= 36;
}

} // namespace

std::optional<int> readNumber(const QString &text, int radix)
{
    if (radix != 0 && !isRadix(radix))
        return std::nullopt;
    bool ok = false;
    const int number = text.toInt(&ok, radix);
    return ok ? std::optional<int>(number) : std::nullopt;
}

QString numberText(int value, int radix)
{
    return QString::number(value, isRadix(radix) ? radix : 10);
}

} // namespace label
