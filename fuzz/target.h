// SPDX-License-Identifier: MIT
// What a fuzz target stands on: its input, byte by byte or as text, and facts that have to hold.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <span>
#include <string_view>

namespace zel::fuzz {

// Ends the process where a fact doesn't hold.
inline void require(bool holds) {
    if (!holds)
        std::abort();
}

// The bytes of an input, taken from its front. Behind its end there are zeros.
class Input {
public:
    Input(const std::uint8_t* data, std::size_t size) : rest_(data, size) {}

    std::uint8_t byte() {
        std::uint8_t taken = 0;
        fill({&taken, 1});
        return taken;
    }

    // A number of two bytes, the low one first.
    std::uint16_t word() {
        const std::uint8_t low = byte();
        return static_cast<std::uint16_t>(byte() << 8 | low);
    }

    // Fills an area as far as there are bytes. How many there were.
    std::size_t fill(std::span<std::uint8_t> area) {
        const std::size_t count = std::min(area.size(), rest_.size());
        std::copy_n(rest_.begin(), count, area.begin());
        rest_ = rest_.subspan(count);
        return count;
    }

    // Text up to a mark, or up to the end.
    std::string_view textUpTo(char mark) {
        const std::string_view all = text();
        const std::string_view taken = all.substr(0, all.find(mark));
        rest_ = rest_.subspan(std::min(taken.size() + 1, all.size()));
        return taken;
    }

    bool isEmpty() const { return rest_.empty(); }
    std::span<const std::uint8_t> bytes() const { return rest_; }
    std::string_view text() const {
        return {reinterpret_cast<const char*>(rest_.data()), rest_.size()};
    }

private:
    std::span<const std::uint8_t> rest_;
};

// Set where a corpus runs alone: each input goes each way then.
inline bool goesEveryWay = false;

// Whether an input goes a long way too: one of so many does, by its bytes.
inline bool isOneOf(unsigned many, std::string_view text) {
    unsigned sum = 0;
    for (const char character : text)
        sum = sum * 31 + static_cast<unsigned char>(character);
    return goesEveryWay || sum % many == 0;
}

} // namespace zel::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);
