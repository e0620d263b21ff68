// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef ZELMAR_LABEL_TAGDATATYPE_P_H
#define ZELMAR_LABEL_TAGDATATYPE_P_H

namespace label {

/// The tag data types, as stored in the tag table. Up to 9 odd numbers are signed; the text forms use this rule also
/// for the last two.
enum TagDataType : int {
    TagBit = 0,
    TagInt8 = 1,
    TagUInt8 = 2,
    TagInt16 = 3,
    TagUInt16 = 4,
    TagInt32 = 5,
    TagUInt32 = 6,
    TagFloat = 7,
    TagAscii = 8,
    TagDouble = 9,
    TagInt64 = 10,
    TagUInt64 = 11,
};

} // namespace label

#endif
