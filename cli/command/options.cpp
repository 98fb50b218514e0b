// SPDX-License-Identifier: MIT
// Declares the options that every command takes.
#include "cli/command/options.h"

#include "cli/command/address.h"
#include "cli/command/line_words.h"

#include <CLI/CLI.hpp>

namespace zel::cli {

namespace {

constexpr int kLastDevice = 126; // the library's table holds 127
constexpr char kNoStream[] = "it is about a reader's byte stream, which there is none of on USB";

// The option that names another place than USB.
const char* placeOption(const Options& options) {
    return options.port.empty() ? "--tcp" : "--port";
}

Failure dontGoTogether(const char* first, const char* second) {
    return {ExitCode::Usage, std::string(first) + " and " + second + " don't go together",
            "a reader is in one place: leave one of them out", ""};
}

Failure isMissing(const char* option, const char* needed, const char* reason) {
    return {ExitCode::Usage, std::string(option) + " needs " + needed, reason, ""};
}

void addPlaceOptions(CLI::App& app, Options& options) {
    app.add_option("--port", options.port, "Use the reader on serial line PATH")
        ->option_text("PATH")
        ->type_name("PATH")
        ->check(CLI::Validator(checkLinePath, ""));
    app.add_option("--baud", options.baud, "Speed of the line; 9600 when left out")
        ->option_text("N")
        ->type_name("N")
        ->check(CLI::Validator(checkSpeed, ""));
    app.add_option("--tcp", options.tcp, "Use the reader behind a network bridge, TCP port 10001")
        ->option_text("HOST[:PORT]")
        ->type_name("HOST[:PORT]")
        ->check(CLI::Validator(checkEndpoint, ""));
    app.add_flag("--ascii", options.ascii, "Talk to it in lines of text, with --port or --tcp");
}

} // namespace

void addCommonOptions(CLI::App& app, Options& options) {
    app.add_flag("--json", options.json, "Print results and errors as JSON");
    app.add_flag("--sim", options.sim, "Use a simulated reader: no hardware needed");
    app.add_flag("--progress", options.progress,
                 "Tell what is under way where stderr is no terminal too");
    app.add_option("--device", options.device, "Use reader number N of `zeltag list`")
        ->option_text("N")
        ->type_name("N")
        ->check(CLI::Range(0, kLastDevice));
    addPlaceOptions(app, options);
}

Outcome contradictionIn(const Options& options) {
    if (!options.port.empty() && !options.tcp.empty())
        return dontGoTogether("--port", "--tcp");
    if (options.sim && !options.isUsb())
        return dontGoTogether("--sim", placeOption(options));
    if (options.baud && options.port.empty())
        return isMissing("--baud", "--port",
                         options.tcp.empty() ? kNoStream : "the bridge has a speed of its own");
    if (options.ascii && options.isUsb())
        return isMissing("--ascii", "--port or --tcp", kNoStream);
    return {};
}

Outcome demandUsb(const Options& options, const std::string& what) {
    if (options.isUsb())
        return {};
    return Failure{ExitCode::Usage, what + " works over USB only",
                   std::string("leave ") + placeOption(options) + " out", ""};
}

} // namespace zel::cli
