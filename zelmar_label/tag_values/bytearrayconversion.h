// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef ZELMAR_LABEL_BYTEARRAYCONVERSION_H
#define ZELMAR_LABEL_BYTEARRAYCONVERSION_H

#include "zelmar_label/zelmar_label_export.h"

class QByteArray;

/// The number in the first four bytes, the least significant one first; missing bytes count as 0, so that only a fourth
/// byte can make it negative.
ZELMAR_LABEL_EXPORT int ByteArrayToInt(const QByteArray &bytes);
ZELMAR_LABEL_EXPORT unsigned int ByteArrayToUInt(const QByteArray &bytes);

#endif
