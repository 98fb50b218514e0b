// SPDX-License-Identifier: MIT
// Files that operations read and write, in the test's own folder.
#pragma once

#include "tests/support/crc32.h"
#include "tests/support/files.h"

#include <filesystem>
#include <string>

namespace zel::test::steps {

inline void removeFile(const std::string& name) { std::filesystem::remove(name); }

// A file of one key blob of kind 5, number 6 and five bytes; the result is its name.
inline const char* iniFile() {
    const std::string text = "[Blob1]\r\nhdr=5 6 5 0\r\ndata=51 52 53 54 55\r\n";
    writeText("keys.ini", text + "[EOF]\r\niEndOfIniFile=" + crcDigits(text) + "\r\n");
    return "keys.ini";
}

} // namespace zel::test::steps
