// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef ZELMAR_LABEL_TESTS_TAGQUESTIONS_H
#define ZELMAR_LABEL_TESTS_TAGQUESTIONS_H

#include "support/randomcases.h"
#include "support/tagthreadstest.h"

#include "zelmar_label/tag_store/tagsystem.h"

#include <functional>
#include <vector>

namespace threads {

/// The data of one thread.
struct Work
{
    TagSystem *tags;
    Random random;

    Tag any() { return Tag(1 + random.below(tagCount)); }
    Tag onLink(int link) { return Tag(4 * (1 + random.below(tagCount / 4 - 1)) + link); }
    int recipe() { return random.below(recipeCount); }
    int unknown() { return 5000 + random.below(1000); }
};

/// One query, and whether its answer was right.
struct Operation
{
    const char *name;
    std::function<bool(Work &)> isRight;
};

/// Every operation that reads a finished project.
std::vector<Operation> allOperations();
const std::vector<Operation> &commandOperations();

} // namespace threads

#endif
