// SPDX-License-Identifier: MIT
// The pauses that devices are left.
#pragma once

namespace zel {

// Pauses for at least that long, in microseconds. A signal in between starts the pause anew: a
// device that is asked too early doesn't answer, or loses what it was told.
void pauseFor(unsigned microseconds);

} // namespace zel
