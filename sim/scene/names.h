// SPDX-License-Identifier: MIT
// Names that a user wrote, and those that may have been meant.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace zel::sim {

using Names = std::vector<std::string>;

// "a, b, c"
std::string listed(const Names& names);

// What to do about a name that is none of these: "did you mean kind?" where one is near, else the
// list of all.
std::string meantBy(std::string_view name, const Names& known);

} // namespace zel::sim
