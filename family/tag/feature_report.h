// SPDX-License-Identifier: MIT
// Commands of a proximity reader as 8-byte feature reports with report ID 0.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace zel::tag {

// First payload byte of a command.
enum class Opcode : std::uint8_t {
    Luid = 0x8A,       // reply: LUID, device ID, 16 bits each, low byte first
    LongIdPage = 0x8D, // payload byte 1: page 0 to 3; reply: eight bytes of the identifier
    IdBitCount = 0x8E, // reply byte 0: bits of the identifier
    Id = 0x8F,         // reply: the first eight bytes of the identifier
};

constexpr std::size_t kPayloadSize = 8;
using Payload = std::array<std::uint8_t, kPayloadSize>;

// The payload of a command: its opcode, one argument, zeros.
constexpr Payload command(Opcode opcode, std::uint8_t argument = 0) {
    return {static_cast<std::uint8_t>(opcode), argument};
}

// Sends one report to the active device. Whether it was sent.
bool send(const Payload& payload);

// Fetches one report from the active device. What a short answer leaves out is zero.
bool fetch(Payload& payload);

// Sends a command and fetches its reply. Whether both reports went through.
bool query(const Payload& request, Payload& reply);

} // namespace zel::tag
