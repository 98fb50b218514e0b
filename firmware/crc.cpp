// SPDX-License-Identifier: MIT
// The checksum itself, the text that it is computed of, and the choice by kind.
#include "firmware/crc.h"

#include "firmware/piece_reader.h"
#include "firmware/trailer.h"

#include <array>
#include <cstdint>

using namespace zel::firmware;

namespace {

constexpr unsigned long kPolynomial = 0xEDB88320;
constexpr long kNoTable = 23;

// Long texts go through five lanes side by side, a word of each in turn.
constexpr std::size_t kWord = 8;
constexpr std::size_t kLanes = 5;
constexpr std::size_t kRound = kWord * kLanes;

constexpr std::size_t kLongestChunk = 4095;

// Compilers make one load of it.
std::uint64_t wordAt(const char* at) {
    std::uint64_t word = 0;
    for (unsigned i = 0; i < kWord; ++i)
        word |= std::uint64_t{static_cast<unsigned char>(at[i])} << 8 * i;
    return word;
}

} // namespace

struct CRC::Tables {
    std::array<std::uint64_t, 256> byte = {};
    // For the byte k of a word: what it becomes once the lane's next word is reached.
    std::array<std::array<std::uint32_t, 256>, kWord> ahead = {};

    constexpr std::uint64_t step(std::uint64_t value, unsigned char folded) const {
        return value >> 8 ^ byte[(value ^ folded) & 0xFF];
    }
    std::uint64_t steps(std::uint64_t value, const char* at, std::size_t count) const {
        for (const char* const end = at + count; at != end; ++at)
            value = step(value, static_cast<unsigned char>(*at));
        return value;
    }
    std::uint32_t jump(std::uint32_t lane, const char* at) const {
        const std::uint64_t word = lane ^ wordAt(at);
        return ahead[0][word & 0xFF] ^ ahead[1][word >> 8 & 0xFF] ^ ahead[2][word >> 16 & 0xFF] ^
               ahead[3][word >> 24 & 0xFF] ^ ahead[4][word >> 32 & 0xFF] ^
               ahead[5][word >> 40 & 0xFF] ^ ahead[6][word >> 48 & 0xFF] ^ ahead[7][word >> 56];
    }
    constexpr void buildByte(std::size_t index);
    constexpr void buildAhead(std::size_t index);
    static constexpr Tables built();
    const char* fold(std::uint64_t& value, const char* at, const char* end) const;
};

constexpr void CRC::Tables::buildByte(std::size_t index) {
    std::uint64_t value = index;
    for (int bit = 0; bit < 8; ++bit)
        value = (value & 1) != 0 ? value >> 1 ^ kPolynomial : value >> 1;
    byte[index] = value;
}

constexpr void CRC::Tables::buildAhead(std::size_t index) {
    std::uint64_t value = byte[index];
    for (std::size_t zeros = 0; zeros < kRound - kWord; ++zeros)
        value = step(value, 0);
    for (std::size_t k = kWord; k-- > 0; value = step(value, 0))
        ahead[k][index] = static_cast<std::uint32_t>(value);
}

// Folds in whole rounds and returns where the rest begins. The last round joins the lanes.
const char* CRC::Tables::fold(std::uint64_t& value, const char* at, const char* end) const {
    const auto rest = [&] { return static_cast<std::size_t>(end - at); };
    if (rest() < kRound)
        return at;
    std::uint32_t a = static_cast<std::uint32_t>(value), b = 0, c = 0, d = 0, e = 0;
    for (; rest() >= 2 * kRound; at += kRound) {
        a = jump(a, at);
        b = jump(b, at + kWord);
        c = jump(c, at + 2 * kWord);
        d = jump(d, at + 3 * kWord);
        e = jump(e, at + 4 * kWord);
    }
    value = 0;
    for (const std::uint32_t lane : {a, b, c, d, e}) {
        value = steps(value ^ lane, at, kWord);
        at += kWord;
    }
    return at;
}

constexpr CRC::Tables CRC::Tables::built() {
    Tables tables;
    for (std::size_t index = 0; index < tables.byte.size(); ++index)
        tables.buildByte(index);
    for (std::size_t index = 0; index < tables.byte.size(); ++index)
        tables.buildAhead(index);
    return tables;
}

CRC::~CRC() { Free(); }

// The compiler builds them: building them anew took longer than the checksum of a short file.
void CRC::Init() {
    static constexpr Tables kTables = Tables::built();
    tables_ = &kTables;
}

void CRC::Free() { tables_ = nullptr; }

void CRC::fold(std::string_view part, std::uint64_t& value) const {
    if (!tables_)
        return;
    const char* const end = part.data() + part.size();
    const char* const rest = tables_->fold(value, part.data(), end);
    value = tables_->steps(value, rest, static_cast<std::size_t>(end - rest));
}

long CRC::checksumOf(std::string_view text, unsigned long& result) const {
    std::uint64_t value = kStart;
    fold(text, value);
    result = ~value;
    return tables_ ? 0 : kNoTable;
}

// NOLINTNEXTLINE(performance-unnecessary-value-param): the callers give their text away.
long CRC::FileCrc32Win32(std::string text, unsigned long& result) const {
    return checksumOf(text, result);
}

void CRC::CalcCrc32(unsigned char byte, unsigned long& value) const {
    if (tables_)
        value = tables_->step(value, byte);
}

std::string CRC::getDataFromFile(const char* name) {
    std::string text;
    const File file = openSource(name);
    if (!file)
        return text;
    PieceReader chunks(file.get(), kLongestChunk);
    while (chunks.next())
        text += chunks.piece();
    return text;
}

bool CRC::checkCRC(const char* name, int kind) { return holds(checkTrailer(*this, name, kind)); }
