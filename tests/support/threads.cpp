// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "support/threads.h"

#include <thread>

void inAnotherThread(const std::function<void()> &work)
{
    std::thread(work).join();
}
