// SPDX-License-Identifier: MIT
// Runs commands in this process, where a test holds the simulated bus.
#pragma once

#include "cli/command/failure.h"
#include "tests/support/library_test.h"

#include <string>
#include <vector>

namespace zel::test {

struct CommandRun {
    cli::ExitCode exit = cli::ExitCode::Done;
    std::string out;
    std::string err;

    bool operator==(const CommandRun&) const = default;
};

void PrintTo(const CommandRun& run, std::ostream* stream);

// A command that prints nothing but one line on stderr.
CommandRun refused(cli::ExitCode exit, const std::string& line);
CommandRun cantWrite(const std::string& file, const std::string& reason);

CommandRun runCommand(const std::vector<const char*>& arguments);

class CommandLineTest : public LibraryTest {
protected:
    static CommandRun run(const std::vector<const char*>& arguments) {
        return runCommand(arguments);
    }

    // A reader named "plus" with so many configurations.
    static std::shared_ptr<sim::TagReader> plugPlus(int configurations);

    // How many replies a connect to what is plugged in asks for.
    static int connectReplies();

    // How many it asks for in vain when none comes from the first reader.
    static int vainReplies();
};

} // namespace zel::test
