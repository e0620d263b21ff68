// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef ZELMAR_LABEL_TAGIDS_P_H
#define ZELMAR_LABEL_TAGIDS_P_H

namespace label {

constexpr int firstSystemTagId = 20000;
constexpr int lastSystemTagId = 21000;
constexpr int firstRecipeTagId = 30000;
constexpr int lastRecipeTagId = 50000;
constexpr int lastRecipeRowTagId = 60000;

constexpr bool isSystemTagId(int id)
{
    return id >= firstSystemTagId && id <= lastSystemTagId;
}

/// Recipe tags and recipe row tags.
constexpr bool isRecipeTagId(int id)
{
    return id >= firstRecipeTagId && id <= lastRecipeRowTagId;
}

constexpr bool isRecipeRowTagId(int id)
{
    return id > lastRecipeTagId && id <= lastRecipeRowTagId;
}

} // namespace label

#endif
