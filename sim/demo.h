// SPDX-License-Identifier: MIT
// The demonstration bench: one reader, with cards that come and go.
#pragma once

#include "sim/card.h"

#include <cstdint>

namespace zel::sim {

// The card in the field `elapsed` milliseconds after the start: three cards take turns, each for
// two seconds with a second of empty field behind it.
Card demoCardAt(std::uint64_t elapsed);

// Puts the reader on the simulated bus and makes the bus the library's USB backend. The time starts
// with the first read. False when the library still holds a USB handle.
bool installDemo();

} // namespace zel::sim
