// SPDX-License-Identifier: MIT
// A simulated reader on a byte stream by itself, spoken to in hexadecimal pairs.
#pragma once

#include "sim/tag/stream.h"
#include "sim/wire/byte_text.h"

#include <gtest/gtest.h>
#include <memory>
#include <sstream>
#include <string>

namespace zel::test {

class SpokenStream : public ::testing::Test {
protected:
    void SetUp() override { use({}); }

    // The reader under test from now on.
    void use(const sim::TagOptions& options, sim::TagSpeech speech = sim::TagSpeech::Both) {
        reader_ = std::make_shared<sim::TagReader>(options);
        stream_ = std::make_shared<sim::TagStream>(reader_, speech);
    }

    // What the reader answers to these bytes.
    std::string say(const std::string& pairs) {
        std::istringstream text(pairs);
        std::vector<std::uint8_t> bytes;
        for (unsigned byte = 0; text >> std::hex >> byte;)
            bytes.push_back(static_cast<std::uint8_t>(byte));
        return sim::hexOf(stream_->receive(bytes));
    }

    // Likewise in text.
    std::string write(const std::string& text) {
        const std::vector<std::uint8_t> bytes(text.begin(), text.end());
        const auto answer = stream_->receive(bytes);
        return {answer.begin(), answer.end()};
    }

    std::shared_ptr<sim::TagReader> reader_;
    std::shared_ptr<sim::TagStream> stream_;
};

} // namespace zel::test
