// SPDX-License-Identifier: MIT
// zelsim: simulated devices for who writes applications.
#include "sim/program/arguments.h"
#include "sim/program/report.h"

#include <csignal>
#include <cstdio>
#include <exception>
#include <string_view>

namespace zel::sim {

namespace {

// What is wrong with a command line is told as JSON too, where it asks for JSON.
bool demandsJson(int argc, const char* const* argv) {
    return std::find(argv, argv + argc, std::string_view("--json")) != argv + argc;
}

// The subcommand whose help explains what is wrong.
std::string helpFor(const CLI::App& app) {
    const auto chosen = app.get_subcommands();
    return "`zelsim " + (chosen.empty() ? "" : chosen.front()->get_name() + " ") +
           "--help` shows how";
}

int runProgram(int argc, char** argv) {
    std::signal(SIGPIPE, SIG_IGN); // a closed pipe is noticed where a line is written
    Arguments arguments;
    const int words = argc;
    arguments.program = takeProgram(argc, argv);
    if (argc < words && arguments.program.empty())
        return fail({Exit::Usage, "no command stands behind --", "name one, or leave -- out"},
                    demandsJson(argc, argv));
    const auto app = describeProgram(arguments);
    try {
        app->parse(argc, argv);
    } catch (const CLI::CallForHelp&) {
        std::string help = app->help();
        help.pop_back();
        return print(help, false);
    } catch (const CLI::ParseError& stop) {
        return fail({Exit::Usage, stop.what(), helpFor(*app)}, demandsJson(argc, argv));
    }
    return arguments.command(arguments);
}

} // namespace

} // namespace zel::sim

int main(int argc, char** argv) {
    try {
        return zel::sim::runProgram(argc, argv);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "zelsim: stopped by an internal failure: %s\n", error.what());
        return static_cast<int>(zel::sim::Exit::Failed);
    }
}
