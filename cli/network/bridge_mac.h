// SPDX-License-Identifier: MIT
// The MAC address of a network bridge.
#pragma once

#include "cli/command/address.h"

#include <optional>

namespace zel::cli {

// Nothing where no bridge answers, within half a second.
std::optional<Mac> macOf(const Ipv4& host);

} // namespace zel::cli
