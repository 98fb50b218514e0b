// SPDX-License-Identifier: MIT
// Pauses that no signal cuts short.
#include "base/pause.h"

#include <algorithm>
#include <cerrno>
#include <unistd.h>

namespace {

constexpr unsigned kLongestStep = 1'000;

bool isInterrupted(unsigned microseconds) { return usleep(microseconds) == -1 && errno == EINTR; }

} // namespace

// Anew in short steps, of which an interrupted one doesn't count. The next one is then shorter, so
// that an application's interval timer, however fast, can't keep the pause from ending. No clock
// says what is left: the one that the library has may jump.
void zel::pauseFor(unsigned microseconds) {
    if (!isInterrupted(microseconds))
        return;
    unsigned longest = kLongestStep;
    for (unsigned left = microseconds; left > 0;) {
        const unsigned step = std::min(left, longest);
        const bool isDone = !isInterrupted(step);
        left -= isDone ? step : 0;
        longest = isDone ? std::min(2 * longest, kLongestStep) : std::max(longest / 2, 1U);
    }
}
