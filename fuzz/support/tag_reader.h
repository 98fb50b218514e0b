// SPDX-License-Identifier: MIT
// The operations of a proximity reader, under a target for each of its transports.
#pragma once

namespace zel::fuzz {

constexpr int kTagOperations = 20;

// Runs one of them on the active device. Its result: 1 or 0.
int runTag(int operation);

// What holds of the active record whatever a reader answered.
void requireSoundTag();

// What is known of a reader beforehand, by bits.
void knowTag(unsigned char known);

} // namespace zel::fuzz
