// SPDX-License-Identifier: MIT
// A simulated magnetic stripe reader by itself, spoken to in the texts of its frames.
#pragma once

#include "sim/band/reader.h"
#include "tests/support/virtual_time.h"

#include <gtest/gtest.h>
#include <string>
#include <unistd.h>

namespace zel::test {

class SpokenBand : public ::testing::Test {
protected:
    static constexpr useconds_t kFlash = 1'300'000; // µs that it works on FW and FD

    // The 24 bytes of a text, filled up.
    static std::string frame(std::string text) {
        text.resize(23, '0');
        return text + '\r';
    }

    // What the reader answers on a line to these bytes, or to a whole command.
    std::string write(const std::string& text) {
        const std::vector<std::uint8_t> bytes(text.begin(), text.end());
        const auto answer = reader_.receive(bytes);
        return {answer.begin(), answer.end()};
    }
    std::string say(const std::string& command) { return write(frame(command)); }

    // A report; and the reply to the last one, or "refused".
    bool report(const std::string& text) {
        const std::vector<std::uint8_t> bytes(text.begin(), text.end());
        return reader_.take(0, bytes);
    }
    std::string fetch() {
        std::vector<std::uint8_t> reply(24);
        return reader_.answer(0, reply) ? std::string(reply.begin(), reply.end()) : "refused";
    }

    sim::BandReader reader_;
};

} // namespace zel::test
