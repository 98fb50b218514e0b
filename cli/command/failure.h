// SPDX-License-Identifier: MIT
// How a command ends: its exit code and what the user is told.
#pragma once

#include <optional>
#include <string>

namespace zel::cli {

enum class ExitCode {
    Done = 0,
    Failed = 1,      // the device or the library reported a failure
    NothingCame = 2, // no card, no reply
    Usage = 64,
    DamagedFile = 65,
    MissingFile = 66,
    NoDevice = 69,
    CannotWrite = 73, // results can't be delivered
    NoPermission = 77,
    Interrupted = 130,
};

struct Failure {
    ExitCode exit = ExitCode::Failed;
    std::string message; // what failed, and on which device; empty: nothing to say
    std::string hint;    // what to do next
    std::string device;  // the device's name, when one is meant
};

// The command said all there is to say.
Failure alreadyTold(ExitCode exit);

// The user ended the command: nothing needs saying.
Failure interruption();

// Nothing: the command did what it was asked.
using Outcome = std::optional<Failure>;

// The name of an exit code in JSON, such as "no_device".
const char* codeName(ExitCode exit);

// "MESSAGE; HINT"
std::string asLine(const Failure& failure);

// {"error":{"code":...,"exit":...,"message":...,"hint":...,"device":...}}, without what is empty.
std::string asJson(const Failure& failure);

} // namespace zel::cli
