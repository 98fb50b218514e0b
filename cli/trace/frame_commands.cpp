// SPDX-License-Identifier: MIT
// Which frames carry a card's data, fields or keys.
#include "cli/trace/frame_commands.h"

#include "sim/demo/names.h"

#include <algorithm>
#include <initializer_list>

namespace zel::cli {

namespace {

constexpr std::uint8_t kClass = 0xFA;
constexpr std::uint8_t kMulti = 0x09;
constexpr std::uint8_t kService = 0x0C;
constexpr std::uint8_t kMove = 0x82; // behind kMulti: its header is longer
constexpr std::size_t kHeader = 5;
constexpr std::size_t kMoveHeader = 7;
constexpr std::size_t kLength = 3; // place in the header
constexpr std::size_t kStatus = 2;

bool isOneOf(std::uint8_t byte, std::initializer_list<std::uint8_t> all) {
    return std::find(all.begin(), all.end(), byte) != all.end();
}

// Blocks, commit, defaults, LUID, speed; services but the queued identifier; of the multi commands
// those that ask for no fields and no blobs.
bool isHarmless(ByteView header) {
    if (header.size() < 2)
        return false;
    if (header[0] == kMulti)
        return isOneOf(header[1], {0x01, 0x03, 0x04, 0x81, 0x82});
    if (header[0] == kService)
        return isOneOf(header[1], {0x01, 0x03, 0x04, 0x05, 0x06, 0x07, 0x86, 0x87});
    return isOneOf(header[0], {0x01, 0x02, 0x03, 0x04, 0x06, 0x0D, 0x81});
}

std::size_t sizeOf(ByteView frame) {
    const bool isMove = frame.size() > 2 && frame[1] == kMulti && frame[2] == kMove;
    return isMove ? kMoveHeader : kHeader;
}

bool isStatus(ByteView bytes) {
    return bytes.size() == kStatus && (bytes[0] == 0x90 || bytes[0] >> 4 == 6);
}

} // namespace

bool FrameCommands::isHeader(ByteView bytes) { return !bytes.empty() && bytes[0] == kClass; }

bool FrameCommands::isWhole(ByteView sent) const {
    return isData(sent) || (isHeader(sent) && sent.size() >= sizeOf(sent));
}

bool FrameCommands::isData(ByteView bytes) const {
    return asksData_ && bytes.size() == header_[kLength];
}

// Data that looks like a header may be one: then nothing is known of its answer.
Message FrameCommands::sent(ByteView bytes) {
    const std::string name = sim::tagFrameName(header_);
    if (isData(bytes)) {
        Message message = isHarmless(header_) ? allShown(bytes, name + " data")
                                              : allSecret(bytes, name + " data");
        asksData_ = false;
        if (isHeader(bytes))
            header_.clear();
        return message;
    }
    asksData_ = false;
    header_.assign(bytes.begin() + 1, bytes.end());
    if (bytes.size() != sizeOf(bytes))
        header_.clear();
    return secretBehind(kMoveHeader, bytes, sim::tagFrameName(header_));
}

bool FrameCommands::answersHeader(ByteView bytes) const {
    return !header_.empty() && !bytes.empty() && bytes[0] == header_[0];
}

Message FrameCommands::received(ByteView bytes) {
    const bool mayBeLate = isLate_;
    const bool isComplete =
        bytes.size() > kStatus + 1 && isStatus(bytes.subspan(bytes.size() - kStatus));
    isLate_ = !isHarmless(header_) && !isComplete && !isStatus(bytes) && bytes.size() != 1;
    asksData_ = answersHeader(bytes) && bytes.size() == 1 && header_[kLength] > 0;
    if (isStatus(bytes) || (asksData_ && !mayBeLate))
        return allShown(bytes);
    if (mayBeLate || header_.empty())
        return allSecret(bytes);
    if (isHarmless(header_))
        return answersHeader(bytes) ? allShown(bytes) : allSecret(bytes);
    Message message = secretBehind(answersHeader(bytes) ? 1 : 0, bytes);
    if (isComplete)
        std::fill(message.isSecret.end() - kStatus, message.isSecret.end(), false);
    return message;
}

} // namespace zel::cli
