// SPDX-License-Identifier: MIT
// The program's own allocation functions: glibc's, with a count in front.
#include "bench/allocations.h"

#include <cerrno>
#include <cstdlib>
#include <malloc.h>

extern "C" {
void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t number, std::size_t size);
void* __libc_realloc(void* block, std::size_t size);
void* __libc_memalign(std::size_t alignment, std::size_t size);
}

namespace {
long allocations = 0;
} // namespace

long zel::bench::allocationCount() { return allocations; }

extern "C" {

void* malloc(std::size_t size) noexcept {
    ++allocations;
    return __libc_malloc(size);
}

void* calloc(std::size_t number, std::size_t size) noexcept {
    ++allocations;
    return __libc_calloc(number, size);
}

void* realloc(void* block, std::size_t size) noexcept {
    ++allocations;
    return __libc_realloc(block, size);
}

void* memalign(std::size_t alignment, std::size_t size) noexcept {
    ++allocations;
    return __libc_memalign(alignment, size);
}

void* aligned_alloc(std::size_t alignment, std::size_t size) noexcept {
    return memalign(alignment, size);
}

int posix_memalign(void** block, std::size_t alignment, std::size_t size) noexcept {
    *block = memalign(alignment, size);
    return *block ? 0 : ENOMEM;
}
}
