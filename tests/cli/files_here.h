// SPDX-License-Identifier: MIT
// The files of the working directory and what they hold.
#pragma once

#include "tests/support/files.h"

#include <filesystem>
#include <map>
#include <string>

namespace zel::test {

using Files = std::map<std::string, std::string>;

inline Files filesHere() {
    Files files;
    for (const auto& entry : std::filesystem::directory_iterator("."))
        files[entry.path().filename()] = textOf(entry.path());
    return files;
}

} // namespace zel::test
