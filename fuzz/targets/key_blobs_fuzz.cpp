// SPDX-License-Identifier: MIT
// Key blobs, written to and read back from a reader that answers anything. An input is which of the
// two, the count of data bytes, then the reader's answers.
#include "firmware/key_blobs.h"
#include "fuzz/support/any_reader.h"

#include <cstring>

using namespace zel::firmware;
using namespace zel::fuzz;

namespace {

constexpr unsigned char kCanary = 0x5A;
constexpr int kRoom = 256; // of the data, rounded up to whole chunks

int writeBlob(std::uint8_t length) {
    unsigned char blob[kBlobHeaderSize + kRoom] = {0x10, 7, length};
    return writeSecure().WriteSecureData(blob, kBlobHeaderSize + length);
}

int readBlob(std::uint8_t length) {
    const unsigned char header[kBlobHeaderSize] = {0x10, 7, length};
    unsigned char output[kRoom + 1];
    std::memset(output, kCanary, sizeof output);
    const int result = readSecure().readSecureData(header, output);
    for (int i = (length + 3) / 4 * 4; i <= kRoom; ++i)
        require(output[i] == kCanary);
    return result;
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Input input(data, size);
    const bool writes = input.byte() % 2 != 0;
    const std::uint8_t length = input.byte();
    plugAnyReader(1, input);
    const int result = writes ? writeBlob(length) : readBlob(length);
    require(result == 0 || result == 1);
    return 0;
}
