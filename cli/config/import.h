// SPDX-License-Identifier: MIT
// A template file on its way into the active reader: what it changes, and what came of it.
#pragma once

#include "cli/command/failure.h"
#include "cli/config/settings.h"
#include "cli/device/device.h"

#include <string>
#include <vector>

namespace zel::cli {

// A record that the library doesn't take from the file; the others load.
struct RefusedRecord {
    std::size_t configuration;
    std::size_t record;
    Failure why;
};

struct Import {
    Device device;
    std::size_t configurations = 0; // of the reader
    Differences changes;
    std::vector<RefusedRecord> refused;
    std::vector<std::string> remarks; // on what the file tells and the reader has no use for
    bool written = false;
    Outcome failure; // why the reader couldn't be asked or written
};

struct ImportOptions {
    std::string name; // of the file
    bool sealed = false;
    bool dryRun = false;
};

// What the file would change in the active reader.
Import planImport(const ImportOptions& options);

// Writes it, unless it failed already, nothing changes or nothing is to be written.
void carryOut(Import& import, const ImportOptions& options);

} // namespace zel::cli
