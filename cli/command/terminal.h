// SPDX-License-Identifier: MIT
// What the user's terminal shows: its width, its colours.
#pragma once

#include <cstdio>
#include <optional>
#include <string>
#include <string_view>

namespace zel::cli {

enum class Colour { Red = 31, Green = 32, Yellow = 33 };

// Columns of the terminal that a stream goes to, COLUMNS before what the terminal says; nothing
// where it goes elsewhere.
std::optional<std::size_t> terminalColumns(std::FILE* stream);

// On a terminal, unless NO_COLOR is set or TERM is dumb.
bool showsColours(std::FILE* stream);

// The text in a colour where the stream shows colours.
std::string coloured(std::string_view text, Colour colour, std::FILE* stream);

} // namespace zel::cli
