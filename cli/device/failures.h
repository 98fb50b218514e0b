// SPDX-License-Identifier: MIT
// Failures of the active device that several commands report.
#pragma once

#include "cli/command/failure.h"

#include <string>

namespace zel::cli {

// What to do about a device that doesn't answer any more.
constexpr char kMayBeUnplugged[] =
    "it may have been unplugged: check its cable, then try `zeltag list`";

// "WHAT NAME failed (library error 0x...)"
Failure deviceFailed(const std::string& what, const std::string& hint);

// "NAME is a PRODUCT: REASON"
Failure wrongProduct(const std::string& reason,
                     const std::string& hint = "`zeltag list` shows the products");

} // namespace zel::cli
