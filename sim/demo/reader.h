// SPDX-License-Identifier: MIT
// The demonstration reader, with cards that come and go.
#pragma once

#include "sim/tag/card.h"

#include <cstdint>
#include <memory>

namespace zel::sim {

class TagReader;

// The card in the field `elapsed` milliseconds after the start: three cards take turns, each for
// two seconds with a second of empty field behind it.
Card demoCardAt(std::uint64_t elapsed);

// The reader with these cards. The time starts with its first read.
std::shared_ptr<TagReader> demoReader();

} // namespace zel::sim
