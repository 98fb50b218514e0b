// SPDX-License-Identifier: MIT
// Commands of a proximity reader as 8-byte feature reports with report ID 0.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace zel::tag {

// First payload byte of a command.
enum class Opcode : std::uint8_t {
    Block0 = 0x80,     // the first of four configuration blocks
    CardType = 0x84,   // reply bytes 1, 2: card type, low byte first; byte 3 bit 0: priority
    Page = 0x85,       // arguments: page, selector of two bytes
    CardData = 0x88,   // arguments: 1, block 0 to 4; reply: eight bytes of card data
    Multi = 0x89,      // arguments: sub-command, see its users
    Luid = 0x8A,       // reply: LUID, device ID, 16 bits each, low byte first
    Service = 0x8C,    // arguments: sub-command, see its users
    LongIdPage = 0x8D, // payload byte 1: page 0 to 3; reply: eight bytes of the identifier
    IdBitCount = 0x8E, // reply byte 0: bits of the identifier
    Id = 0x8F,         // reply: the first eight bytes of the identifier
    Commit = 0x90,     // argument: mask of what was written
    Factory = 0xA0,    // return to factory defaults
};

constexpr std::size_t kPayloadSize = 8;
using Payload = std::array<std::uint8_t, kPayloadSize>;

// The payload of a command: its opcode, its arguments, zeros.
constexpr Payload command(Opcode opcode, std::uint8_t p1 = 0, std::uint8_t p2 = 0,
                          std::uint8_t p3 = 0) {
    return {static_cast<std::uint8_t>(opcode), p1, p2, p3};
}

// iTagPlusState of a record.
enum MultiState : std::uint32_t { kNotKnown = 0, kProbeFailed = 1, kMultiConfig = 2 };

// Sends one report to the active device. Whether it was sent.
bool send(const Payload& payload);

// Fetches one report from the active device. What a short answer leaves out is zero.
bool fetch(Payload& payload);

// Sends a command and fetches its reply. Whether both reports went through.
bool query(const Payload& request, Payload& reply);

// How far a block write came: a command, then its data; nothing is fetched.
enum class Written { No, CommandOnly, Yes };
Written write(const Payload& request, const Payload& data);

} // namespace zel::tag
