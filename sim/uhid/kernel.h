// SPDX-License-Identifier: MIT
// The kernel's door for HID devices in user space.
#pragma once

#include "sim/link/descriptor.h"
#include "sim/scene/trouble.h"

#include <variant>

namespace zel::sim {

inline constexpr const char* kUhidNode = "/dev/uhid";

// Opens the node; a trouble tells how a user comes by it.
std::variant<Descriptor, Trouble> openUhid(const char* node = kUhidNode);

} // namespace zel::sim
