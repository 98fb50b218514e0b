// SPDX-License-Identifier: MIT
// Commands of a proximity reader as frames on a byte stream: a class byte, then an instruction with
// its parameters. After the header the reader answers with a procedure byte equal to the
// instruction, data moves, and a status word closes (ISO/IEC 7816-3, T=0); any other procedure byte
// is the first byte of a refusal's status word.
//
// Each exchange clears lLastICSWErr, fails without an open stream, and returns whether it
// succeeded.
#pragma once

#include "family/tag/feature_report.h"
#include "frame/state/state.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <span>

namespace zel::tag::stream {

// Second byte of a frame.
enum class Instruction : std::uint8_t {
    Id = 0x00,            // length 12 or 36: a byte, the bit count, two bytes, the identifier
    Block = 0x01,         // P1: block; length 8
    Commit = 0x02,        // P1: mask of what was written
    Factory = 0x03,       // return to factory defaults
    Presence = 0x04,      // P1, P2: 0xED each for the probe, 0 for LUID and device ID; length 4
    SetLuid = 0x06,       // length 2: LUID, low byte first
    Multi = 0x09,         // P1: sub-command, see its users; P1 0: field data of a plain reader
    ExtendedField = 0x0A, // field data of a reader with extended features; written: of a plain one
    Service = 0x0C,       // P1: sub-command, see its users
    Speed = 0x0D,         // P1: 1 ask, 0x81 set
    SetBlock = 0x81,      // P1: block 0 to 3, 4 the card type; length 8
    SetExtended = 0x8A,   // P2: 0 field data, 0x01 and 0x11 the key values
};

// The work area of an exchange; it may hold a key.
struct Frame {
    static constexpr std::size_t kSize = 265;
    static constexpr std::size_t kCount = 6;      // of readCounted()
    static constexpr std::size_t kReply = 7;      // first byte of what arrives
    static constexpr std::size_t kOutgoing = 135; // first byte of what is sent behind the header
    static constexpr std::size_t kMostOutgoing = 128;
    static constexpr std::size_t kStatus = 263; // two bytes of the status word

    Frame(Instruction instruction, int p1 = 0, int p2 = 0, int length = 0)
        : bytes{kClass, static_cast<std::uint8_t>(instruction), static_cast<std::uint8_t>(p1),
                static_cast<std::uint8_t>(p2), static_cast<std::uint8_t>(length)} {}
    explicit Frame(std::span<const std::uint8_t> header) : bytes{} {
        std::copy(header.begin(), header.end(), bytes.begin());
    }
    ~Frame();
    Frame(const Frame&) = delete;
    Frame& operator=(const Frame&) = delete;

    std::uint8_t instruction() const { return bytes[1]; }
    std::uint8_t length() const { return bytes[4]; }
    const std::uint8_t* data() const { return &bytes[kReply]; }

    // What write() sends; no more than 128 bytes are kept.
    void setOutgoing(std::span<const std::uint8_t> data) {
        std::copy_n(data.begin(), std::min(data.size(), kMostOutgoing), &bytes[kOutgoing]);
    }
    int status() const { return bytes[kStatus] << 8 | bytes[kStatus + 1]; }

    // The first eight bytes that arrived.
    Payload payload() const;

    std::array<std::uint8_t, kSize> bytes;

private:
    static constexpr std::uint8_t kClass = 0xFA;
};

constexpr int kDone = 0x9000;   // status word of success
constexpr int kNoCard = 0x6A82; // status word of an identifier that isn't there

// Discards what the active device's stream hasn't sent.
void flushOutgoing();

// Whether the active device is on a byte stream.
inline bool isActive() { return activeRecord().iDevType == 1; }

// Reads `length` data bytes, or `replyLength` - 1 where that isn't 0, behind a header of
// `headLength` bytes; then the status word.
bool read(Frame& frame, unsigned headLength = 4, unsigned replyLength = 0);

// Reads eight data bytes, or as many as byte 6 of the frame says; no status word follows.
bool readEight(Frame& frame);
bool readCounted(Frame& frame);

// Reads instruction, two bytes, eight data bytes and the status word at once. Doesn't tell the
// status word in lLastICSWErr.
bool readAtOnce(Frame& frame);

// Sends `length` data bytes from byte 135 of the frame, 128 at most; then the status word.
bool write(Frame& frame);

// The header, then the status word; no procedure byte.
bool command(Frame& frame);

} // namespace zel::tag::stream
