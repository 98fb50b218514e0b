// SPDX-License-Identifier: MIT
// Commands of a magnetic stripe reader: 24 bytes of text out, 24 bytes of text in, on a serial line
// or as feature reports.
#pragma once

#include "frame/zelTagExport.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace zel::band {

constexpr std::size_t kFrameSize = 24;
using Frame = std::array<char, kFrameSize>;

// The frame of a command: its text, zeros as digits, a carriage return. A text is cut at 23
// characters.
Frame frameOf(const char* text);

// The text of a command, piece by piece. What passes a frame's 23 characters is left out.
class Command {
public:
    explicit Command(std::string_view start);
    Command& add(std::string_view piece);
    Command& hex(int byte); // two digits of the low byte

    const char* text() const { return text_.data(); }

private:
    std::array<char, kFrameSize> text_ = {};
    std::size_t size_ = 0;
};

// A reply's payload, behind its three characters: pairs of hexadecimal digits as bytes.
constexpr std::size_t kMostBytes = 10;
using Bytes = std::array<std::uint8_t, kMostBytes>;

// Sends a command. Whether it succeeded.
bool send(const Command& command, Frame& reply);

// The same, with the payload of the reply; zeros when it fails.
bool ask(const Command& command, Bytes& payload);

// Asks for the part number, a second time 25 ms later when the first one fails.
bool askPartNumber(Frame& reply);

// The number that two hexadecimal digits tell; 0 where there is none.
std::uint8_t pairAt(const Frame& frame, std::size_t place);

} // namespace zel::band

ZELTAGAPI_BEGIN

// Sends a command and takes the 24 bytes of its reply. 1 when the reply says success, which is an
// "R" in front; else 0, after 2 ms.
ZELTAGAPI_EXPORT int SendBandCmd(const char* text, char* reply);

// Decodes at most ten pairs of hexadecimal digits; a character below "0" in front of a pair ends
// them, and so does the end of the text.
ZELTAGAPI_EXPORT void HexToBytes(unsigned char* destination, const char* source);

ZELTAGAPI_END
