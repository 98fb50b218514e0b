// SPDX-License-Identifier: MIT
// A serial line as a user writes it: its path and its speed.
#pragma once

#include <string>

namespace zel::cli {

constexpr int kDefaultSpeed = 9600; // baud

// What is wrong with a word; empty when nothing is.
std::string checkLinePath(const std::string& path);
std::string checkSpeed(const std::string& speed);

} // namespace zel::cli
