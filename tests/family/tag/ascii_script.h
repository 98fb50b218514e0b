// SPDX-License-Identifier: MIT
// A proximity reader that is driven by the ASCII protocol, and what it is told and answers.
#pragma once

#include "family/tag/ascii_protocol.h"
#include "tests/family/tag/stream_test.h"

#include <memory>
#include <string>
#include <utility>

namespace zel::test {

// Answers the three queries as it is told to, with or without a prompt; nothing else has an answer
// unless it is given one.
class LineScript : public sim::StreamDevice {
public:
    std::string listing;
    std::string version;
    std::string id;
    std::string answer; // to any other line

    // All that came so far.
    std::string heard;

    std::vector<std::uint8_t> receive(std::span<const std::uint8_t> bytes) override {
        std::string answers;
        for (const std::uint8_t byte : bytes) {
            heard += static_cast<char>(byte);
            if (byte != '\r')
                line_ += static_cast<char>(byte);
            else if (!line_.empty())
                answers += answerTo(std::exchange(line_, {}));
        }
        return {answers.begin(), answers.end()};
    }

private:
    std::string answerTo(const std::string& line) const {
        if (line == "ZTAG:VAR")
            return listing;
        if (line == "ZTAG:DEV.VER")
            return version;
        return line == "ZTAG:QID.ID" ? id : answer;
    }

    std::string line_;
};

class AsciiProtocolTest : public StreamTest {
protected:
    AsciiProtocolTest() {
        connectLine(script_);
        useACPMode = 1;
    }

    // The last pause of the library may have delivered nothing yet.
    std::string heard() {
        lines().pump();
        return std::exchange(script_->heard, {});
    }

    std::shared_ptr<LineScript> script_ = std::make_shared<LineScript>();
};

} // namespace zel::test
