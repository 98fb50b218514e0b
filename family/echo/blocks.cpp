// SPDX-License-Identifier: MIT
// The layout of the blocks, byte by byte.
#include "family/echo/blocks.h"

#include "base/bytes.h"

#include <algorithm>
#include <span>

namespace zel::echo {

namespace {

constexpr double kUnitsPerInch = 3.472222;
constexpr int kPingUnit = 4; // ms
constexpr int kKeyUnit = 64; // ms
constexpr int kLedBits = 0x7F;
constexpr int kNibble = 0x0F;
constexpr std::size_t kBytes = 8;
constexpr std::size_t kSecondHalf = 8; // first word of a record of keys in its second block

// The nearest whole number; halves go up.
int rounded(double value) {
    const double shifted = value + 0.5;
    const int whole = static_cast<int>(shifted);
    return shifted < whole ? whole - 1 : whole;
}

// The records hold words one behind the other.
template <class Record> std::span<std::int16_t> wordsOf(Record& record) {
    return {reinterpret_cast<std::int16_t*>(&record), sizeof record / sizeof(std::int16_t)};
}
template <class Record> std::span<const std::int16_t> wordsOf(const Record& record) {
    return {reinterpret_cast<const std::int16_t*>(&record), sizeof record / sizeof(std::int16_t)};
}

void takeBytes(std::span<std::int16_t> words, const Payload& bytes) {
    std::copy(bytes.begin(), bytes.end(), words.begin());
}

Payload bytesOf(std::span<const std::int16_t> words) {
    Payload bytes;
    std::transform(words.begin(), words.begin() + kBytes, bytes.begin(), lowByte<std::int16_t>);
    return bytes;
}

void decodeSonar(sSonarParms& record, const Payload& bytes) {
    takeBytes(wordsOf(record), bytes);
    record.LEDFlagsS = bytes[0] & kLedBits;
    record.PingRateS = static_cast<std::int16_t>(bytes[1] * kPingUnit);
    record.MinDistS = static_cast<std::int16_t>(inchesOf(bytes[3]));
    record.MaxDistS = static_cast<std::int16_t>(inchesOf(bytes[4]));
}

Payload encodeSonar(const sSonarParms& record) {
    Payload bytes = bytesOf(wordsOf(record));
    bytes[0] &= kLedBits;
    bytes[1] = lowByte(record.PingRateS / kPingUnit);
    bytes[3] = lowByte(unitsOf(record.MinDistS));
    bytes[4] = lowByte(unitsOf(record.MaxDistS));
    return bytes;
}

// A count, a time and six modifiers; then flags, a byte and six codes.
void decodeKeys(std::span<std::int16_t> words, bool isSecond, const Payload& bytes) {
    takeBytes(words.subspan(isSecond ? kSecondHalf : 0, kBytes), bytes);
    if (isSecond)
        return;
    words[0] = bytes[0] & kNibble;
    words[1] = static_cast<std::int16_t>(bytes[1] * kKeyUnit);
}

Payload encodeKeys(std::span<const std::int16_t> words, bool isSecond) {
    Payload bytes = bytesOf(words.subspan(isSecond ? kSecondHalf : 0, kBytes));
    bytes[0] &= kNibble; // of the count, or of the flags
    if (!isSecond)
        bytes[1] = lowByte(words[1] / kKeyUnit);
    return bytes;
}

Payload encodeWalkUp(const sWalkUpParms& record, bool isSecond) {
    Payload bytes = encodeKeys(wordsOf(record), isSecond);
    if (isSecond)
        bytes[1] = lowByte(gsWalkUpParms2.Reserved2WU);
    return bytes;
}

Payload encodeIdle(const sIdleParms& record) {
    Payload bytes = bytesOf(wordsOf(record));
    bytes[0] = lowByte(gsIdleParms2.Reserved1I & kNibble);
    return bytes;
}

} // namespace

int inchesOf(int units) { return rounded(units / kUnitsPerInch); }

int unitsOf(int inches) { return rounded(inches * kUnitsPerInch); }

void decodeBlock(tsEcho& settings, int block, const Payload& bytes) {
    switch (block) {
    case 0:
        return decodeSonar(settings.sSonarParms, bytes);
    case 1:
    case 2:
        return decodeKeys(wordsOf(settings.sWalkAwayParms), block == 2, bytes);
    case 3:
    case 4:
        return decodeKeys(wordsOf(settings.sWalkUpParms), block == 4, bytes);
    default:
        return takeBytes(wordsOf(settings.sIdleParms), bytes);
    }
}

Payload encodeBlock(const tsEcho& settings, int block) {
    switch (block) {
    case 0:
        return encodeSonar(settings.sSonarParms);
    case 1:
    case 2:
        return encodeKeys(wordsOf(settings.sWalkAwayParms), block == 2);
    case 3:
    case 4:
        return encodeWalkUp(settings.sWalkUpParms, block == 4);
    default:
        return encodeIdle(settings.sIdleParms);
    }
}

} // namespace zel::echo
