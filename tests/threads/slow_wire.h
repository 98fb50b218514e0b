// SPDX-License-Identifier: MIT
// A USB backend in front of the simulated bus: slow exchanges, and a log of which thread made them.
#pragma once

#include <string>
#include <vector>

namespace zel::test {

struct Event {
    int member; // of the crew
    std::string text;
};

// Puts the slow wire in the place of the bus.
bool installSlowWire();

// Adds a line of the caller's own to the log.
void noteEvent(const std::string& text);

// All since the last call, in order, when no other thread runs.
std::vector<Event> takeEvents();

} // namespace zel::test
