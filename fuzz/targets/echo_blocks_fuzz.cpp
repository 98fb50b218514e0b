// SPDX-License-Identifier: MIT
// A sensor's six blocks of settings; those that come back read the same.
#include "family/echo/blocks.h"
#include "fuzz/target.h"

#include <cstring>

using namespace zel::fuzz;
using namespace zel::echo;

namespace {

void requireInches(int units) {
    const int inches = inchesOf(units);
    require(inches >= 0 && inches <= 74 && inchesOf(unitsOf(inches)) == inches);
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static tsEcho settings;
    std::memset(&settings, 0, sizeof settings);
    Input input(data, size);
    while (!input.isEmpty()) {
        const int block = input.byte() % kBlocks;
        Payload bytes = {};
        input.fill(bytes);
        decodeBlock(settings, block, bytes);
        const Payload sent = encodeBlock(settings, block);
        decodeBlock(settings, block, sent);
        require(encodeBlock(settings, block) == sent);
        requireInches(bytes[3]);
        require(settings.bEchoHalt == 0 && settings.bDirtyIdle == 0 && settings.reserved[0] == 0);
    }
    return 0;
}
