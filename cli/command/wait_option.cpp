// SPDX-License-Identifier: MIT
// Declares --wait and checks its seconds.
#include "cli/command/wait_option.h"

#include <CLI/CLI.hpp>
#include <string>

namespace zel::cli {

namespace {

constexpr double kLongestWait = 86400; // seconds

// Asks for the inside of the range: "nan" is neither below nor above it.
std::string checkWait(const std::string& text) {
    double seconds = -1;
    const bool valid =
        CLI::detail::lexical_cast(text, seconds) && seconds >= 0 && seconds <= kLongestWait;
    return valid ? "" : "SECONDS is a number from 0 to 86400, not " + text;
}

} // namespace

CLI::Option* addWaitOption(CLI::App& app, double& seconds, const char* description) {
    return app.add_option("--wait", seconds, description)
        ->option_text("SECONDS")
        ->type_name("SECONDS")
        ->check(CLI::Validator(checkWait, ""));
}

} // namespace zel::cli
