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
    std::optional<int> device; // index in the library's table; none: the active device
};

void addCommonOptions(CLI::App& app, Options& options);

} // namespace zel::cli
