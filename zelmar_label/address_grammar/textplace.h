// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef ZELMAR_LABEL_TEXTPLACE_H
#define ZELMAR_LABEL_TEXTPLACE_H

namespace label {

/// A place in a text, in characters; a start of -1 for none.
struct TextPlace
{
    int start = -1;
    int size = 0;
};

} // namespace label

#endif
