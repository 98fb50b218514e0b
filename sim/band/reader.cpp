// SPDX-License-Identifier: MIT
// Frames of the simulated magnetic stripe reader: what ends them, what spoils them, when they may
// come.
#include "sim/band/reader.h"

#include <algorithm>

namespace zel::sim {

namespace {

constexpr char kEnd = '\r';
constexpr char kFill = '0';
constexpr char kSuccess = 'R';
constexpr char kRefusal = 'E';
constexpr std::size_t kTextSize = BandReader::kFrameSize - 1; // of a command

// Microseconds. A flash command is answered, then worked on.
constexpr std::uint64_t kAnswer = 2'000;
constexpr std::uint64_t kFlashAnswer = 200'000;
constexpr std::uint64_t kFlashWork = 1'100'000;

std::string framed(std::string text) {
    const bool isCut = text.size() > kTextSize;
    text.resize(BandReader::kFrameSize, kFill);
    if (!isCut)
        text.back() = kEnd;
    return text;
}

bool writesFlash(std::string_view command) {
    return command.starts_with("FW") || command.starts_with("FD");
}

// The text without the zeros that fill it up. Three characters are a command but for a few.
std::string nameOfCommand(std::string_view text) {
    const bool hasTwo = text.starts_with('F') || text.starts_with("CQ");
    const std::size_t last = text.find_last_not_of(kFill);
    const std::size_t used = last == std::string_view::npos ? 0 : last + 1;
    return std::string(text.substr(0, std::max<std::size_t>(used, hasTwo ? 2 : 3)));
}

} // namespace

int BandReader::ledColor(unsigned led) const {
    const auto& bytes = model_.current.leds;
    return led == 0 ? bytes[1] & 3 : bytes[0] >> 2 * (4 - led) & 3;
}

void BandReader::fail(BandFault fault, int count, int after) {
    if (fault == BandFault::None)
        faults_.clear();
    else
        faults_.add(fault, count, after);
}

std::vector<std::uint8_t> BandReader::receive(std::span<const std::uint8_t> bytes) {
    Bytes replies;
    for (const std::uint8_t byte : bytes) {
        const Bytes reply = takeByte(byte);
        replies.insert(replies.end(), reply.begin(), reply.end());
    }
    return replies;
}

// A carriage return ends whatever was begun; only a frame of the right length is a command.
std::vector<std::uint8_t> BandReader::takeByte(std::uint8_t byte) {
    if (!isAsleep_ && line_.size() <= kFrameSize)
        line_ += static_cast<char>(byte);
    if (byte != kEnd)
        return {};
    isAsleep_ = false;
    const std::string frame = std::exchange(line_, {});
    return frame.size() == kFrameSize ? replyTo(frame) : Bytes{};
}

bool BandReader::take(std::uint8_t reportId, std::span<const std::uint8_t> payload) {
    if (reportId != 0 || payload.size() != kFrameSize)
        return false;
    const std::string frame(payload.begin(), payload.end());
    reply_ = frame.back() == kEnd ? replyTo(frame) : Bytes{};
    return true;
}

// What a reply leaves out is zero. A command that was lost has none.
bool BandReader::answer(std::uint8_t reportId, std::span<std::uint8_t> reply) {
    if (reportId != 0 || reply_.empty())
        return false;
    violations_.check("reply", answering_.remaining());
    std::copy_n(reply_.begin(), std::min(reply_.size(), reply.size()), reply.begin());
    return true;
}

std::vector<std::uint8_t> BandReader::replyTo(std::string_view frame) {
    const std::string_view command = frame.substr(0, kTextSize);
    ++commands_;
    const BandFault fault = faults_.next();
    violations_.check(nameOfCommand(command), flash_.remaining());
    if (fault == BandFault::Silence)
        return {};
    work(command);
    return spoil(fixedOrOwnReply(command), fault);
}

void BandReader::work(std::string_view command) {
    answering_ = {};
    answering_.hold(writesFlash(command) ? kAnswer + kFlashAnswer : kAnswer);
    if (writesFlash(command))
        flash_.hold(kFlashAnswer + kFlashWork);
}

std::string BandReader::fixedOrOwnReply(std::string_view command) {
    const auto own = model_.run(command);
    if (const std::string* const fixed = fixedReplies_.find(command))
        return framed(*fixed);
    const std::string head = (own ? kSuccess : kRefusal) + std::string(command.substr(1, 2));
    return framed(head + own.value_or(""));
}

std::vector<std::uint8_t> BandReader::spoil(const std::string& reply, BandFault fault) {
    Bytes bytes(reply.begin(), reply.end());
    if (fault == BandFault::WrongFirstByte)
        bytes.front() = kRefusal;
    if (fault == BandFault::ShortReply)
        bytes.resize(bytes.size() / 2);
    if (fault == BandFault::Garbage)
        std::generate(bytes.begin(), bytes.end(),
                      [this] { return static_cast<std::uint8_t>(random_()); });
    return bytes;
}

void BandReader::powerUp() {
    model_.powerUp();
    line_.clear();
    reply_.clear();
    flash_ = {};
    answering_ = {};
    isAsleep_ = false;
}

std::string BandReader::nameOf(std::span<const std::uint8_t> payload) const {
    const std::string text(payload.begin(), payload.end());
    return nameOfCommand(std::string_view(text).substr(0, kTextSize));
}

} // namespace zel::sim
