// SPDX-License-Identifier: MIT
// Proves the table of words against the records and the blocks, and makes the exported tables of
// it.
#include "family/tag/words.h"

#include "frame/state/exported.h"

namespace zel::tag {

namespace {

constexpr bool standsInOrder() {
    for (std::size_t i = 0; i < kWords.size(); ++i)
        if (kWords[i].index != i % 8 || static_cast<std::size_t>(kWords[i].record) != i / 8)
            return false;
    return kWords.size() == 80;
}

// No bit of a block is written by two words.
constexpr bool namesEachBitOnce() {
    std::uint8_t used[4][8] = {};
    for (const Word& word : kWords) {
        if (word.place.block < 0 || word.place.isMirror)
            continue;
        const unsigned mask = ((1U << word.place.bits) - 1U) << word.place.bit;
        std::uint8_t& byte = used[word.place.block][word.place.byte];
        if (mask > 0xFF || (byte & mask) != 0)
            return false;
        byte = static_cast<std::uint8_t>(byte | mask);
    }
    return true;
}

static_assert(standsInOrder(), "eight words a record, in the order of the records");
static_assert(namesEachBitOnce(), "two words share a bit of a block");

constexpr tsNamePair pairOf(Record record, std::size_t index) {
    const Word& word = wordsOf(record)[index];
    return {word.label, word.description};
}

} // namespace

} // namespace zel::tag

using zel::tag::pairOf;
using zel::tag::Record;

#define ZEL_WORD(...)
#define ZEL_RECORD(record, table, calls)                                                           \
    ZEL_EXPORTED(table,                                                                            \
                 {pairOf(Record::record, 0), pairOf(Record::record, 1), pairOf(Record::record, 2), \
                  pairOf(Record::record, 3), pairOf(Record::record, 4), pairOf(Record::record, 5), \
                  pairOf(Record::record, 6), pairOf(Record::record, 7)})
#include "frame/records.def"
#undef ZEL_RECORD
#undef ZEL_WORD

ZEL_EXPORTED(FldDefStr, {{"ucUsageByte0", ""},
                         {"ucUsageByte1", ""},
                         {"ucStartBitPos", ""},
                         {"ucBitLength", ""}})
ZEL_EXPORTED(SepDefStr, {{"ucUsageByte0", ""}, {"ucDataOfst", ""}})
ZEL_EXPORTED(AZERTYShiftLock, {{"AZERTYShiftlock", "0= off, 1 = on"}})
ZEL_EXPORTED(ExtendedPrecisionMath, {{"ExtendedPrecisionMath", "0= off, 1 = on"}})
