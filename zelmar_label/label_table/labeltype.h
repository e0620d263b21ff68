// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef ZELMAR_LABEL_LABELTYPE_H
#define ZELMAR_LABEL_LABELTYPE_H

namespace label {

/// Type of a row of a device table, in the numbering of `CommunicatorCommand::DataType`. 0 is a bit row, any other
/// value a register row; 5 is also a reserved row. A table may contain other numbers.
enum Type : int {
    BitType = 0,        ///< one bit
    ByteType = 1,       ///< register of 1 byte
    WordType = 2,       ///< register of 2 bytes
    DoubleWordType = 3, ///< register of 4 bytes
    QuadWordType = 4,   ///< register of 8 bytes
    ReservedType = 5,   ///< text
};

/// The type filter of lookups that accepts every row.
constexpr int anyType = -1;

/// The type filter of lookups with an `int type` argument: -1 accepts every row, 0 bit rows only, and any other value
/// every register row, whatever its exact type.
constexpr bool passesTypeFilter(int rowType, int filter)
{
    return filter == anyType || (filter == BitType) == (rowType == BitType);
}

} // namespace label

#endif
