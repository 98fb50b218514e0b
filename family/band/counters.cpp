// SPDX-License-Identifier: MIT
// What the reader counts, and the state of its tracks.
#include "base/bytes.h"
#include "family/band/band.h"
#include "family/band/frame.h"

#include <cstdint>

using namespace zel;

namespace {

constexpr int kCounters = 4;
constexpr int kTracks = 7;
constexpr std::size_t kStateAt = 4;
constexpr char kStateMark = 'S';

std::int64_t longAt(const band::Bytes& bytes, std::size_t place) {
    std::uint32_t value = 0;
    for (std::size_t byte = 0; byte < sizeof value; ++byte)
        value |= std::uint32_t{bytes[place + byte]} << 8 * byte;
    return static_cast<std::int32_t>(value);
}

std::int64_t askUptime(std::size_t place) {
    band::Bytes bytes;
    return band::ask(band::Command("QUP"), bytes) ? longAt(bytes, place) : 0;
}

} // namespace

int zelband_IsDataAvailable() {
    band::Frame reply;
    const bool isTold = band::send(band::Command("QS0"), reply) && reply[1] == kStateMark;
    return isTold ? reply[kStateAt] & kTracks : 0;
}

int zelband_ClearDataAvailable() {
    band::Frame reply;
    return band::send(band::Command("CD0"), reply) ? 1 : 0;
}

int zelband_ClearOverrun() {
    band::Frame reply;
    return band::send(band::Command("CQ"), reply) ? 1 : 0;
}

std::int64_t zelband_GetSystemUptime() { return askUptime(0); }

std::int64_t zelband_GetSystemCardsRead() { return askUptime(4); }

int zelband_GetSystemInternalCount(int index) {
    band::Bytes bytes;
    if (!band::ask(band::Command("QDD"), bytes) || index < 0 || index >= kCounters)
        return 0;
    const std::size_t place = 2 * static_cast<std::size_t>(index);
    return wordOf(bytes[place + 1], bytes[place]);
}
