// SPDX-License-Identifier: MIT
// The sections of an INI file of key blobs.
#include "firmware/ini_file.h"
#include "fuzz/support/memory_file.h"
#include "fuzz/target.h"

using namespace zel::firmware;
using namespace zel::fuzz;

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static std::vector<unsigned char> bytes;
    bytes.reserve(kMostIniBytes);
    const unsigned char* const place = bytes.data();
    setInput(Input(data, size).text());
    std::FILE* const file = std::fopen(kInputFile, "rb");
    IniLine line;
    while (readIniLine(file, line.data())) {
        bytes.clear();
        const int isBlob = parseBlob(file, line.data(), bytes);
        require(isBlob == 0 || isBlob == 1);
        require(bytes.size() <= kMostIniBytes && bytes.data() == place); // it never moves
        if (isBlob == 0)
            break;
    }
    std::fclose(file);
    return 0;
}
