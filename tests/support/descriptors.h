// SPDX-License-Identifier: MIT
// Which descriptors of the process are open: finds those that the library holds.
#pragma once

#include <fcntl.h>
#include <set>

namespace zel::test {

inline std::set<int> openDescriptors() {
    constexpr int kMost = 256;
    std::set<int> open;
    for (int fd = 0; fd < kMost; ++fd)
        if (fcntl(fd, F_GETFD) != -1)
            open.insert(fd);
    return open;
}

// The only one that is open now and wasn't before, or -1.
inline int newDescriptor(const std::set<int>& before) {
    std::set<int> added = openDescriptors();
    for (const int fd : before)
        added.erase(fd);
    return added.size() == 1 ? *added.begin() : -1;
}

} // namespace zel::test
