// SPDX-License-Identifier: MIT
// The options that every command takes.
#pragma once

#include "cli/command/failure.h"

#include <optional>
#include <string>

namespace CLI {
class App;
}

namespace zel::cli {

struct Options {
    bool json = false;
    bool sim = false;          // a simulated reader in place of real ones
    bool progress = false;     // remarks on what is under way, wherever stderr goes
    std::optional<int> device; // index in the library's table; none: the active device
    std::string port;          // path of a serial line; empty: none
    std::optional<int> baud;   // the line's speed
    std::string tcp;           // HOST or HOST:PORT of a network bridge; empty: none
    bool ascii = false;        // lines of text in place of frames, on a byte stream

    // Neither on a line nor behind a bridge: on USB, or simulated.
    bool isUsb() const { return port.empty() && tcp.empty(); }
};

void addCommonOptions(CLI::App& app, Options& options);

// Options that don't go together, wherever on the command line they stand.
Outcome contradictionIn(const Options& options);

// A failure for what a reader offers on USB alone, such as "`zeltag dump`".
Outcome demandUsb(const Options& options, const std::string& what);

} // namespace zel::cli
