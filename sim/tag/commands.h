// SPDX-License-Identifier: MIT
// A proximity reader's commands: their codes, and their names for a person who reads a trace.
#pragma once

#include <cstdint>
#include <span>
#include <string>

namespace zel::sim {

// The first byte of a command.
namespace opcode {
constexpr std::uint8_t kBlock0 = 0x80; // up to kBlock3
constexpr std::uint8_t kBlock3 = 0x83;
constexpr std::uint8_t kCardType = 0x84;
constexpr std::uint8_t kPage = 0x85; // of separator and field data, or of a key
constexpr std::uint8_t kCardData = 0x88;
constexpr std::uint8_t kMulti = 0x89;
constexpr std::uint8_t kLuid = 0x8A;
constexpr std::uint8_t kService = 0x8C;
constexpr std::uint8_t kIdentifierPage = 0x8D;
constexpr std::uint8_t kBitCount = 0x8E;
constexpr std::uint8_t kIdentifier = 0x8F;
constexpr std::uint8_t kCommit = 0x90;
constexpr std::uint8_t kFactoryDefaults = 0xA0;
constexpr std::uint8_t kEnterBootLoader = 0xF0;

constexpr bool isBlock(std::uint8_t code) { return code >= kBlock0 && code <= kBlock3; }

// Whether a second report with data makes a write of it.
constexpr bool isWritable(std::uint8_t code) {
    return isBlock(code) || code == kCardType || code == kPage || code == kLuid;
}
} // namespace opcode

// The second byte, behind opcode::kMulti.
namespace multi {
constexpr std::uint8_t kQuery = 0x01;
constexpr std::uint8_t kVersion = 0x03;
constexpr std::uint8_t kCardTypes = 0x04;
constexpr std::uint8_t kReadBlob = 0x10;
constexpr std::uint8_t kSelect = 0x81;
constexpr std::uint8_t kMoveSet = 0x82;
constexpr std::uint8_t kWriteBlob = 0x90;
} // namespace multi

// The second byte, behind opcode::kService.
namespace service {
constexpr std::uint8_t kPartNumber = 0x01;
constexpr std::uint8_t kQueuedIdentifier = 0x02;
constexpr std::uint8_t kBeep = 0x03;
constexpr std::uint8_t kFirmwareName = 0x04;
constexpr std::uint8_t kSerialNumber = 0x05;
constexpr std::uint8_t kVolume = 0x06;
constexpr std::uint8_t kRadio = 0x07;
constexpr std::uint8_t kSetVolume = 0x86;
constexpr std::uint8_t kSetRadio = 0x87;
} // namespace service

// The name of the command that a report's payload begins; empty when it has none.
std::string tagCommandName(std::span<const std::uint8_t> payload);

} // namespace zel::sim
