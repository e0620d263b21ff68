// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef ZELMAR_LABEL_BENCHMARKS_COUNTINGALLOCATOR_H
#define ZELMAR_LABEL_BENCHMARKS_COUNTINGALLOCATOR_H

/// The allocations of the whole program since its start: a program that links this file counts them.
struct AllocationCount
{
    long long calls;
    /// Bytes that are in use now, with what the allocator adds to round sizes up.
    long long bytes;
};

AllocationCount allocationCount();

#endif
