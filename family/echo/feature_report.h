// SPDX-License-Identifier: MIT
// Commands of a presence sensor as 8-byte feature reports with report ID 0.
#pragma once

#include <array>
#include <cstdint>

namespace zel::echo {

using Payload = std::array<std::uint8_t, 8>;

// First payload byte of a command; 0x80 to 0x85 are the blocks of the settings.
enum class Opcode : std::uint8_t {
    Block0 = 0x80,
    Ids = 0x8A,       // LUID, device ID, version
    Range = 0x8F,     // reply: status, distance
    Commit = 0x90,    // argument: mask of what was written
    Factory = 0xA0,   // return to factory defaults
    Go = 0xB0,        // send keys
    Halt = 0xB1,      // send none
    ResetUser = 0xD0, // return to the user's defaults
    SaveUser = 0xE0,  // make the settings the user's defaults
};

// The payload of a command: its opcode, its argument, zeros.
constexpr Payload command(Opcode opcode, std::uint8_t argument = 0) {
    return {static_cast<std::uint8_t>(opcode), argument};
}

// Sends one report to the active device. Whether it was sent.
bool send(const Payload& payload);

// Fetches one report from the active device. What a short answer leaves out is zero.
bool fetch(Payload& payload);

// A command, a pause of 250 ms, then the reply, or the data that belongs to the command.
bool query(const Payload& request, Payload& reply);
bool write(const Payload& request, const Payload& data);

// The pause alone.
void pauseForData();

} // namespace zel::echo
