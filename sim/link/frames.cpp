// SPDX-License-Identifier: MIT
// Numbers and bytes of the frames.
#include "sim/link/frames.h"

#include <utility>

namespace zel::sim {

FrameWriter& FrameWriter::add16(std::uint16_t value) {
    return add8(static_cast<std::uint8_t>(value)).add8(static_cast<std::uint8_t>(value >> 8));
}

FrameWriter& FrameWriter::add32(std::uint32_t value) {
    return add16(static_cast<std::uint16_t>(value)).add16(static_cast<std::uint16_t>(value >> 16));
}

FrameWriter& FrameWriter::addBytes(std::span<const std::uint8_t> bytes) {
    bytes_.insert(bytes_.end(), bytes.begin(), bytes.end());
    return *this;
}

FrameWriter& FrameWriter::addText(std::string_view text) {
    bytes_.insert(bytes_.end(), text.begin(), text.end());
    return *this;
}

std::vector<std::uint8_t> FrameWriter::take() {
    const std::size_t size = bytes_.size() - kFrameHead;
    for (std::size_t byte = 0; byte < kFrameHead; ++byte)
        bytes_[byte] = static_cast<std::uint8_t>(size >> 8 * byte);
    return std::move(bytes_);
}

std::uint32_t FrameReader::take(std::size_t size) {
    wasWhole_ = wasWhole_ && bytes_.size() >= size;
    if (bytes_.size() < size)
        return 0;
    std::uint32_t value = 0;
    for (std::size_t byte = 0; byte < size; ++byte)
        value |= std::uint32_t{bytes_[byte]} << 8 * byte;
    bytes_ = bytes_.subspan(size);
    return value;
}

std::optional<std::size_t> frameSize(std::span<const std::uint8_t> head) {
    FrameReader reader(head);
    const std::size_t size = reader.take32();
    if (!reader.wasWhole() || size > kLargestFrame)
        return {};
    return size;
}

} // namespace zel::sim
