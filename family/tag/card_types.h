// SPDX-License-Identifier: MIT
// Card types are 16-bit values whose bits 4 to 7 don't count.
#pragma once

#include <cstdint>

namespace zel::tag {

constexpr std::uint16_t kCardTypeMask = 0xFF0F;

} // namespace zel::tag
