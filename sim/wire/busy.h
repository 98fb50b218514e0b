// SPDX-License-Identifier: MIT
// How long a device still works on what it was last told.
#pragma once

#include "sim/wire/clock.h"

namespace zel::sim {

class Busy {
public:
    // Busy for so long from now on; the longer of two works counts.
    void hold(std::uint64_t length) {
        if (length <= remaining())
            return;
        since_ = microseconds();
        length_ = length;
    }

    // Microseconds until the device is idle. A clock that was set back ends the work.
    std::uint64_t remaining() const {
        if (length_ == 0)
            return 0;
        const std::uint64_t elapsed = microseconds() - since_;
        return elapsed < length_ ? length_ - elapsed : 0;
    }

private:
    std::uint64_t since_ = 0;
    std::uint64_t length_ = 0;
};

} // namespace zel::sim
