// SPDX-License-Identifier: MIT
// A reader's configuration blocks. An input is the features and the transport, then blocks: the
// number of each and its bytes. What the library sends of a block reads the same.
#include "family/tag/blocks.h"
#include "fuzz/target.h"

#include <cstring>

using namespace zel::fuzz;
using namespace zel::tag;

namespace {

constexpr int kMost = 5; // blocks of an input

// What a reader sent may say a thing in two ways; what the library sends says it in one. Block 3 is
// left out: it adds to the words of block 0.
void requireSameAgain(tsTagCfg& config, int block, bool isStream) {
    const Payload sent = encodeBlock(config, block);
    if (block == 3)
        return;
    decodeBlock(config, block, sent, isStream);
    require(encodeBlock(config, block) == sent);
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static tsTagCfg config;
    Input input(data, size);
    std::memset(&config, 0, sizeof config);
    config.sTimeParms.ExFeatures01 = input.byte();
    const bool isStream = input.byte() % 2 != 0;
    int last = 0;
    for (int i = 0; i < kMost && !input.isEmpty(); ++i) {
        Payload bytes = {};
        last = input.byte() % kBlocks;
        input.fill(bytes);
        decodeBlock(config, last, bytes, isStream);
    }
    requireSameAgain(config, last, isStream);
    return 0;
}
