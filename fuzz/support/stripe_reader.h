// SPDX-License-Identifier: MIT
// The operations of a stripe reader, under a target for each of its transports.
#pragma once

namespace zel::fuzz {

constexpr int kStripeOperations = 18;

// Runs one of them on the active device. Its result: 1 or 0.
int runStripe(int operation);

} // namespace zel::fuzz
