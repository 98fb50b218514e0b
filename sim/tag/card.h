// SPDX-License-Identifier: MIT
// A card in a simulated reader's field, and an identifier that the reader queued for its host.
#pragma once

#include <array>
#include <cstdint>

namespace zel::sim {

struct Card {
    std::array<std::uint8_t, 32> id = {}; // little-endian
    std::uint8_t bits = 0;                // 0: no card
    std::array<std::uint8_t, 40> data = {};
};

// The words about it mean nothing to the model; those without a name are called by their place in
// the page that tells them.
struct QueuedId {
    std::array<std::uint8_t, 32> id = {}; // little-endian
    std::uint16_t age = 0;
    std::uint8_t byte2 = 0;
    std::int16_t word3 = 0;
    std::uint8_t byte7 = 0;
};

// A card of up to 64 bits.
constexpr Card cardOf(std::uint64_t number, std::uint8_t bits) {
    Card card;
    card.bits = bits;
    for (unsigned byte = 0; byte < sizeof number; ++byte)
        card.id[byte] = static_cast<std::uint8_t>(number >> (8 * byte));
    return card;
}

// A card in the common 26-bit format: facility code and number between two parity bits.
constexpr Card card26(std::uint8_t facility, std::uint16_t number) {
    const std::uint32_t data = std::uint32_t{facility} << 16 | number;
    const auto ones = [](std::uint32_t bits) {
        unsigned count = 0;
        for (; bits != 0; bits &= bits - 1)
            ++count;
        return count;
    };
    const std::uint32_t even = ones(data >> 12) & 1;
    const std::uint32_t odd = ~ones(data & 0xFFF) & 1;
    return cardOf(even << 25 | data << 1 | odd, 26);
}

} // namespace zel::sim
