// SPDX-License-Identifier: MIT
// The simulated magnetic stripe reader's commands.
#include "sim/band/model.h"

#include "sim/wire/clock.h"

#include <algorithm>
#include <initializer_list>

namespace zel::sim {

namespace {

constexpr std::size_t kChunk = 10;
constexpr std::size_t kDataAt = 3; // of a command
constexpr std::size_t kHighestChunk[kBandTracks] = {8, 4, 10};
constexpr std::uint8_t kLengthBits = 0x7F;
constexpr int kMostBeeps = 5;
constexpr int kMostLongBeeps = 2;
constexpr std::uint64_t kSecond = 1'000'000;
constexpr std::uint64_t kMillisecond = 1'000;
constexpr std::string_view kDigits = "0123456789ABCDEF";

std::uint8_t byteOf(std::uint32_t value, unsigned place) {
    return static_cast<std::uint8_t>(value >> 8 * place);
}

std::string pairsOf(std::span<const std::uint8_t> bytes) {
    std::string text;
    for (const std::uint8_t byte : bytes)
        (text += kDigits[byte >> 4]) += kDigits[byte & 0x0F];
    return text;
}

std::string pairsOf(std::initializer_list<std::uint8_t> bytes) {
    return pairsOf(std::span(bytes.begin(), bytes.size()));
}

// The bytes that pairs of digits stand for; false where one is no digit.
bool takePairs(std::string_view text, std::span<std::uint8_t> bytes) {
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        const std::size_t high = kDigits.find(text[2 * i]);
        const std::size_t low = kDigits.find(text[2 * i + 1]);
        if (high == std::string_view::npos || low == std::string_view::npos)
            return false;
        bytes[i] = static_cast<std::uint8_t>(high << 4 | low);
    }
    return true;
}

} // namespace

BandModel::BandModel(BandOptions made) : options(std::move(made)), startedAt_(microseconds()) {}

std::optional<std::string> BandModel::run(std::string_view command) {
    switch (command[0]) {
    case 'Q':
        return query(command);
    case 'G':
        return get(command);
    case 'S':
        return set(command);
    case 'F':
        return flash(command[1]);
    case 'C':
        return clear(command);
    case 'B':
        return beep(command);
    default:
        return std::nullopt;
    }
}

BandModel::Reply BandModel::query(std::string_view command) {
    const std::string_view what = command.substr(1, 2);
    if (what == "RZ")
        return options.partNumber + '\r';
    if (what == "SV")
        return pairsOf({byteOf(options.deviceId, 1), byteOf(options.deviceId, 0),
                        byteOf(options.firmwareVersion, 1), byteOf(options.firmwareVersion, 0)});
    if (what == "S0")
        return pairsOf({tracksRead()});
    if (what == "UP")
        return pairsOf({byteOf(uptime(), 0), byteOf(uptime(), 1), byteOf(uptime(), 2),
                        byteOf(uptime(), 3), byteOf(cardsRead, 0), byteOf(cardsRead, 1),
                        byteOf(cardsRead, 2), byteOf(cardsRead, 3)});
    if (what != "DD")
        return std::nullopt;
    std::string text;
    for (const std::uint16_t counter : counters)
        text += pairsOf({byteOf(counter, 0), byteOf(counter, 1)});
    return text;
}

BandModel::Reply BandModel::get(std::string_view command) {
    if (command.substr(1, 2) == "Q0")
        return getQueue();
    if (command[1] >= '1' && command[1] <= '3')
        return getTrack(command);
    const auto group = bandGroup(current, command[1], command[2]);
    if (group.empty())
        return std::nullopt;
    return pairsOf(group);
}

// The only reply whose pairs begin one character later.
BandModel::Reply BandModel::getQueue() const {
    return '0' + pairsOf({byteOf(age(), 0), byteOf(age(), 1), overruns_, 0});
}

// A track is its length, then its codes.
BandModel::Reply BandModel::getTrack(std::string_view command) const {
    const auto track = static_cast<std::size_t>(command[1] - '1');
    const std::size_t chunk = kDigits.find(command[2]);
    if (chunk > kHighestChunk[track])
        return std::nullopt;
    TrackCodes data = card_.track[track];
    data.insert(data.begin(), static_cast<std::uint8_t>(data.size() & kLengthBits));
    data.resize(std::max(data.size(), (chunk + 1) * kChunk));
    return pairsOf(std::span(data).subspan(chunk * kChunk, kChunk));
}

// LEDs change at any time, all else behind FR alone.
BandModel::Reply BandModel::set(std::string_view command) {
    const auto group = bandGroup(current, command[1], command[2]);
    if (group.empty() || (command[1] != 'L' && !takesSettings_))
        return std::nullopt;
    std::vector<std::uint8_t> bytes(group.size());
    if (!takePairs(command.substr(kDataAt), bytes))
        return std::nullopt;
    std::copy(bytes.begin(), bytes.end(), group.begin());
    return "";
}

BandModel::Reply BandModel::flash(char what) {
    if (what != 'R' && what != 'W' && what != 'D')
        return std::nullopt;
    takesSettings_ = what == 'R';
    if (what == 'D')
        current = bandFactorySettings();
    if (what != 'R')
        stored = current;
    return "";
}

BandModel::Reply BandModel::clear(std::string_view command) {
    if (command[1] == 'Q')
        overruns_ = 0;
    else if (command.substr(1, 2) == "D0")
        card_ = {};
    else
        return std::nullopt;
    return "";
}

BandModel::Reply BandModel::beep(std::string_view command) {
    const bool isLong = command[1] == 'L';
    const int count = command[2] - '0';
    if ((!isLong && command[1] != 'S') || count < 1 ||
        count > (isLong ? kMostLongBeeps : kMostBeeps))
        return std::nullopt;
    beeps_.push_back({count, isLong});
    return "";
}

void BandModel::swipe(const BandCard& card) {
    if (tracksRead() != 0 && overruns_ != UINT8_MAX)
        ++overruns_;
    for (std::size_t i = 0; i < kBandTracks; ++i)
        card_.track[i] = (current.system[0] >> i & 1) != 0 ? card.track[i] : TrackCodes{};
    if (tracksRead() == 0)
        return;
    ++cardsRead;
    readAt_ = microseconds();
}

void BandModel::powerUp() {
    current = stored;
    card_ = {};
    cardsRead = 0;
    overruns_ = 0;
    takesSettings_ = false;
    startedAt_ = microseconds();
}

std::uint8_t BandModel::tracksRead() const {
    unsigned flags = 0;
    for (unsigned i = 0; i < kBandTracks; ++i)
        flags |= card_.track[i].empty() ? 0U : 1U << i;
    return static_cast<std::uint8_t>(flags);
}

void BandModel::setUptime(std::uint32_t seconds) {
    startedAt_ = microseconds() - seconds * kSecond;
}

std::uint32_t BandModel::uptime() const {
    return static_cast<std::uint32_t>((microseconds() - startedAt_) / kSecond);
}

std::uint16_t BandModel::age() const {
    if (tracksRead() == 0)
        return 0;
    const std::uint64_t age = (microseconds() - readAt_) / kMillisecond;
    return static_cast<std::uint16_t>(std::min<std::uint64_t>(age, UINT16_MAX));
}

} // namespace zel::sim
