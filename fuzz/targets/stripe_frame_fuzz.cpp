// SPDX-License-Identifier: MIT
// Frames of a stripe reader: the text of a command up to a line end, then a reply.
#include "family/band/frame.h"
#include "fuzz/target.h"

#include <array>

using namespace zel::band;
using namespace zel::fuzz;

namespace {

constexpr std::uint8_t kCanary = 0x5A;

// A frame is its text, digits, a carriage return; no text passes 23 characters.
void requireFrame(std::string_view text) {
    Command command(text.substr(0, text.size() / 2));
    command.add(text.substr(text.size() / 2)).hex(static_cast<int>(text.size()));
    const Frame frame = frameOf(command.text());
    require(frame.back() == '\r');
    const std::string_view kept = std::string_view(command.text());
    require(kept.size() < kFrameSize &&
            std::string_view(frame.data(), frame.size()).starts_with(kept));
}

void requireBytes(const Frame& reply, const char* text) {
    std::array<std::uint8_t, kMostBytes + 1> bytes;
    bytes.fill(kCanary);
    HexToBytes(bytes.data(), text);
    require(bytes.back() == kCanary);
    for (std::size_t place = 0; place < kFrameSize; ++place)
        pairAt(reply, place);
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Input input(data, size);
    requireFrame(input.textUpTo('\n'));
    Frame reply = {};
    input.text().copy(reply.data(), reply.size() - 1);
    requireBytes(reply, reply.data());
    return 0;
}
