// SPDX-License-Identifier: MIT
// The two alphabets of the tracks and their delimiters.
#include "sim/band/tracks.h"

#include <bit>

namespace zel::sim {

namespace {

// A start sentinel, an end sentinel, a separator; the others lie from `first` on.
struct Alphabet {
    char first;
    unsigned bits;
    std::string_view delimiters;
    std::array<std::uint8_t, 3> codes;
};

constexpr Alphabet kSevenBit = {' ', 6, "%?^", {0x15, 0x5F, 0x3E}};
constexpr Alphabet kFiveBit = {'0', 4, ";?=", {0x0B, 0x0F, 0x0D}};

unsigned withOddParity(unsigned place, unsigned bits) {
    return std::popcount(place) % 2 == 0 ? place | 1U << bits : place;
}

void append(TrackCodes& codes, const Alphabet& alphabet, char character) {
    const std::size_t delimiter = alphabet.delimiters.find(character);
    const unsigned place = static_cast<unsigned>(character - alphabet.first);
    if (delimiter != std::string_view::npos)
        codes.push_back(alphabet.codes[delimiter]);
    else if (place < 1U << alphabet.bits)
        codes.push_back(static_cast<std::uint8_t>(withOddParity(place, alphabet.bits)));
}

} // namespace

TrackCodes bandTrack(int number, std::string_view text) {
    TrackCodes codes;
    for (const char character : text)
        append(codes, number == 1 ? kSevenBit : kFiveBit, character);
    return codes;
}

BandCard bandCard(std::string_view first, std::string_view second, std::string_view third) {
    return {{bandTrack(1, first), bandTrack(2, second), bandTrack(3, third)}};
}

} // namespace zel::sim
