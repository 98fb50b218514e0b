// SPDX-License-Identifier: MIT
// The search for readers among the hidraw nodes, with the places and the access test to be given.
#pragma once

#include "cli/device/diagnosis.h"

#include <string>
#include <vector>

namespace zel::cli {

struct HidrawPlaces {
    std::string classFolder = "/sys/class/hidraw";
    std::string nodeFolder = "/dev";
    int (*access)(const char* path, int mode); // as access() of POSIX
};

std::vector<SystemReader> findSystemReaders(const HidrawPlaces& places);

} // namespace zel::cli
