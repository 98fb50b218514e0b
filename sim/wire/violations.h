// SPDX-License-Identifier: MIT
// Exchanges that came while a device was still busy.
#pragma once

#include <cstdint>
#include <string>
#include <utility>

namespace zel::sim {

class Violations {
public:
    // Takes note of an exchange that came so many microseconds too early; 0: in time.
    void check(const std::string& exchange, std::uint64_t early) {
        if (early == 0)
            return;
        ++count_;
        last_ = exchange + ", " + std::to_string(early) + " us too early";
        remark_ = "too early";
    }

    int count() const { return count_; }
    const std::string& last() const { return last_; }

    // For the trace, once.
    std::string takeRemark() { return std::exchange(remark_, {}); }

private:
    int count_ = 0;
    std::string last_;
    std::string remark_;
};

} // namespace zel::sim
