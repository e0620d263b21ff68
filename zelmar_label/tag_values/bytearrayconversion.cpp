// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "zelmar_label/tag_values/bytearrayconversion.h"

#include "zelmar_label/tag_values/littleendian_p.h"

int ByteArrayToInt(const QByteArray &bytes)
{
    return static_cast<int>(ByteArrayToUInt(bytes));
}

unsigned int ByteArrayToUInt(const QByteArray &bytes)
{
    return static_cast<unsigned int>(label::fromLittleEndian(bytes, 4));
}
