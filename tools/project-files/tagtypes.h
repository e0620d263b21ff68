// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef ZELMAR_LABEL_PROJECTFILES_TAGTYPES_H
#define ZELMAR_LABEL_PROJECTFILES_TAGTYPES_H

/// The indexes of the tag data types in `TagSystem::dataTypeList`. A project stores the same numbers.
namespace tagtype {

enum : int {
    Bit,
    Int8,
    UInt8,
    Int16,
    UInt16,
    Int32,
    UInt32,
    Float,
    Ascii,
    Double,
    Int64,
    UInt64,
};

constexpr bool isKnown(int type)
{
    return type >= Bit && type <= UInt64;
}

constexpr bool isWide(int type)
{
    return type == Int64 || type == UInt64;
}

constexpr bool isReal(int type)
{
    return type == Float || type == Double;
}

} // namespace tagtype

#endif
