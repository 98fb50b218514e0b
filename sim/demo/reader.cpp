// SPDX-License-Identifier: MIT
// The demonstration reader and its cards.
#include "sim/demo/reader.h"

#include "sim/tag/reader.h"
#include "sim/wire/clock.h"

#include <algorithm>
#include <iterator>
#include <optional>
#include <string_view>

namespace zel::sim {

namespace {

constexpr int kFirmwareLines = 40;       // of examples/firmware.hex
constexpr std::uint64_t kTurn = 3000;    // ms from one card to the next
constexpr std::uint64_t kInField = 2000; // ms of a turn with the card in the field

// A text stands for what a card holds; shorter than the data it is filled up with zeros.
constexpr Card withData(Card card, std::string_view text) {
    std::copy(text.begin(), text.end(), card.data.begin());
    return card;
}

// Invented numbers.
constexpr Card kCards[] = {
    withData(card26(26, 3512), "Card 26-3512, staff, ground floor"),
    withData(card26(77, 1001), "Card 77-1001, visitor"),
    withData(cardOf(0x0123456789, 37), "Card 4886718345, staff, all floors")};

constexpr QueuedId kQueued = {
    .id = card26(77, 1001).id, .age = 42, .byte2 = 1, .word3 = 26, .byte7 = 3};

TagReader::Options demoOptions() {
    TagReader::Options options;
    options.volume = std::uint8_t{2};
    options.partNumber = "ZT7";
    options.firmwareVersion = "3.2";
    options.fileName = "ZT7_0302";
    constexpr char kSerialNumber[] = "ZT7-000-007";
    std::copy(std::begin(kSerialNumber), std::end(kSerialNumber), options.serialNumber.begin());
    return options;
}

} // namespace

Card demoCardAt(std::uint64_t elapsed) {
    if (elapsed % kTurn >= kInField)
        return {};
    return kCards[elapsed / kTurn % std::size(kCards)];
}

std::shared_ptr<TagReader> demoReader() {
    auto reader = std::make_shared<TagReader>(demoOptions());
    reader->bootLoader().options().lines = kFirmwareLines;
    reader->settings().luid = 7;
    reader->queue(kQueued);
    reader->follow([start = std::optional<std::uint64_t>()]() mutable {
        const std::uint64_t time = microseconds() / 1000;
        if (!start)
            start = time;
        return demoCardAt(time - *start);
    });
    return reader;
}

} // namespace zel::sim
