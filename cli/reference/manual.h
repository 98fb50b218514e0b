// SPDX-License-Identifier: MIT
// A program's page for man(1), in the macros of man(7).
#pragma once

#include "cli/reference/outline.h"

#include <string>
#include <utility>
#include <vector>

namespace zel::cli {

struct ManualText {
    std::string version; // "7.6.4"
    std::string date;    // "2026-11-22"
    // What stands behind the commands: tables of a term and its meaning, by their headings.
    using Table = std::vector<std::pair<std::string, std::string>>;
    std::vector<std::pair<std::string, Table>> tables;
    std::vector<std::string> seeAlso; // "zelsim(1)"
};

std::string manualOf(const CommandOutline& program, const ManualText& text);

} // namespace zel::cli
