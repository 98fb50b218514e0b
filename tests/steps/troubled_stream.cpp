// SPDX-License-Identifier: MIT
// Frames, texts and lines, whole ones only.
#include "tests/steps/wire.h"

#include <algorithm>
#include <cstdio>

namespace zel::test::steps {

namespace {

constexpr std::uint8_t kClass = 0xFA;
constexpr std::uint8_t kEnd = '\r';
constexpr std::size_t kFrame = 5;     // the class byte and the header
constexpr std::size_t kMoveFrame = 7; // a block move has two bytes more
constexpr std::size_t kText = 24;

std::string pairsOf(const std::vector<std::uint8_t>& bytes) {
    std::string text;
    for (const std::uint8_t byte : bytes) {
        char pair[3];
        std::snprintf(pair, sizeof pair, "%02X", unsigned{byte});
        text += pair;
    }
    return text;
}

bool isMove(const std::vector<std::uint8_t>& frame) {
    return frame.size() > 2 && frame[1] == 0x09 && frame[2] == 0x82;
}

} // namespace

void TroubledStream::spoil(const Steps&, const Point& point, int times) {
    exchanges_ = 0;
    point_ = point;
    times_ = static_cast<std::size_t>(times);
}

void TroubledStream::heal() { point_.reset(); }

std::vector<std::string> TroubledStream::transfers(const std::string& command) const {
    return {command.substr(0, command.size() - 1)};
}

std::vector<std::uint8_t> TroubledStream::receive(std::span<const std::uint8_t> bytes) {
    Bytes answer;
    for (const std::uint8_t byte : bytes) {
        if (speech_ == Speech::Frames && part_ == Part::Data && byte == kClass && bytes.size() == 1)
            restart(); // the host gave the write up
        bytes_.push_back(byte);
        if (!isWhole())
            continue;
        const Bytes more = pass();
        answer.insert(answer.end(), more.begin(), more.end());
    }
    return answer;
}

void TroubledStream::restart() {
    bytes_.clear();
    part_ = Part::Command;
    device_->restart();
}

bool TroubledStream::isWhole() const {
    if (speech_ != Speech::Frames)
        return bytes_.back() == kEnd;
    if (part_ == Part::Data)
        return bytes_.size() == awaited_;
    return bytes_.size() == (isMove(bytes_) ? kMoveFrame : kFrame);
}

// A carriage return alone wakes the device.
bool TroubledStream::isCommand() const {
    return speech_ == Speech::Text ? bytes_.size() == kText : bytes_.size() > 1;
}

TroubledStream::Bytes TroubledStream::pass() {
    if (part_ == Part::Data)
        return passData();
    if (isCommand())
        return passCommand();
    return device_->receive(std::exchange(bytes_, {}));
}

// A frame that is answered by its procedure byte alone waits for data.
TroubledStream::Bytes TroubledStream::passCommand() {
    const Bytes command = std::exchange(bytes_, {});
    const bool isFrame = speech_ == Speech::Frames;
    traffic_.push_back(isFrame ? pairsOf({command.begin() + 1, command.end()})
                               : std::string(command.begin(), command.end() - 1));
    ++exchanges_;
    if (isHit(Fault::Send))
        return {};
    if (isFrame)
        device_->restart();
    Bytes answer = device_->receive(command);
    if (isFrame && answer.size() == 1 && answer[0] == command[1]) {
        part_ = Part::Data;
        awaited_ = command[4];
    }
    answer.insert(answer.begin(), leastAnswer_ - std::min(leastAnswer_, answer.size()), ' ');
    return spoiled(std::move(answer), false);
}

TroubledStream::Bytes TroubledStream::passData() {
    part_ = Part::Command;
    return spoiled(device_->receive(std::exchange(bytes_, {})), true);
}

bool TroubledStream::isHit(Fault fault) const {
    return point_ && point_->fault == fault && exchanges_ > point_->exchange &&
           exchanges_ <= point_->exchange + times_;
}

TroubledStream::Bytes TroubledStream::spoiled(Bytes answer, bool isOfData) {
    if (isHit(isOfData ? Fault::Data : Fault::Fetch))
        return {};
    if (isHit(isOfData ? Fault::DataCut : Fault::Cut))
        answer.resize(answer.size() / 2);
    if (!isHit(isOfData ? Fault::DataOnes : Fault::Ones))
        return answer;
    for (std::uint8_t& byte : answer) {
        noise_ = noise_ * 1664525U + 1013904223U;
        byte = point_->trouble == Trouble::Noise ? static_cast<std::uint8_t>(noise_ >> 24) : 0xFF;
    }
    return answer;
}

} // namespace zel::test::steps
