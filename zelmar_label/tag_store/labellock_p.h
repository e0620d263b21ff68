// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef ZELMAR_LABEL_LABELLOCK_P_H
#define ZELMAR_LABEL_LABELLOCK_P_H

#include <mutex>

namespace label {

/// Held while tags have labels built or used: labels are for one thread at a time. No operation of `TagSystem` that
/// takes another lock is called under it.
std::recursive_mutex &labelLock();

} // namespace label

#endif
