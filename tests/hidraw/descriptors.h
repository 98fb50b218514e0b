// SPDX-License-Identifier: MIT
// What this process holds open of a test bed.
#pragma once

#include <filesystem>
#include <map>
#include <string>

namespace zel::test {

// Open descriptors of files and folders below `root`, and their paths from there: "/dev/hidraw0".
// The library opens nothing else; the rest is the test's own and that of umockdev's thread, which
// opens and closes when it comes to it.
std::map<int, std::string> openDescriptors(const std::filesystem::path& root);

bool isClosedOnExec(int descriptor);

} // namespace zel::test
