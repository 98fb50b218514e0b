// SPDX-License-Identifier: MIT
// Declares the options that every command takes.
#include "cli/options.h"

#include <CLI/CLI.hpp>

namespace zel::cli {

namespace {
constexpr int kLastDevice = 126; // the library's table holds 127
}

void addCommonOptions(CLI::App& app, Options& options) {
    app.add_flag("--json", options.json, "Print results and errors as JSON");
    app.add_flag("--sim", options.sim, "Use a simulated reader: no hardware needed");
    app.add_flag("--progress", options.progress, "Tell what is under way, on a terminal or not");
    app.add_option("--device", options.device, "Use reader number N of `zeltag list`")
        ->option_text("N")
        ->type_name("N")
        ->check(CLI::Range(0, kLastDevice));
}

} // namespace zel::cli
