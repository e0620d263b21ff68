// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef ZELMAR_LABEL_LABELLOCK_P_H
#define ZELMAR_LABEL_LABELLOCK_P_H

#include <mutex>

namespace label {

/// Locked while tags build or use labels, which are not thread-safe. Under it, no operation of `TagSystem` that takes
/// another lock is called.
std::recursive_mutex &labelLock();

} // namespace label

#endif
