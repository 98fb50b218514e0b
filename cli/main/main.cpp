// SPDX-License-Identifier: MIT
// The command line of libzelTagAPI.
#include "cli/command/output.h"
#include "cli/main/program.h"

#include <csignal>
#include <cstdio>
#include <exception>

int main(int argc, char** argv) {
    zel::cli::occupyStandardDescriptors();
    std::signal(SIGPIPE, SIG_IGN); // a closed pipe is noticed where the results are written
    try {
        return static_cast<int>(zel::cli::runProgram(argc, argv));
    } catch (const std::exception& error) {
        std::fprintf(stderr, "zeltag: stopped by an internal failure: %s\n", error.what());
        return static_cast<int>(zel::cli::ExitCode::Failed);
    }
}
