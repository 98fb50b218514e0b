// SPDX-License-Identifier: MIT
// Stands before glibc's allocation, and with a sanitizer, whose own that is, before operator new.
#include "tests/faults/allocations.h"

#include <cerrno>
#include <cstddef>
#include <cstdlib>
#include <malloc.h>
#include <new>

namespace {

int asked = 0; // in a scope; the program has one thread
int failed = 0;
int first = 0; // 0: none fails
int most = 0;
int spared = 0; // scopes
long held = 0;

bool failsNow() {
    if (first == 0 || spared > 0)
        return false;
    ++asked;
    const bool fails = asked >= first && asked - first < most;
    failed += fails ? 1 : 0;
    return fails;
}

} // namespace

namespace zel::test {

FailingAllocations::FailingAllocations(int nth, int times) {
    asked = failed = 0;
    most = times;
    first = nth;
}

FailingAllocations::~FailingAllocations() { first = 0; }

int FailingAllocations::failures() { return failed; }

Spared::Spared() : before_(held) { ++spared; }

Spared::~Spared() {
    --spared;
    held = before_;
}

long heldBlocks() { return held; }

} // namespace zel::test

#pragma GCC visibility push(default)

#ifdef ZEL_SANITIZED

void* operator new(std::size_t size) {
    void* const block = failsNow() ? nullptr : std::malloc(size);
    if (!block)
        throw std::bad_alloc();
    return block;
}

void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
    return failsNow() ? nullptr : std::malloc(size);
}

void operator delete(void* block) noexcept { std::free(block); }
void operator delete(void* block, std::size_t) noexcept { std::free(block); }

#else

extern "C" {

void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t number, std::size_t size);
void* __libc_realloc(void* block, std::size_t size);
void* __libc_memalign(std::size_t alignment, std::size_t size);
void __libc_free(void* block);

static void* counted(void* block) {
    held += block ? 1 : 0;
    return block;
}

static void* refused() {
    errno = ENOMEM;
    return nullptr;
}

void* malloc(std::size_t size) noexcept {
    return failsNow() ? refused() : counted(__libc_malloc(size));
}

void* calloc(std::size_t number, std::size_t size) noexcept {
    return failsNow() ? refused() : counted(__libc_calloc(number, size));
}

void* realloc(void* block, std::size_t size) noexcept {
    if (failsNow())
        return refused();
    void* const moved = __libc_realloc(block, size);
    return block ? moved : counted(moved);
}

void* memalign(std::size_t alignment, std::size_t size) noexcept {
    return failsNow() ? refused() : counted(__libc_memalign(alignment, size));
}

void* aligned_alloc(std::size_t alignment, std::size_t size) noexcept {
    return memalign(alignment, size);
}

int posix_memalign(void** block, std::size_t alignment, std::size_t size) noexcept {
    *block = memalign(alignment, size);
    return *block ? 0 : ENOMEM;
}

void free(void* block) noexcept {
    held -= block ? 1 : 0;
    __libc_free(block);
}
}

#endif

#pragma GCC visibility pop
