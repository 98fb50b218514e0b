// SPDX-License-Identifier: MIT
// The forms by their names.
#include "cli/reference/reference.h"

#include "cli/reference/completion.h"

#include <cstdio>

namespace zel::cli {

bool printReference(const std::string& form, const CommandOutline& program,
                    const ManualText& text) {
    std::string printed;
    if (form == "manual")
        printed = manualOf(program, text);
    else if (form == "bash")
        printed = bashCompletionOf(program);
    else if (form == "fish")
        printed = fishCompletionOf(program);
    else if (form == "zsh")
        printed = zshCompletionOf(program);
    return !printed.empty() && std::fputs(printed.c_str(), stdout) >= 0 && std::fflush(stdout) == 0;
}

} // namespace zel::cli
