// SPDX-License-Identifier: MIT
// The options that every command takes.
#pragma once

#include <optional>

namespace CLI {
class App;
}

namespace zel::cli {

struct Options {
    bool json = false;
    bool sim = false;          // a simulated reader in place of real ones
    bool progress = false;     // remarks on what is under way, wherever stderr goes
    std::optional<int> device; // index in the library's table; none: the active device
};

void addCommonOptions(CLI::App& app, Options& options);

} // namespace zel::cli
