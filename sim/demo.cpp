// SPDX-License-Identifier: MIT
// The demonstration bench's cards and reader.
#include "sim/demo.h"

#include "sim/clock.h"
#include "sim/tag_reader.h"
#include "sim/usb_bus.h"

#include <algorithm>
#include <iterator>
#include <memory>
#include <optional>

namespace zel::sim {

namespace {

constexpr std::uint64_t kTurn = 3000;    // ms from one card to the next
constexpr std::uint64_t kInField = 2000; // ms of a turn with the card in the field

// Invented numbers.
constexpr Card kCards[] = {card26(26, 3512), card26(77, 1001), cardOf(0x0123456789, 37)};

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

bool installDemo() {
    auto reader = std::make_shared<TagReader>(demoOptions());
    reader->settings().luid = 7;
    reader->follow([start = std::optional<std::uint64_t>()]() mutable {
        const std::uint64_t time = microseconds() / 1000;
        if (!start)
            start = time;
        return demoCardAt(time - *start);
    });
    usbBus().clear();
    usbBus().plug(std::move(reader), {TagReader::kVendor, TagReader::kProduct, "sim:zeltag-0"});
    return usbBus().install();
}

} // namespace zel::sim
