// SPDX-License-Identifier: MIT
// What the doctor found: a verdict, what it is about, and what to do.
#pragma once

#include "cli/command/failure.h"
#include "cli/command/output.h"

#include <string>
#include <vector>

namespace zel::cli {

enum class Verdict { Ok, Warning, Fault };

struct Finding {
    Verdict verdict;
    std::string check;                // a word, such as "permission"
    std::string text;                 // what was found
    std::string fix = {};             // what to do; empty where nothing need be done
    ExitCode exit = ExitCode::Failed; // of a fault
};
using Findings = std::vector<Finding>;

Finding ok(std::string check, std::string text);
Finding warning(std::string check, std::string text, std::string fix);
Finding fault(std::string check, ExitCode exit, std::string text, std::string fix);
Finding fault(std::string check, const Failure& failure);

bool hasFault(const Findings& findings);

// No permission before no device before any other fault; nothing where there is none.
Outcome outcomeOf(const Findings& findings);

// A row a finding, and the fix in a row below it.
void print(const Findings& findings, Output& output);

// {"check":...,"verdict":...,"text":...,"fix":...} each; the fix null where there is none.
Json toJson(const Findings& findings);

} // namespace zel::cli
