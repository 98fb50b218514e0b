// SPDX-License-Identifier: MIT
// Key blobs, written to and read back from a reader that answers anything. An input is which of the
// two, the count of data bytes, then the reader's answers. As a third way it is the blobs of an INI
// file up to a zero byte, then the answers.
#include "firmware/key_blobs.h"
#include "fuzz/support/any_reader.h"
#include "fuzz/support/memory_file.h"

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

int loadFile(Input& input) {
    setInput(input.textUpTo('\0'));
    return writeSecure().loadIniConfiguration(kInputFile);
}

int run(int way, Input& input) {
    if (way == 2)
        return loadFile(input);
    const std::uint8_t length = input.byte();
    return way == 1 ? writeBlob(length) : readBlob(length);
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Input input(data, size);
    const int way = input.byte() % 3;
    plugAnyReader(1, input);
    const int result = run(way, input);
    require(result == 0 || result == 1);
    return 0;
}
