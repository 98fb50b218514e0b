// SPDX-License-Identifier: MIT
// What zelsim is asked for on its command line.
#pragma once

#include "sim/bridge/bridge.h"
#include "sim/scene/faults.h"
#include "sim/server/json.h"

#include <CLI/CLI.hpp>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace zel::sim {

struct Arguments {
    Arguments() = default;
    Arguments(const Arguments&) = delete;
    Arguments& operator=(const Arguments&) = delete;

    int (*command)(const Arguments& arguments) = nullptr; // what the subcommand does
    bool json = false;

    // Of the commands that speak with a simulator that runs.
    std::string socket;
    Json request = Json::object();
    bool showsSettings = false;

    // Of those that have a world of their own.
    std::string scenario; // empty: the demonstration
    bool wantsBridge = false;
    BridgeOptions bridge = {.address = {127, 0, 0, 1}, .port = 10001};
    const FaultRow* fault = nullptr; // of the bridge, for good; null: none
    bool wantsUhid = false;
    int lifeline = -1;
    std::vector<std::string> program; // that is run with the object preloaded
};

// The whole command line as it is parsed and shown: help, manual pages and completions are made of
// it. `arguments` takes what a parse finds, and must outlive the result.
std::unique_ptr<CLI::App> describeProgram(Arguments& arguments);

// Takes what stands behind a lone "--" off the command line of `run`.
std::vector<std::string> takeProgram(int& argc, const char* const* argv);

// What the subcommands do; the result is the exit code.
int runCommand(const Arguments& arguments);
int bridgeCommand(const Arguments& arguments);
int controlCommand(const Arguments& arguments);
int stateCommand(const Arguments& arguments);
int traceCommand(const Arguments& arguments);
int checkCommand(const Arguments& arguments);

} // namespace zel::sim
