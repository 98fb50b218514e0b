// SPDX-License-Identifier: MIT
// The two forms of an error report: a line for people, an object for programs.
#include "cli/command/failure.h"

#include "cli/command/output.h"

#include <nlohmann/json.hpp>

namespace zel::cli {

const char* codeName(ExitCode exit) {
    switch (exit) {
    case ExitCode::Done:
        return "done";
    case ExitCode::Failed:
        return "failed";
    case ExitCode::NothingCame:
        return "nothing_came";
    case ExitCode::Usage:
        return "usage";
    case ExitCode::DamagedFile:
        return "damaged_file";
    case ExitCode::MissingFile:
        return "missing_file";
    case ExitCode::NoDevice:
        return "no_device";
    case ExitCode::CannotWrite:
        return "cannot_write";
    case ExitCode::NoPermission:
        return "no_permission";
    case ExitCode::Interrupted:
        return "interrupted";
    }
    return "failed";
}

Failure alreadyTold(ExitCode exit) { return {exit, "", "", ""}; }

Failure interruption() { return alreadyTold(ExitCode::Interrupted); }

std::string asLine(const Failure& failure) {
    return failure.hint.empty() ? failure.message : failure.message + "; " + failure.hint;
}

std::string asJson(const Failure& failure) {
    Json error = {{"code", codeName(failure.exit)},
                  {"exit", static_cast<int>(failure.exit)},
                  {"message", failure.message}};
    if (!failure.hint.empty())
        error["hint"] = failure.hint;
    if (!failure.device.empty())
        error["device"] = failure.device;
    return toText({{"error", error}});
}

} // namespace zel::cli
