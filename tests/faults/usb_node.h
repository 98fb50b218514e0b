// SPDX-License-Identifier: MIT
// The kernel's side of a hidraw node with a simulated reader behind it.
#pragma once

#include "sim/wire/device.h"

namespace zel::test {

// One request of an open node: its result, or an errno negated.
long serveNode(sim::Device& device, unsigned long request, void* argument);

// One that failed on the way.
void loseRequest(sim::Device& device, unsigned long request, void* argument);

} // namespace zel::test
