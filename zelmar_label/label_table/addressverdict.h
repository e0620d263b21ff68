// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef ZELMAR_LABEL_ADDRESSVERDICT_H
#define ZELMAR_LABEL_ADDRESSVERDICT_H

namespace label {

/// What a label makes of an address. -1 means no row, no station, no number, no bit, no place.
struct AddressVerdict
{
    /// Type index of the row that accepts the address. For a member of a dynamic family that no row knows yet, the type
    /// index of the family's template row, whether the member is accepted or not.
    int row = -1;
    /// The number in front of the first "-"; 0 when the text there is no number.
    int station = -1;
    /// The number of the address, on a bit row of its word.
    int number = -1;
    /// The bit offset in the word; -1 on a register row.
    int bit = -1;
    /// The place of the range string in the whole text, station included, in characters.
    int rangeStart = -1;
    int rangeSize = 0;
    /// True when a row accepts the address. For a new member: when its number is within the limits of the family, and
    /// its type passes the type filter.
    bool isAccepted = false;
    /// True for a member of a dynamic family that no row knows yet.
    bool isNewMember = false;
};

} // namespace label

#endif
