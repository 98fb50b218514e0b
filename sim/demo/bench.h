// SPDX-License-Identifier: MIT
// The demonstration bench: the demonstration reader on the simulated bus.
#pragma once

#include "sim/demo/reader.h"

namespace zel::sim {

// Puts the reader on the simulated bus and makes the bus the library's USB backend. The time starts
// with the first read. False when the library still holds a USB handle.
bool installDemo();

} // namespace zel::sim
