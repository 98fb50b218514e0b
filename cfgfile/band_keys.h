// SPDX-License-Identifier: MIT
// The lines of a magnetic stripe reader's file: key, where the value stands, comment. Made from
// frame/band_settings.def.
#pragma once

#include "frame/zelTagState.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace zel::cfgfile {

// Such as "UserField[10].Keybyte[15]".
class BandName {
public:
    constexpr BandName() = default;
    constexpr explicit BandName(std::string_view text) { append(text); }

    constexpr BandName operator+(std::string_view text) const {
        BandName sum = *this;
        sum.append(text);
        return sum;
    }

    // With an index below 100.
    constexpr BandName operator[](std::size_t index) const {
        const char digits[] = {static_cast<char>('0' + index / 10),
                               static_cast<char>('0' + index % 10)};
        const std::size_t zeros = index < 10 ? 1 : 0;
        return *this + "[" + std::string_view(digits + zeros, 2 - zeros) + "]";
    }

    constexpr std::string_view view() const { return {text_, size_}; }
    const char* c_str() const { return text_; }

private:
    constexpr void append(std::string_view text) {
        for (const char character : text)
            text_[size_++] = character;
    }

    char text_[32] = {};
    std::uint8_t size_ = 0;
};

struct BandKey {
    enum class Kind : std::uint8_t { flag, byte, time, luid };

    BandName name;
    Kind kind;
    std::size_t offset; // in tsDevDat
    const char* comment;
};

// All of them, in the order of the file.
extern const std::array<BandKey, 309> kBandKeys;

struct BandValue {
    const BandKey* key = nullptr; // null: the line has no value
    long number = 0;
};

// Takes a line apart: a key, a colon at once, a number.
BandValue bandValueIn(const char* line);

// A key's number as the file tells it, and a number of the file put in its place.
long valueOf(const BandKey& key, const tsDevDat& record);
void store(const BandKey& key, tsDevDat& record, long value);

} // namespace zel::cfgfile
