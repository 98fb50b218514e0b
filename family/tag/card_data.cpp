// SPDX-License-Identifier: MIT
// Fetches the block of data that a reader read from the card, and keeps a value for an application.
#include "family/tag/card_data.h"

#include "family/tag/error_words.h"
#include "family/tag/feature_report.h"
#include "family/tag/stream.h"

#include <algorithm>
#include <iterator>

using namespace zel;
using tag::Payload;

namespace {

constexpr std::uint8_t kActiveCard = 0x01;
constexpr std::uint8_t kBlocks = 5;
constexpr int kBufferSize = sizeof activeCardDataBuf;

bool readBlock(std::uint8_t block) {
    Payload data;
    if (!tag::query(tag::command(tag::Opcode::CardData, kActiveCard, block), data))
        return false;
    std::copy(data.begin(), data.end(), activeCardDataBuf + block * data.size());
    return true;
}

} // namespace

// The bytes behind the five blocks keep what they held. A stream has no such data.
int zeltag_getActiveCardData() {
    tag::clearError();
    if (tag::stream::isActive()) {
        std::fill(std::begin(activeCardDataBuf), std::end(activeCardDataBuf), std::uint8_t{0});
        return 0;
    }
    for (std::uint8_t block = 0; block < kBlocks; ++block)
        if (!readBlock(block))
            return tag::fail(ZELTAGAPI_ERR_SERVICE);
    return 1;
}

int zeltag_getActiveCardData_byte(short index) {
    return index >= 0 && index < kBufferSize ? activeCardDataBuf[index] : 0;
}

int zeltag_setSourceEvent(std::uintptr_t value) {
    activeRecord().lSourceEvent = value;
    return 1;
}
