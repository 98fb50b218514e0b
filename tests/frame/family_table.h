// SPDX-License-Identifier: MIT
// A row for each exported call: what it yields for each kind of active device.
#pragma once

#include "frame/zelTagAPI.h"
#include "frame/zelTagState.h"

#include <cstdint>
#include <type_traits>

namespace zel::test {

// What a call yields in one case.
struct Expected {
    enum class Kind { Number, Refusal, Unsupported, UnsupportedByte };

    // A number that some operation worked out.
    constexpr Expected(std::int64_t number) : Expected(Kind::Number, number) {}
    constexpr Expected(Kind k, std::int64_t number) : kind(k), value(number) {}

    // Nothing served the call: no error word, no device traffic.
    constexpr bool isRefusal() const { return kind != Kind::Number; }

    constexpr std::int64_t with(std::int16_t unsupported) const {
        if (kind == Kind::UnsupportedByte)
            return static_cast<std::uint8_t>(unsupported);
        return kind == Kind::Unsupported ? unsupported : value;
    }

    Kind kind;
    std::int64_t value;
};

// Refusals: with the unsupported value, with its low byte, with a number of the call's own.
inline constexpr Expected kNo{Expected::Kind::Unsupported, 0};
inline constexpr Expected kNoByte{Expected::Kind::UnsupportedByte, 0};
constexpr Expected no(std::int64_t number) { return {Expected::Kind::Refusal, number}; }

struct Row {
    const char* call; // its text; the name stands before the first parenthesis
    std::int64_t (*run)();

    // With no active device, with a record of each product that reaches no device, with such a
    // record of an unknown product, and with a simulated multi-configuration reader.
    Expected none;
    Expected tag;
    Expected band;
    Expected echo;
    Expected other;
    Expected reader;
};

// The two first members of a row. A call without a result is told by what it leaves:
// ZEL_CALL(call, what it leaves).
#define ZEL_CALL(...) #__VA_ARGS__, []() -> std::int64_t { return asNumber((__VA_ARGS__)); }

template <class Result> std::int64_t asNumber(Result result) {
    if constexpr (std::is_pointer_v<Result>)
        return result != nullptr;
    else if constexpr (std::is_same_v<Result, unsigned>)
        return static_cast<std::int32_t>(result);
    else
        return static_cast<std::int64_t>(result);
}

// Arguments that a call may read and fill: a record of zeros, 512 bytes, 512 characters.
template <class Record> Record* zeros() {
    static Record record;
    record = {};
    return &record;
}

struct Bytes {
    unsigned char bytes[512];
};
struct Text {
    char text[512];
};
inline unsigned char* bytes() { return zeros<Bytes>()->bytes; }
inline char* text() { return zeros<Text>()->text; }

// Counts inside their ranges; zeros lie outside.
inline sIDBitCnts* bitCounts() {
    sIDBitCnts* const counts = zeros<sIDBitCnts>();
    counts->iIDBitCnt = 16;
    counts->iTotalBitCnt = 26;
    return counts;
}

// The clock at each call, in milliseconds: what Ping() answers when no device does.
inline constexpr std::int64_t kTick = 5'000'000;

// What the record holds in each case, also in that of no device, where nothing makes it active.
inline constexpr std::int64_t kErrorWord = 0x5A5A;
inline constexpr int kDid = 0x142;
inline constexpr int kBandVersion = 0x217;
inline constexpr int kLuid = 7;
inline constexpr int kVolume = 3;
inline constexpr int kRadio = 2;
inline constexpr int kCardType = 0x1204;
inline constexpr int kVersion = 0x07060400;

// What the buffers of the library hold.
inline constexpr int kIdByte = 0x70;
inline constexpr int kQueuedByte = 0x51;
inline constexpr int kCardByte = 0x61;
inline constexpr int kFilter = 0x2000;

} // namespace zel::test
