// SPDX-License-Identifier: MIT
// A magnetic stripe reader that answers from a script, on a line or on USB.
#pragma once

#include "sim/wire/device.h"
#include "sim/wire/stream_device.h"

#include <algorithm>
#include <deque>
#include <string>
#include <string_view>

namespace zel::test {

// The next answers to whole frames; behind the last one the reader tells its part number.
class StripeScript {
public:
    static constexpr std::size_t kFrame = 24;

    void answer(const std::string& reply) { replies_.push_back(reply); }
    std::string next() {
        if (replies_.empty())
            return "RRZZB100\rxxxxxxxxxxxxxxx";
        const std::string reply = replies_.front();
        replies_.pop_front();
        return reply;
    }

private:
    std::deque<std::string> replies_;
};

// A carriage return that comes too early ends what was begun, and is answered where that is asked
// for.
class StripeLine : public sim::StreamDevice, public StripeScript {
public:
    std::string answerToWake;

    std::vector<std::uint8_t> receive(std::span<const std::uint8_t> bytes) override {
        std::string answer;
        for (const std::uint8_t byte : bytes)
            answer += take(static_cast<char>(byte));
        return {answer.begin(), answer.end()};
    }
    void restart() override { frame_.clear(); }

private:
    std::string take(char byte) {
        frame_ += byte;
        if (byte != '\r')
            return "";
        const bool isWhole = frame_.size() == kFrame;
        frame_.clear();
        return isWhole ? next() : answerToWake;
    }

    std::string frame_;
};

class StripeUsb : public sim::Device, public StripeScript {
public:
    bool take(std::uint8_t, std::span<const std::uint8_t> payload) override {
        return payload.size() == kFrame;
    }
    bool answer(std::uint8_t, std::span<std::uint8_t> reply) override {
        const std::string text = next();
        std::copy_n(text.begin(), std::min(text.size(), reply.size()), reply.begin());
        return !text.empty();
    }
    std::string nameOf(std::span<const std::uint8_t> payload) const override {
        return {payload.begin(), payload.begin() + 3};
    }
    using StripeScript::answer;
};

} // namespace zel::test
