// SPDX-License-Identifier: MIT
// A firmware file: what it says of itself, and whether the active reader would take it.
#pragma once

#include "cli/command/failure.h"
#include "cli/command/output.h"

#include <optional>
#include <string>
#include <variant>

namespace zel::cli {

struct FirmwareFile {
    std::string path;
    std::string checksum; // of its trailer, which holds
    std::string name;     // of the new firmware, fit for a terminal; empty when it tells none
    int micro = -1;       // the processor that it is for; -1 when it doesn't tell
    int lines = 0;        // that a flash sends, at least one

    // The kind of reader that it is for.
    std::string family() const { return name.substr(0, 3); }
};

// The file at a path, or why it can't be loaded into any reader.
std::variant<FirmwareFile, Failure> readFirmwareFile(const std::string& path);

// {"name":...,"family":...,"micro":...,"lines":...}, null where the file tells nothing.
Json toJson(const FirmwareFile& file);

// A rule's refusal as the library tells it: "207:- The firmware ..."
struct Refusal {
    int number = 0;
    std::string text;
};

// The rule that keeps a file from the active reader; nothing when all of them pass.
std::optional<Refusal> refusalOf(const FirmwareFile& file);
Failure explain(const Refusal& refusal, const FirmwareFile& file);

// Why the active device takes no firmware at all.
Outcome whyNoFirmware();

// A reader in its boot loader tells no names, and then no rule can be asked.
bool tellsItsFirmware();

} // namespace zel::cli
