// SPDX-License-Identifier: MIT
// Reads the card in the field and puts it into words.
#include "cli/card/reading.h"

#include "cli/device/failures.h"
#include "frame/zelTagAPI.h"

#include <fmt/format.h>
#include <nlohmann/json.hpp>

namespace zel::cli {

namespace {

constexpr int kShortReadBits = 64; // GetActiveID() delivers no more

Identifier readWith(int (*read)(unsigned char*, short)) {
    Identifier card;
    card.bits = read(card.bytes.data(), static_cast<short>(card.bytes.size()));
    return card;
}

} // namespace

// The long read starts anew: another card may lie in the field by then.
Reading readField(Width width) {
    Identifier card = readWith(width == Width::Whole ? GetActiveID32 : GetActiveID);
    card.isWhole = width == Width::Whole;
    if (card.bits > kShortReadBits && !card.isWhole)
        card = readWith(GetActiveID32);
    if (card.bits > 0)
        return {0, card};
    return {GetLastLibErr(), {}};
}

Failure readFailed(const Device& device, const Reading& reading) {
    return {ExitCode::Failed,
            fmt::format("reading {} failed (library error 0x{:X})", device.name,
                        static_cast<std::uint64_t>(reading.error)),
            kMayBeUnplugged, device.name};
}

std::string cardLine(const Identifier& card, const Device& device) {
    return fmt::format("card  {:>3} bits  0x{}  {}", card.bits, hexOf(card), device.name);
}

Json cardJson(const Identifier& card, const Device& device) {
    return {{"device", toJson(device)},
            {"bits", card.bits},
            {"id", hexOf(card)},
            {"decimal", decimalOf(card)},
            {"bytes", card.used()}};
}

} // namespace zel::cli
