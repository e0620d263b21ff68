// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef ZELMAR_LABEL_LITTLEENDIAN_P_H
#define ZELMAR_LABEL_LITTLEENDIAN_P_H

#include <QByteArray>

namespace label {

/// The number in the first `size` bytes, at most 8, the least significant one first. Missing bytes count as 0.
inline quint64 fromLittleEndian(const QByteArray &bytes, int size)
{
    quint64 number = 0;
    for (int i = qMin(size, bytes.size()) - 1; i >= 0; --i)
        number = number << 8 | static_cast<uchar>(bytes.at(i));
    return number;
}

/// The `size` low bytes of `number`, the least significant one first.
inline QByteArray toLittleEndian(quint64 number, int size)
{
    QByteArray bytes(size, Qt::Uninitialized);
    for (char &byte : bytes) {
        byte = static_cast<char>(number & 0xff);
        number >>= 8;
    }
    return bytes;
}

} // namespace label

#endif
