// SPDX-License-Identifier: MIT
// What a proximity reader's ASCII protocol calls a variable: a key and a value for a word of the
// active configuration.
#pragma once

#include "sim/tag/reader.h"

#include <optional>
#include <string>
#include <string_view>

namespace zel::sim {

// One line for each variable, "ZTAG:out.led=3\r", in the order of their keys.
std::string tagVariableLines(TagReader& reader);

// A number, a flag as True or False, or a character in quotes, escaped as '\x0D' or plain.
std::optional<unsigned> tagVariableValue(std::string_view text);

// False: no such variable, it can't be set, or the number is too large for it.
bool setTagVariable(TagReader& reader, std::string_view key, unsigned value);

} // namespace zel::sim
