// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef ZELMAR_LABEL_FILTERTOOLS_H
#define ZELMAR_LABEL_FILTERTOOLS_H

#include "zelmar_label/zelmar_label_export.h"

class QString;

namespace FilterTools {

/// An expression in `QRegExp::RegExp` syntax that finds the characters of `text` in this order, with any text before,
/// between and after them; after a backslash the next character must follow directly. Empty for an empty text.
ZELMAR_LABEL_EXPORT QString makefuzzypattern(const QString &text);

} // namespace FilterTools

#endif
