// SPDX-License-Identifier: MIT
// The frames of a connection that carries USB: requests of a preloaded application, and answers.
//
// A frame is the number of its bytes as a 32-bit number, then these; numbers are low byte first. A
// request's first byte says what is asked:
//   L               lists      -> for each device: port 32, vendor 16, product 16
//   O port 32       opens      -> handle 32, 0 when that fails; the device's name
//   C handle 32     closes     -> nothing
//   S handle 32, report ID 8, data  sets a report   -> 1 or 0
//   G handle 32, report ID 8, size 32  gets a report -> 1 and data, or 0
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

namespace zel::sim {

enum class UsbRequest : std::uint8_t { List = 'L', Open = 'O', Close = 'C', Set = 'S', Get = 'G' };

inline constexpr std::size_t kFrameHead = 4;
inline constexpr std::size_t kLargestFrame = 1U << 16; // bytes behind the head

class FrameWriter {
public:
    FrameWriter() : bytes_(kFrameHead) {}
    explicit FrameWriter(UsbRequest request) : FrameWriter() {
        add8(static_cast<std::uint8_t>(request));
    }

    FrameWriter& add8(std::uint8_t value) { return addBytes({&value, 1}); }
    FrameWriter& add16(std::uint16_t value);
    FrameWriter& add32(std::uint32_t value);
    FrameWriter& addBytes(std::span<const std::uint8_t> bytes);
    FrameWriter& addText(std::string_view text);

    std::vector<std::uint8_t> take(); // with its head

private:
    std::vector<std::uint8_t> bytes_;
};

// Of what lies behind the head. A number beyond the end is 0, and the frame wasn't whole.
class FrameReader {
public:
    explicit FrameReader(std::span<const std::uint8_t> bytes) : bytes_(bytes) {}

    std::uint8_t take8() { return static_cast<std::uint8_t>(take(1)); }
    std::uint16_t take16() { return static_cast<std::uint16_t>(take(2)); }
    std::uint32_t take32() { return take(4); }
    std::span<const std::uint8_t> rest() const { return bytes_; }

    bool isAtEnd() const { return bytes_.empty(); }
    bool wasWhole() const { return wasWhole_; }

private:
    std::uint32_t take(std::size_t size);

    std::span<const std::uint8_t> bytes_;
    bool wasWhole_ = true;
};

// The bytes behind a head; nothing where it isn't one or tells too many.
std::optional<std::size_t> frameSize(std::span<const std::uint8_t> head);

} // namespace zel::sim
