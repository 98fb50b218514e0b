// SPDX-License-Identifier: MIT
// The readers of the three trailers. The first byte of an input is the kind as a digit; the file is
// what follows.
#include "frame/zelTagAPI.h"
#include "frame/zelTagFiles.h"
#include "fuzz/target.h"

#include <cstring>
#include <iterator>

using namespace zel::fuzz;

namespace {

bool isText(const char (&digits)[9]) { return std::memchr(digits, '\0', sizeof digits) != nullptr; }

void check(const char* path, int kind) {
    zelFileCheck found;
    std::memset(&found, 0xAA, sizeof found);
    const int holds = zelTagAPI_checkFile(path, kind, &found);
    require(holds == (found.fault == ZELTAGAPI_FAULT_NONE));
    require(found.fault >= ZELTAGAPI_FAULT_NONE && found.fault <= ZELTAGAPI_FAULT_MISSING);
    require(found.line >= 0 && isText(found.told) && isText(found.computed));
    require(!holds || std::strcmp(found.told, found.computed) == 0);
    require(zelTagAPI_checkFile(path, kind, nullptr) == holds);
    if (kind == ZELTAGAPI_FILE_FIRMWARE)
        require(CheckTamperedFirmwareFile(path) == holds);
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0)
        return 0;
    const InputFile file(textOf(data + 1, size - 1));
    check(file.path(), data[0] - '0');
    return 0;
}
