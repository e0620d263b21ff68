// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "zelmar_label/tag_store/labellock_p.h"

namespace label {

std::recursive_mutex &labelLock()
{
    static std::recursive_mutex lock;
    return lock;
}

} // namespace label
