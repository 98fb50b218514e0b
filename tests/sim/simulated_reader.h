// SPDX-License-Identifier: MIT
// A simulated reader by itself, spoken to as the bus does.
#pragma once

#include "sim/tag/reader.h"

#include <gtest/gtest.h>
#include <utility>

namespace zel::test {

class SpokenReader : public sim::TagReader {
public:
    using TagReader::TagReader;

    Block query(const Block& command) {
        EXPECT_TRUE(take(0, command));
        Block reply = {};
        EXPECT_TRUE(answer(0, reply));
        return reply;
    }
    void write(const Block& command, const Block& data) {
        EXPECT_TRUE(take(0, command));
        EXPECT_TRUE(take(0, data));
    }
    void command(const Block& command) { EXPECT_TRUE(take(0, command)); }
};

} // namespace zel::test
