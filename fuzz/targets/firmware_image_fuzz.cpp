// SPDX-License-Identifier: MIT
// The body of a firmware file: which processor it is for, its lines, and the bytes of each.
#include "firmware/image.h"
#include "fuzz/support/memory_stream.h"
#include "fuzz/target.h"

#include <array>

using namespace zel::fuzz;

namespace {

constexpr std::size_t kLongest = 43; // ':' and the digits of 21 bytes
constexpr char kCanary = 0x5A;

// As a flash takes a line apart: the bytes land on the digits.
void requireBytes(Utilities& image, const std::string& line) {
    std::array<char, 64> buffer;
    buffer.fill(kCanary);
    const std::size_t size = line.copy(buffer.data(), kLongest);
    buffer[size] = '\0';
    const unsigned count =
        image.encryptData(buffer.data(), reinterpret_cast<unsigned char*>(buffer.data()));
    require(2 * count < std::max<std::size_t>(size, 1));
    require(buffer[size] == '\0' && buffer[size + 1] == kCanary);
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static MemoryStream file;
    const std::string_view text = Input(data, size).text();
    const int micro = Utilities::microIn(file.of(text));
    Utilities image;
    image.takeLines(file.of(text));
    require(image.lines().empty() || micro != -1 || text.find('M') != text.npos);
    for (const std::string& line : image.lines()) {
        require(line.front() == ':');
        requireBytes(image, line);
    }
    Utilities none;
    require(!none.openInputFile(nullptr) && Utilities::microIn(file.of({})) == -1);
    return 0;
}
