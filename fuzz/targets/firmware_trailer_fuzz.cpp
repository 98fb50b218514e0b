// SPDX-License-Identifier: MIT
// The trailer of a firmware file.
#include "fuzz/support/trailer_check.h"

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    return zel::fuzz::checkTrailerOf(ZELTAGAPI_FILE_FIRMWARE, data, size);
}
