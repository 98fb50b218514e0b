// SPDX-License-Identifier: MIT
// The layout of the blocks is that of frame/records.def; here stand the bytes that several words
// share.
#include "family/tag/blocks.h"

#include "family/tag/words.h"

#include <algorithm>

namespace zel::tag {

namespace {

constexpr int kNibble = 15;
constexpr std::size_t kFirstCharacter = 5; // byte of block 2
constexpr int kOptionBit = 1 << 1;         // of bytes 5 and 6 of block 3
constexpr int kSevenBits = 127;
constexpr int kExtBytes = 7;

unsigned maskOf(const Place& place) { return (1U << place.bits) - 1U; }

// Whether a word of the block travels, in this form and on this reader.
bool travels(const tsTagCfg& config, const Word& word, int block) {
    if (word.place.block != block)
        return false;
    return block != 3 || hasFeature(config, kExtendedFeatures);
}

std::int16_t extract(const Word& word, const Payload& bytes) {
    const Place& place = word.place;
    const unsigned value = unsigned{bytes[place.byte]} >> place.bit & maskOf(place);
    return static_cast<std::int16_t>(value * place.unit);
}

// Numbers are divided towards zero and cut to their bits; any flag that isn't 0 counts as 1.
void insert(const tsTagCfg& config, const Word& word, Payload& bytes) {
    const Place& place = word.place;
    const int value = get(config, word);
    const int wire = word.kind == Kind::flag ? value != 0 : value / place.unit;
    bytes[place.byte] |= lowByte((static_cast<unsigned>(wire) & maskOf(place)) << place.bit);
}

void decodeCharacters(tsTagCfg& config, const Payload& bytes) {
    const CharacterWords leads = leadsOf(config);
    const CharacterWords trails = trailsOf(config);
    // Two bits of the block: 0 to 3. What the leads leave goes to the trails, whatever their count
    // says.
    const auto lead = static_cast<std::size_t>(config.sIDDispParms2.iLeadChrCnt);
    for (std::size_t i = 0; i < kCharacters; ++i) {
        *leads[i] = i < lead ? bytes[kFirstCharacter + i] : std::int16_t{0};
        const std::size_t at = lead + i;
        *trails[i] = at < kCharacters ? bytes[kFirstCharacter + at] : std::int16_t{0};
    }
}

// Leads have priority over trails when both don't fit.
void encodeCharacters(tsTagCfg& config, Payload& bytes) {
    int lead = config.sIDDispParms2.iLeadChrCnt;
    int trail = config.sIDDispParms3.iTrailChrCnt;
    if (lead + trail > kCharacters) {
        lead = std::min(lead, kCharacters);
        trail = kCharacters - lead;
    }
    bytes[4] = lowByte(lead + trail * 16);
    std::size_t at = kFirstCharacter;
    const auto put = [&](const CharacterWords& words, int count) {
        for (int i = 0; i < std::min(count, kCharacters) && at < bytes.size(); ++i)
            bytes[at++] = lowByte(*words[static_cast<std::size_t>(i)]);
    };
    put(leadsOf(config), lead);
    put(trailsOf(config), trail);
}

void decodeExtension(tsTagCfg& config, const Payload& bytes) {
    std::copy_n(bytes.begin(), kExtBytes, config.ExtBlock);
    sIDBitCnts& counts = config.sIDBitCnts;
    counts.iLeadParityBitCnt = static_cast<std::int16_t>(counts.iLeadParityBitCnt + bytes[0]);
    counts.iTrailParityBitCnt = static_cast<std::int16_t>(counts.iTrailParityBitCnt + bytes[1]);
    config.ExtendedPrecisionMath = (bytes[5] & kOptionBit) != 0;
    config.AZERTYShiftLock = (bytes[6] & kOptionBit) != 0;
}

std::uint8_t withOption(std::uint16_t word, std::uint32_t option) {
    return lowByte((word & ~kOptionBit) | (option != 0 ? kOptionBit : 0));
}

void encodeExtension(const tsTagCfg& config, Payload& bytes) {
    for (std::size_t i = 0; i < kExtBytes; ++i)
        bytes[i] = lowByte(config.ExtBlock[i]);
    bytes[5] = withOption(config.ExtBlock[5], config.ExtendedPrecisionMath);
    bytes[6] = withOption(config.ExtBlock[6], config.AZERTYShiftLock);
}

// The nibble of a parity count; the rest of it goes into `excess`.
int splitParity(int count, int& excess) {
    excess = count > kNibble ? count - kNibble : 0;
    return count > kNibble ? kNibble : count & kNibble;
}

void keepExcess(tsTagCfg& config, int word, int excess) {
    if (config.ExtBlock[word] == excess)
        return;
    config.ExtBlock[word] = static_cast<std::uint16_t>(excess);
    config.bDirtyExt = 1;
}

void encodeCounts(tsTagCfg& config, Payload& bytes) {
    int leadExcess = 0;
    int trailExcess = 0;
    const int lead = splitParity(config.sIDBitCnts.iLeadParityBitCnt, leadExcess);
    const int trail = splitParity(config.sIDBitCnts.iTrailParityBitCnt, trailExcess);
    keepExcess(config, 0, leadExcess);
    keepExcess(config, 1, trailExcess);
    bytes[2] = lowByte(lead | trail << 4);
    for (const std::size_t byte : {0U, 1U, 3U})
        bytes[byte] &= kSevenBits;
}

} // namespace

CharacterWords leadsOf(tsTagCfg& config) {
    sIDDispParms2& words = config.sIDDispParms2;
    return {&words.iLeadChr0, &words.iLeadChr1, &words.iLeadChr2};
}

CharacterWords trailsOf(tsTagCfg& config) {
    sIDDispParms3& words = config.sIDDispParms3;
    return {&words.iTrailChr0, &words.iTrailChr1, &words.iTrailChr2};
}

void clearDirty(tsDevDat& record, tsTagCfg& config) {
    config.bDirtyIDFrmt1 = config.bDirtyIDFrmt2 = config.bDirtyTime = 0;
    config.bDirtyExt = config.bDirtySepFld = 0;
    record.bLUIDDirty = 0;
}

bool hasFeature(const tsTagCfg& config, int feature) {
    return (config.sTimeParms.ExFeatures01 & feature) != 0;
}

void decodeBlock(tsTagCfg& config, int block, const Payload& bytes, bool isStream) {
    for (const Word& word : kWords)
        if (travels(config, word, block))
            set(config, word, extract(word, bytes));
    if (block == 2) {
        if (isStream)
            config.sCfgFlags3.bNotBootDev = 0;
        decodeCharacters(config, bytes);
        config.sLEDCtrl.bVolatile = 0;
        config.sBprRlyCtrl.bVolatile = 0;
    }
    if (block == 3)
        decodeExtension(config, bytes);
}

Payload encodeBlock(tsTagCfg& config, int block) {
    Payload bytes = {};
    if (block == 3)
        encodeExtension(config, bytes);
    for (const Word& word : kWords)
        if (travels(config, word, block) && !word.place.isMirror)
            insert(config, word, bytes);
    if (block == 0)
        encodeCounts(config, bytes);
    if (block == 2)
        encodeCharacters(config, bytes);
    return bytes;
}

} // namespace zel::tag
