// SPDX-License-Identifier: MIT
// Why a reader that is plugged in isn't in the library's table.
//
// The library's scan ends at the first reader that it can't open and says nothing of the reason, so
// the system is asked here a second time.
#pragma once

#include "cli/command/failure.h"
#include "cli/device/reader_ids.h"

#include <string>
#include <vector>

namespace zel::cli {

enum class Access {
    Open,    // nothing speaks against opening it
    Denied,  // no permission
    NoNode,  // the system lists the reader, but there is no node to open
    Refused, // another reason
};

struct SystemReader {
    std::string node; // such as /dev/hidraw0
    Access access = Access::Open;
    ReaderId id = usualReaderId();
};

// The readers that the system lists, in the order of the library's scan. Empty on platforms that
// tell no more than the library does. One file per platform.
std::vector<SystemReader> systemReaders();

// Why no reader is in the table.
Failure explainNoReader(const std::vector<SystemReader>& readers);

// A warning for each reader that stands in the way of a complete table.
std::vector<std::string> warningsAbout(const std::vector<SystemReader>& readers);

} // namespace zel::cli
