// SPDX-License-Identifier: MIT
// The machine that the doctor looks at: this one, or a folder laid out like one.
#pragma once

#include <string>
#include <unistd.h>

namespace zel::cli {

struct Machine {
    std::string root; // stands before /sys, /dev, /proc, /etc, /run and /usr
    uid_t user = geteuid();
    int (*access)(const char* path, int mode) = ::access; // as access() of POSIX

    std::string at(const std::string& path) const { return root + path; }
};

} // namespace zel::cli
