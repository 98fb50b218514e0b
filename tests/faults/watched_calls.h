// SPDX-License-Identifier: MIT
// The system calls that the library and its command line depend on, and how each of them fails.
#pragma once

#include "tests/faults/trapped_calls.h"

#include <vector>

namespace zel::test {

struct WatchedCall {
    const char* name;
    long number;
    std::vector<int> errors; // that the manual tells of it
};

const std::vector<WatchedCall>& watchedCalls();

const char* nameOfCall(long number);

// Whether the first argument is a descriptor that the call is about.
bool isAboutDescriptor(long number);

// Whether it takes a name away: it may have to stay when that fails.
bool isRemoval(long number);

} // namespace zel::test
