// SPDX-License-Identifier: MIT
// The boot loader's side of the conversation, and the time that it needs for each step.
#include "sim/tag/boot.h"

#include <algorithm>

namespace zel::sim {

namespace {

constexpr int kFramesOfALine = 3;
constexpr std::size_t kFrameData = 7;
constexpr std::uint8_t kBusy = 'T';
constexpr std::uint8_t kAccepted = '.';
constexpr std::uint8_t kAcceptedAtEnd = 'E';
constexpr unsigned kLongestDelay = 4'000; // ms

// Microseconds.
constexpr std::uint64_t kStart = 3'000'000;
constexpr std::uint64_t kEntryPoll = 50'000;
constexpr std::uint64_t kFrame = 10'000;
constexpr std::uint64_t kOtherMicroPoll = 80'000;
constexpr std::uint64_t kLongPoll = 50'000;
constexpr std::uint64_t kShortPoll = 2'000;

bool isFrame(std::uint8_t first) { return first <= kFrameData; }

} // namespace

void TagBoot::powerUp() {
    hasPower_ = true;
    busy_ = {};
    if (isRunning())
        state_ = State::Waiting;
}

void TagBoot::enter(std::uint8_t micro) {
    state_ = State::Entering;
    micro_ = micro;
    memory_.clear();
    lines_ = 0;
    lastDetail_ = 0;
    busyAnswers_ = options_.entryBusy;
    expectLine();
    busy_ = {};
    busy_.hold(kStart);
}

void TagBoot::expectLine() {
    line_.clear();
    frames_ = 0;
    polls_ = 0;
}

bool TagBoot::isLineWhole() const { return frames_ == kFramesOfALine; }

void TagBoot::take(const TagBlock& report) {
    if (state_ != State::Ready || isLineWhole() || !isFrame(report[0]))
        return;
    line_.insert(line_.end(), report.begin() + 1, report.begin() + 1 + report[0]);
    ++frames_;
    const std::uint64_t pause = options_.kind == TagBootKind::Slow ? kFrame : 0;
    busy_.hold(pause + (isLineWhole() ? pollPause() : 0));
    busyAnswers_ = options_.lineBusy;
}

// Before the next poll. Until the first line is accepted nothing but the kind of micro counts.
std::uint64_t TagBoot::pollPause() const {
    if (micro_ != 0)
        return kOtherMicroPoll;
    if (options_.kind == TagBootKind::Lark)
        return polls_ == 0 ? kShortPoll : kLongPoll;
    const bool isLong = lines_ > 0 && lastDetail_ != static_cast<int>(TagBootKind::Fast);
    return isLong ? kLongPoll : kShortPoll;
}

bool TagBoot::answer(TagBlock& reply) {
    reply = {};
    if (state_ == State::Entering && !options_.comesBack)
        return false;
    if (state_ == State::Entering)
        reply = answerToEntry();
    else if (state_ == State::Ready && isLineWhole())
        reply = answerToLine();
    return true;
}

TagBlock TagBoot::answerToEntry() {
    if (busyAnswers_ > 0) {
        --busyAnswers_;
        busy_.hold(kEntryPoll);
        return {0, kBusy};
    }
    TagBlock reply = {0, kAccepted};
    if (options_.kind == TagBootKind::Lark)
        reply[2] = static_cast<std::uint8_t>(TagBootKind::Lark);
    if (const auto fixed = options_.reply.find(0); fixed != options_.reply.end())
        reply = fixed->second;
    state_ = reply[1] == kAccepted ? State::Ready : State::Waiting;
    return reply;
}

TagBlock TagBoot::answerToLine() {
    ++polls_;
    if (busyAnswers_ > 0) {
        --busyAnswers_;
        busy_.hold(pollPause());
        return {0, kBusy};
    }
    const TagBlock reply = verdict();
    judge(reply);
    return reply;
}

TagBlock TagBoot::verdict() const {
    const auto fixed = options_.reply.find(lines_ + 1);
    if (fixed != options_.reply.end())
        return fixed->second;
    return {0, kAccepted, static_cast<std::uint8_t>(options_.kind),
            static_cast<std::uint8_t>(options_.delay),
            static_cast<std::uint8_t>(options_.delay >> 8)};
}

// A line that it refuses leaves it waiting to be entered anew.
void TagBoot::judge(const TagBlock& reply) {
    if (reply[1] == kAccepted || reply[1] == kAcceptedAtEnd)
        accept(reply);
    else
        state_ = State::Waiting;
    expectLine();
}

void TagBoot::accept(const TagBlock& reply) {
    memory_.insert(memory_.end(), line_.begin(), line_.end());
    ++lines_;
    lastDetail_ = reply[2];
    const unsigned delay = reply[3] | unsigned{reply[4]} << 8;
    if (options_.kind == TagBootKind::Lark && delay <= kLongestDelay)
        busy_.hold(std::uint64_t{delay} * 1'000);
    if (lines_ == options_.powerCutAfter)
        hasPower_ = false;
    else if (lines_ == options_.lines)
        state_ = State::Away;
}

std::string TagBoot::nameOf(std::span<const std::uint8_t> report) const {
    if (state_ != State::Ready || report.empty() || !isFrame(report[0]))
        return "";
    return "line " + std::to_string(lines_ + 1) + " frame " + std::to_string(frames_ + 1);
}

} // namespace zel::sim
