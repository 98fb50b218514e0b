// SPDX-License-Identifier: MIT
// Takes the place of libc's pause and clock in the whole program, its shared libraries included.
#include "tests/support/virtual_time.h"

#include <atomic>
#include <cerrno>
#include <sys/time.h>
#include <unistd.h>
#include <utility>

namespace zel::test {

namespace {

// Relaxed, so that threads of a test get no order between them from the clock.
constexpr auto kOrder = std::memory_order_relaxed;
std::atomic<std::uint64_t> now = kStartOfTime;
std::atomic<std::uint64_t> paused = 0;
std::atomic<int> interruptions = 0;
std::atomic<std::uint64_t> longest = 0; // 0: any pause gets to its end
std::function<void(std::uint64_t)> pauseListener;

} // namespace

std::uint64_t virtualMicroseconds() { return now.load(kOrder); }
void setVirtualMicroseconds(std::uint64_t time) { now.store(time, kOrder); }
void wait(std::uint64_t microseconds) { now.fetch_add(microseconds, kOrder); }
void onPause(std::function<void(std::uint64_t)> listener) { pauseListener = std::move(listener); }
std::uint64_t takePausedMicroseconds() { return paused.exchange(0, kOrder); }

void interruptPauses(int count) { interruptions.store(count, kOrder); }
void limitPauses(std::uint64_t microseconds) { longest.store(microseconds, kOrder); }

static bool isInterrupted(std::uint64_t microseconds) {
    const std::uint64_t limit = longest.load(kOrder);
    if (limit != 0 && microseconds > limit)
        return true;
    if (interruptions.load(kOrder) == 0)
        return false;
    interruptions.fetch_sub(1, kOrder);
    return true;
}

static void pause(std::uint64_t microseconds) {
    if (pauseListener)
        pauseListener(microseconds);
    paused.fetch_add(microseconds, kOrder);
    now.fetch_add(microseconds, kOrder);
}

} // namespace zel::test

extern "C" {

__attribute__((visibility("default"))) int usleep(useconds_t microseconds) {
    if (zel::test::isInterrupted(microseconds)) {
        errno = EINTR;
        return -1;
    }
    zel::test::pause(microseconds);
    return 0;
}

__attribute__((visibility("default"))) int gettimeofday(timeval* time, void*) noexcept {
    const std::uint64_t now = zel::test::virtualMicroseconds();
    time->tv_sec = static_cast<time_t>(now / 1'000'000);
    time->tv_usec = static_cast<suseconds_t>(now % 1'000'000);
    return 0;
}
}
