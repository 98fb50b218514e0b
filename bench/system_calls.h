// SPDX-License-Identifier: MIT
// Counts the system calls of the process by trapping each.
#pragma once

namespace zel::bench {

struct SystemCallCount {
    long clock; // where the kernel's clock can't be read without a call
    long others;
};

// From here on no system call is made but the end of the process: each is counted and left out.
// Whether the kernel agreed.
bool trapSystemCalls();

SystemCallCount systemCallCount();

} // namespace zel::bench
