// SPDX-License-Identifier: MIT
// A terminal in place of a standard descriptor: with somebody who types, or who looks.
#pragma once

#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <iostream>
#include <poll.h>
#include <string>
#include <string_view>
#include <unistd.h>

namespace zel::test {

class Terminal {
public:
    // What is typed must end in a line end.
    explicit Terminal(int standard, std::string_view typed = "")
        : standard_(standard), before_(dup(standard)) {
        other_ = posix_openpt(O_RDWR | O_NOCTTY);
        const bool usable = other_ >= 0 && grantpt(other_) == 0 && unlockpt(other_) == 0;
        const int end = usable ? open(ptsname(other_), O_RDWR | O_NOCTTY) : -1;
        if (end < 0) {
            std::cout << "skipped: this machine has no terminals" << std::endl;
            std::exit(77);
        }
        dup2(end, standard);
        close(end);
        std::clearerr(stdin);
        [[maybe_unused]] const auto written = write(other_, typed.data(), typed.size());
    }
    ~Terminal() {
        dup2(before_, standard_);
        close(before_);
        close(other_);
    }
    // What was written to it, up to a line end; it arrives in parts, each within a second.
    std::string shownLine() const {
        std::string line;
        pollfd readable = {other_, POLLIN, 0};
        for (char next = 0; next != '\n' && poll(&readable, 1, kLongestWait) > 0;) {
            if (read(other_, &next, 1) != 1)
                break;
            line += next;
        }
        return line;
    }

    Terminal(const Terminal&) = delete;
    Terminal& operator=(const Terminal&) = delete;

private:
    static constexpr int kLongestWait = 1'000; // ms

    int standard_;
    int before_;
    int other_ = -1;
};

} // namespace zel::test
