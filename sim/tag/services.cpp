// SPDX-License-Identifier: MIT
// The service commands, by their sub-command in the second byte.
#include "sim/tag/services.h"

#include "sim/tag/commands.h"

#include <algorithm>

namespace zel::sim {

namespace {

constexpr std::uint8_t kFirmwareVersion = 4;
constexpr std::uint8_t kFileName = 7;
constexpr std::uint8_t kRadioPresent = 0x80;
constexpr std::uint8_t kRadioConfiguration = 0x03;

std::uint8_t low(std::uint16_t word) { return static_cast<std::uint8_t>(word); }
std::uint8_t high(std::uint16_t word) { return static_cast<std::uint8_t>(word >> 8); }

TagBlock character(const std::string& text, std::size_t index) {
    return {index < text.size() ? static_cast<std::uint8_t>(text[index]) : std::uint8_t{0}};
}

} // namespace

TagBlock TagServices::run(const TagBlock& command) {
    switch (command[1]) {
    case service::kPartNumber:
        return character(options_.partNumber, command[2]);
    case service::kQueuedIdentifier:
        return queuedPage(command[2]);
    case service::kBeep:
        return beep(command[2]);
    case service::kFirmwareName:
        return nameCharacter(command[2], command[3]);
    case service::kSerialNumber:
        return serialNumberPage(command[2]);
    case service::kVolume:
        return volume();
    case service::kRadio:
        return radio();
    case service::kSetVolume:
        return setVolume(command);
    case service::kSetRadio:
        return setRadio(command);
    default:
        return {};
    }
}

// Four pages of the identifier, then one about the entry. The mask behind the page's number changes
// nothing.
TagBlock TagServices::queuedPage(std::size_t page) const {
    constexpr std::size_t kIdPages = 4;
    TagBlock bytes = {};
    if (page < kIdPages) {
        std::copy_n(queued_.id.begin() + page * bytes.size(), bytes.size(), bytes.begin());
    } else if (page == kIdPages) {
        const auto word = static_cast<std::uint16_t>(queued_.word3);
        bytes = {low(queued_.age), high(queued_.age), queued_.byte2, low(word), high(word)};
        bytes[7] = queued_.byte7;
    }
    return bytes;
}

TagBlock TagServices::beep(std::uint8_t code) {
    ++beeps_;
    lastBeep_ = code;
    return {};
}

TagBlock TagServices::nameCharacter(std::uint8_t which, std::uint8_t index) const {
    if (which == kFirmwareVersion)
        return character(options_.firmwareVersion, index);
    return which == kFileName ? character(options_.fileName, index) : TagBlock{};
}

TagBlock TagServices::serialNumberPage(std::size_t page) const {
    TagBlock bytes = {};
    if (page < options_.serialNumber.size() / bytes.size())
        std::copy_n(options_.serialNumber.begin() + page * bytes.size(), bytes.size(),
                    bytes.begin());
    return bytes;
}

// The echo in front tells a volume of 0 from a reader that knows none.
TagBlock TagServices::volume() const {
    return options_.volume ? TagBlock{opcode::kService, service::kVolume, *options_.volume}
                           : TagBlock{};
}

TagBlock TagServices::setVolume(const TagBlock& command) {
    if (!options_.volume)
        return {};
    options_.volume = command[2];
    return {command[0], command[1], command[2]};
}

TagBlock TagServices::radio() const {
    if (!options_.radio)
        return {};
    const int bits = kRadioPresent | (*options_.radio & kRadioConfiguration);
    return {opcode::kService, service::kRadio, static_cast<std::uint8_t>(bits)};
}

TagBlock TagServices::setRadio(const TagBlock& command) {
    if (!options_.radio)
        return {};
    options_.radio = static_cast<std::uint8_t>(command[2] & kRadioConfiguration);
    return {command[0], command[1], command[2]};
}

} // namespace zel::sim
