// SPDX-License-Identifier: MIT
// Ctrl-C and termination as a condition that a waiting command asks for.
#pragma once

#include <chrono>

namespace zel::cli {

// From now on the first SIGINT or SIGTERM is kept for interrupted(). A second one ends the program
// at once, with the same exit code: an exchange with a device that doesn't answer takes seconds.
void catchInterrupts();

bool interrupted();

// The file that a second interrupt removes before it ends the program; null for none. The name
// stays the caller's and must live on.
void removeAtSecondInterrupt(const char* path);

// Sleeps; an interrupt ends the sleep early.
void pauseFor(std::chrono::milliseconds time);

} // namespace zel::cli
