// SPDX-License-Identifier: MIT
// The trailer of an INI file of key blobs.
#include "fuzz/support/trailer_check.h"

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    return zel::fuzz::checkTrailerOf(ZELTAGAPI_FILE_KEYS, data, size);
}
