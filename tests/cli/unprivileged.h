// SPDX-License-Identifier: MIT
// Takes the rights of the superuser from this process, for a scope: a test of permissions holds for
// whoever runs it.
#pragma once

#include <cstdlib>
#include <unistd.h>

namespace zel::test {

class Unprivileged {
public:
    Unprivileged() { become(kNobody); }
    ~Unprivileged() { become(0); }
    Unprivileged(const Unprivileged&) = delete;
    Unprivileged& operator=(const Unprivileged&) = delete;

private:
    static constexpr uid_t kNobody = 65534;

    static void become(uid_t user) {
        if (getuid() == 0 && seteuid(user) != 0)
            std::abort();
    }
};

} // namespace zel::test
