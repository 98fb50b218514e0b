// SPDX-License-Identifier: MIT
// Ctrl-C and termination as a condition that a waiting command asks for.
#pragma once

#include <chrono>

namespace zel::cli {

// From now on the first SIGINT or SIGTERM is kept for interrupted(). A second one ends the program
// at once, with the same exit code: an exchange with a device that doesn't answer takes seconds.
void catchInterrupts();

bool interrupted();

// Sleeps; an interrupt ends the sleep early.
void pauseFor(std::chrono::milliseconds time);

} // namespace zel::cli
