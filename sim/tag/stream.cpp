// SPDX-License-Identifier: MIT
// Frames byte by byte: class byte, header, procedure byte, data, status word.
#include "sim/tag/stream.h"

#include "sim/tag/commands.h"

#include <algorithm>

namespace zel::sim {

namespace {

constexpr std::uint8_t kClass = 0xFA;
constexpr std::size_t kHeader = 4;
constexpr std::size_t kMoveHeader = 6;
constexpr std::uint8_t kProbe[kHeader] = {instruction::kLuid, 0xED, 0xED, 4};

void append(std::vector<std::uint8_t>& bytes, const std::vector<std::uint8_t>& more) {
    bytes.insert(bytes.end(), more.begin(), more.end());
}

} // namespace

TagStream::TagStream(std::shared_ptr<TagReader> reader, TagSpeech speech)
    : reader_(std::move(reader)), instructions_(*reader_), lineProtocol_(*reader_),
      speech_(speech) {}

void TagStream::fail(StreamFault fault, int count, int after) {
    if (fault == StreamFault::None)
        troubles_.clear();
    else
        troubles_.add({fault, kFailure}, count, after);
}

void TagStream::replyStatus(std::uint8_t sw1, std::uint8_t sw2, int count) {
    troubles_.add({StreamFault::WrongStatus, {sw1, sw2}}, count, 0);
}

void TagStream::refuse(std::uint8_t sw1, std::uint8_t sw2, int count) {
    troubles_.add({StreamFault::WrongProcedureByte, {sw1, sw2}}, count, 0);
}

void TagStream::restart() {
    state_ = State::Idle;
    bytes_.clear();
    lineProtocol_.dropLine();
}

std::vector<std::uint8_t> TagStream::receive(std::span<const std::uint8_t> bytes) {
    Bytes answer;
    for (const std::uint8_t byte : bytes)
        append(answer, take(byte));
    return answer;
}

TagStream::Bytes TagStream::take(std::uint8_t byte) {
    switch (state_) {
    case State::Header:
        return takeHeader(byte);
    case State::Data:
        return takeData(byte);
    default:
        return takeIdle(byte);
    }
}

// The class byte is no character: it ends a line that was begun.
TagStream::Bytes TagStream::takeIdle(std::uint8_t byte) {
    if (byte == kClass) {
        restart();
        state_ = State::Header;
        return {};
    }
    if (speech_ == TagSpeech::Frames)
        return {};
    const std::string text = lineProtocol_.take(static_cast<char>(byte));
    return {text.begin(), text.end()};
}

TagStream::Bytes TagStream::takeHeader(std::uint8_t byte) {
    bytes_.push_back(byte);
    return isHeaderWhole() ? answerHeader() : Bytes{};
}

bool TagStream::isHeaderWhole() const {
    const bool isMove =
        bytes_.size() > 1 && bytes_[0] == instruction::kMulti && bytes_[1] == multi::kMoveSet;
    return bytes_.size() == (isMove ? kMoveHeader : kHeader);
}

bool TagStream::understandsFrame() const {
    return speech_ != TagSpeech::Lines || std::ranges::equal(bytes_, kProbe);
}

TagStream::Bytes TagStream::answerHeader() {
    ++commands_;
    state_ = State::Idle;
    header_ = {bytes_[0], bytes_[1], bytes_[2], bytes_[3]};
    trouble_ = troubles_.next();
    if (trouble_.fault == StreamFault::Silence || !understandsFrame())
        return {};
    if (trouble_.fault == StreamFault::WrongProcedureByte)
        return {trouble_.status.sw1, trouble_.status.sw2};
    const TagOutcome result = outcome();
    if (result.form != TagForm::Write)
        return spoil(answerOf(result));
    bytes_.clear();
    state_ = State::Data;
    Bytes answer = {header_.ins};
    if (header_.length == 0)
        append(answer, finishWrite());
    return answer;
}

// Fixed data comes in the instruction's own form.
TagOutcome TagStream::outcome() {
    TagOutcome result = instructions_.run(header_);
    const Bytes* const fixed = fixedData_.find(bytes_);
    if (!fixed)
        return result;
    if (result.form == TagForm::Refused)
        result = {TagForm::Read, {}, {}};
    result.data = *fixed;
    return result;
}

TagStream::Bytes TagStream::answerOf(TagOutcome outcome) {
    if (trouble_.fault == StreamFault::WrongStatus)
        outcome.status = trouble_.status;
    Bytes status = {outcome.status.sw1, outcome.status.sw2};
    Bytes answer;
    switch (outcome.form) {
    case TagForm::Refused:
    case TagForm::NoAnswer:
        return status;
    case TagForm::AtOnce:
        answer = {header_.ins, header_.p1, header_.p2};
        break;
    default:
        answer = {header_.ins};
        break;
    }
    append(answer, outcome.data);
    if (outcome.form != TagForm::Bare)
        append(answer, status);
    return answer;
}

TagStream::Bytes TagStream::takeData(std::uint8_t byte) {
    bytes_.push_back(byte);
    return bytes_.size() == header_.length ? finishWrite() : Bytes{};
}

// What a failure is told of isn't kept.
TagStream::Bytes TagStream::finishWrite() {
    state_ = State::Idle;
    if (trouble_.fault != StreamFault::WrongStatus)
        instructions_.write(header_, bytes_);
    return spoil(answerOf({TagForm::NoAnswer, {}, TagStatus{}}));
}

TagStream::Bytes TagStream::spoil(Bytes answer) {
    if (trouble_.fault == StreamFault::ShortData)
        answer.resize(answer.size() / 2);
    if (trouble_.fault == StreamFault::Garbage)
        std::generate(answer.begin(), answer.end(),
                      [this] { return static_cast<std::uint8_t>(random_()); });
    return answer;
}

} // namespace zel::sim
