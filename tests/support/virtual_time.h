// SPDX-License-Identifier: MIT
// A clock that the test owns: a program that links this defines usleep() and gettimeofday(), so no
// pause of the library waits for real.
#pragma once

#include <cstdint>
#include <functional>

namespace zel::test {

// When each program starts, and each test of the library: a time of day like any other.
constexpr std::uint64_t kStartOfTime = 1'700'000'000'000'000;

// The time now, in microseconds.
std::uint64_t virtualMicroseconds();
void setVirtualMicroseconds(std::uint64_t now);

// Time passes without a pause.
void wait(std::uint64_t microseconds);

// Called with each pause, in microseconds, before the clock moves on.
void onPause(std::function<void(std::uint64_t)> listener);

// Lets the next `count` pauses end at once, as if a signal had come.
void interruptPauses(int count);

// As if a timer's signal came so often that no longer pause gets to its end; 0: none comes.
void limitPauses(std::uint64_t microseconds);

// All pauses since the last call, in microseconds.
std::uint64_t takePausedMicroseconds();

} // namespace zel::test
