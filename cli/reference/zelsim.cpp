// SPDX-License-Identifier: MIT
// Prints the manual page of zelsim, or its completion for a shell: part of the build alone.
#include "cli/reference/reference.h"
#include "sim/program/arguments.h"

namespace zel::cli {

namespace {

ValueWords valueWords() {
    ValueWords words;
    for (const sim::FaultRow& row : sim::allFaults())
        words["WHAT"].emplace_back(row.name);
    return words;
}

const ManualText::Table kExitCodes = {
    {"0", "Done; with a command behind --, what that ended with."},
    {"1", "It failed."},
    {"64", "Wrong usage."},
    {"65", "The scenario is damaged."},
    {"66", "The scenario is missing."},
    {"69", "No simulator listens."},
    {"73", "Output or a socket can't be written."},
    {"77", "No permission."},
};

const ManualText::Table kEnvironment = {
    {"ZELSIM_SOCKET",
     "Where the simulator listens that the commands speak with, and that a program "
     "with libzelsim.so preloaded takes its devices from."},
    {"ZELSIM_SCENARIO", "The scenario of a program with libzelsim.so preloaded that has no "
                        "ZELSIM_SOCKET; it starts a simulator of its own."},
};

ManualText manualText(const char* version, const char* date) {
    return {version,
            date,
            {{"Exit status", kExitCodes}, {"Environment", kEnvironment}},
            {"zelsim-scenario(5)", "zeltag(1)", "zelTagAPI(7)"}};
}

} // namespace

} // namespace zel::cli

// FORM VERSION DATE
int main(int argc, char** argv) {
    if (argc != 4)
        return 1;
    zel::sim::Arguments arguments;
    const auto app = zel::sim::describeProgram(arguments);
    return !zel::cli::printReference(argv[1], zel::cli::outlineOf(*app, zel::cli::valueWords()),
                                     zel::cli::manualText(argv[2], argv[3]));
}
