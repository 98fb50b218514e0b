// SPDX-License-Identifier: MIT
// Asks on the terminal.
#include "cli/command/question.h"

#include <cstdio>
#include <unistd.h>

namespace zel::cli {

bool canAsk() { return isatty(STDIN_FILENO) != 0; }

bool isConfirmed(const std::string& question) {
    std::fprintf(stderr, "%s [y/N] ", question.c_str());
    char answer[16] = "";
    return std::fgets(answer, sizeof answer, stdin) && (answer[0] == 'y' || answer[0] == 'Y');
}

} // namespace zel::cli
