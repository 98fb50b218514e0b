// SPDX-License-Identifier: MIT
// zelsim: simulated devices for who writes applications.
#include "sim/program/arguments.h"
#include "sim/program/report.h"

#include <algorithm>
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

// The parser tells only that none of its commands was named.
std::string faultIn(const CLI::App& app, const CLI::ParseError& stop, int argc, char** argv) {
    const bool isNamed = argc > 1 && *argv[1] != '-';
    if (!isNamed)
        return stop.what();
    const auto commands = app.get_subcommands([](const CLI::App*) { return true; });
    const bool isKnown =
        std::any_of(commands.begin(), commands.end(),
                    [argv](const CLI::App* each) { return each->get_name() == argv[1]; });
    return isKnown ? stop.what() : std::string("unknown command ") + argv[1];
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
    } catch (const CLI::CallForVersion& version) {
        return print(version.what(), false);
    } catch (const CLI::ParseError& stop) {
        return fail({Exit::Usage, faultIn(*app, stop, argc, argv), helpFor(*app)},
                    demandsJson(argc, argv));
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
