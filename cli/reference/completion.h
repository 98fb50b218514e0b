// SPDX-License-Identifier: MIT
// A program's commands, options and values for the shells that complete them.
#pragma once

#include "cli/reference/outline.h"

#include <string>

namespace zel::cli {

std::string bashCompletionOf(const CommandOutline& program);
std::string fishCompletionOf(const CommandOutline& program);
std::string zshCompletionOf(const CommandOutline& program);

// For all of them.
std::string joined(const std::vector<std::string>& words, const std::string& between);
std::string replaced(std::string text, const std::string& what, const std::string& by);

// In apostrophes, as all three take a text whole.
std::string quoted(const std::string& text);

// "zelsim_bridge": a part of a function's name.
std::string asFunctionName(const std::string& place);

} // namespace zel::cli
