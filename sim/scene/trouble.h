// SPDX-License-Identifier: MIT
// Why something can't be done, and with which exit code a program ends for it.
#pragma once

#include <optional>
#include <string>

namespace zel::sim {

enum class Exit {
    Done = 0,
    Failed = 1,
    Usage = 64,
    DamagedFile = 65,
    MissingFile = 66,
    NoDevice = 69, // also: no simulator that runs
    CannotWrite = 73,
    NoPermission = 77,
};

struct Trouble {
    Exit exit = Exit::Failed;
    std::string message; // what is wrong
    std::string hint;    // what to do next
};

// Nothing: all went well.
using Outcome = std::optional<Trouble>;

// The name of an exit code in JSON, such as "no_device".
const char* codeName(Exit exit);

// "MESSAGE; HINT"
std::string asLine(const Trouble& trouble);

} // namespace zel::sim
