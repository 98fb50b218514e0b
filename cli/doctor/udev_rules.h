// SPDX-License-Identifier: MIT
// The udev rules that are about readers, and whether they let a user in.
#pragma once

#include "cli/device/reader_ids.h"
#include "cli/doctor/machine.h"

#include <string>
#include <vector>

namespace zel::cli {

struct UdevRule {
    std::string place; // "FILE:LINE"
    std::string fault; // why it lets nobody in; empty: it does
    bool isForSeats;   // by uaccess, and so for who sits at the machine
};

// Those on access that are about one of these readers, or name a product of their maker that there
// isn't; in the order in which udev goes through the files: by name, and a file hides those of its
// name in the folders behind.
std::vector<UdevRule> rulesAboutReaders(const Machine& machine, const std::vector<ReaderId>& ids);

} // namespace zel::cli
