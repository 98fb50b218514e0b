// SPDX-License-Identifier: MIT
// A reader's four configuration blocks of eight bytes, to and from the words of a configuration.
#pragma once

#include "base/bytes.h"
#include "family/tag/feature_report.h"
#include "frame/zelTagState.h"

#include <array>
#include <cstdint>

namespace zel::tag {

constexpr int kBlocks = 4;

// Bits of ExFeatures01.
constexpr int kLongParity = 0x80;       // parity counts up to 142 instead of 15
constexpr int kExtendedFeatures = 0x40; // iExOutputFormat, key values

// The words of the lead characters and of the trail characters, which share three places.
constexpr int kCharacters = 3;
using CharacterWords = std::array<std::int16_t*, kCharacters>;
CharacterWords leadsOf(tsTagCfg& config);
CharacterWords trailsOf(tsTagCfg& config);

// The command that asks for a block, or announces its data.
constexpr Payload blockCommand(int block) {
    return {lowByte(static_cast<int>(Opcode::Block0) + block)};
}

// Nothing of the configuration, nor of the device's LUID, waits to be written.
void clearDirty(tsDevDat& record, tsTagCfg& config);

// Whether the reader told a feature in the block 1 that a configuration holds.
bool hasFeature(const tsTagCfg& config, int feature);

// Takes a block that the reader sent into the configuration. Blocks come in the order 0 to 3: block
// 3 adds to words of block 0 and looks at a word of block 1. On a byte stream bNotBootDev reads as
// 0.
void decodeBlock(tsTagCfg& config, int block, const Payload& bytes, bool isStream);

// Makes a block to send. Block 0 also moves what its parity counts exceed 15 by into ExtBlock and
// marks block 3 when that changed.
Payload encodeBlock(tsTagCfg& config, int block);

} // namespace zel::tag
