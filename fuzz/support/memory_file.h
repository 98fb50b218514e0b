// SPDX-License-Identifier: MIT
// Files in memory for code that opens them by name. The linker sends the library's fopen() here, so
// that neither a disk nor the kernel takes part.
#pragma once

#include <cstdio>
#include <string_view>

namespace zel::fuzz {

// The names are known by their address.
extern const char kInputFile[];  // holds what setInput() says
extern const char kOutputFile[]; // is written, and read back

// Until the next call a file of another name holds the text too; null: none.
void setInput(std::string_view text, const char* alias = nullptr);

// What kOutputFile holds.
std::string_view output();
void setOutput(std::string_view text);

} // namespace zel::fuzz
