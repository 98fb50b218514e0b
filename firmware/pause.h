// SPDX-License-Identifier: MIT
// The pauses that a boot loader is left.
#pragma once

namespace zel::firmware {

// Pauses for at least that long. A signal in between starts the pause anew: a frame that comes too
// early could spoil the reader's firmware.
void pause(unsigned microseconds);

} // namespace zel::firmware
