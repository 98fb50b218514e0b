// SPDX-License-Identifier: MIT
// Pauses that no signal cuts short.
#include "firmware/pause.h"

#include <algorithm>
#include <cerrno>
#include <unistd.h>

namespace {

constexpr unsigned kStep = 1'000;

bool isInterrupted(unsigned microseconds) { return usleep(microseconds) == -1 && errno == EINTR; }

} // namespace

// Anew in short steps, of which an interrupted one doesn't count: an application's interval timer
// can't keep the pause from ending.
void zel::firmware::pause(unsigned microseconds) {
    if (!isInterrupted(microseconds))
        return;
    for (unsigned left = microseconds; left > 0;) {
        const unsigned step = std::min(left, kStep);
        if (!isInterrupted(step))
            left -= step;
    }
}
