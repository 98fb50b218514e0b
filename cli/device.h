// SPDX-License-Identifier: MIT
// A device of the library's table as the user sees it.
#pragma once

#include "cli/output.h"

#include <string>

namespace zel::cli {

struct Device {
    int index = 0;
    std::string name;
};

Device activeDevice();

// The active device's product, such as "zelTag".
std::string activeProduct();

// {"index":...,"name":...}
Json toJson(const Device& device);

} // namespace zel::cli
