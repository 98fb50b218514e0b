// SPDX-License-Identifier: MIT
#include "base/data_by_byte.h"

#include <gtest/gtest.h>

using zel::DataByByte;

namespace {

constexpr int kRead = -1;

// Reads three bytes; the second one's sign bit is set.
std::int64_t readThree(unsigned char* bytes, unsigned size) {
    EXPECT_EQ(size, 4U);
    bytes[0] = 0x11;
    bytes[1] = 0xFE;
    bytes[2] = 0x7F;
    return 3;
}

std::int64_t readAll(unsigned char* bytes, unsigned size) {
    std::memset(bytes, 0x22, size);
    return size;
}

std::int64_t readNothing(unsigned char*, unsigned) { return 0; }

std::int64_t fail(unsigned char*, unsigned) { return -1; }

} // namespace

TEST(DataByByte, IsZeroBeforeTheFirstRead) {
    DataByByte<4> data;
    for (const int index : {0, 1, 2, 3})
        EXPECT_EQ(data.at(index, readThree), 0) << index;
}

TEST(DataByByte, YieldsTheCountThenTheBytesSignExtended) {
    DataByByte<4> data;
    EXPECT_EQ(data.at(kRead, readThree), 3);
    EXPECT_EQ(data.at(0, fail), 0x11);
    EXPECT_EQ(data.at(1, fail), -2);
    EXPECT_EQ(data.at(2, fail), 0x7F);
    EXPECT_EQ(data.at(3, fail), 0);
}

TEST(DataByByte, YieldsZeroForAnIndexOutside) {
    DataByByte<4> data;
    EXPECT_EQ(data.at(kRead, readAll), 4);
    EXPECT_EQ(data.at(3, fail), 0x22);
    for (const int index : {4, 5, 32767, -2, -32768})
        EXPECT_EQ(data.at(index, fail), 0) << index;
}

TEST(DataByByte, ClearsTheBufferBeforeItReads) {
    DataByByte<4> data;
    data.at(kRead, readAll);
    EXPECT_EQ(data.at(kRead, readNothing), 0);
    for (const int index : {0, 1, 2, 3})
        EXPECT_EQ(data.at(index, fail), 0) << index;
}

TEST(DataByByte, PassesAFailureOn) {
    DataByByte<4> data;
    EXPECT_EQ(data.at(kRead, fail), -1);
}
