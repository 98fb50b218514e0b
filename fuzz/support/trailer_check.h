// SPDX-License-Identifier: MIT
// The readers of the three trailers, each under a target of its own.
#pragma once

#include "frame/zelTagFiles.h"
#include "fuzz/target.h"

namespace zel::fuzz {

// Checks an input as a file of a kind, and what was found. Always 0, a target's result.
int checkTrailerOf(zelFileKind kind, const std::uint8_t* data, std::size_t size);

} // namespace zel::fuzz
