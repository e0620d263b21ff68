// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "benchmarks/countingallocator.h"

#include <atomic>
#include <cerrno>
#include <cstddef>

#include <malloc.h>

// The allocator of the C library, under the names that stay when a program replaces the usual ones.
extern "C" {
void *__libc_malloc(std::size_t size);
void *__libc_calloc(std::size_t count, std::size_t size);
void *__libc_realloc(void *block, std::size_t size);
void *__libc_memalign(std::size_t alignment, std::size_t size);
void __libc_free(void *block);
}

namespace {

std::atomic<long long> calls{0};
std::atomic<long long> bytes{0};

void *counted(void *block)
{
    if (!block)
        return block;
    calls.fetch_add(1, std::memory_order_relaxed);
    bytes.fetch_add(static_cast<long long>(malloc_usable_size(block)), std::memory_order_relaxed);
    return block;
}

void discount(void *block)
{
    if (block)
        bytes.fetch_sub(static_cast<long long>(malloc_usable_size(block)), std::memory_order_relaxed);
}

} // namespace

AllocationCount allocationCount()
{
    return {calls.load(), bytes.load()};
}

// The operator new of the C++ library calls malloc.
extern "C" {

void *malloc(std::size_t size)
{
    return counted(__libc_malloc(size));
}

void *calloc(std::size_t count, std::size_t size)
{
    return counted(__libc_calloc(count, size));
}

void *realloc(void *block, std::size_t size)
{
    discount(block);
    return counted(__libc_realloc(block, size));
}

void *memalign(std::size_t alignment, std::size_t size)
{
    return counted(__libc_memalign(alignment, size));
}

void *aligned_alloc(std::size_t alignment, std::size_t size)
{
    return counted(__libc_memalign(alignment, size));
}

int posix_memalign(void **place, std::size_t alignment, std::size_t size)
{
    *place = counted(__libc_memalign(alignment, size));
    return *place ? 0 : ENOMEM;
}

void free(void *block)
{
    discount(block);
    __libc_free(block);
}
}
