// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef ZELMAR_LABEL_TESTS_THREADS_H
#define ZELMAR_LABEL_TESTS_THREADS_H

#include <functional>

/// Runs `work` on a thread of its own, to its end.
void inAnotherThread(const std::function<void()> &work);

#endif
