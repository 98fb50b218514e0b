// SPDX-License-Identifier: MIT
// What a sensor tells in place of an identifier.
#include "tests/family/echo/sensor_test.h"

#include <algorithm>
#include <array>

using namespace zel::test;

namespace {

constexpr const char kQuery[] = "> 8F 00 00 00 00 00 00 00  range\n~ 250 ms\n";

class EchoIdentifier : public SensorTest {
protected:
    EchoIdentifier() {
        connectSensor();
        DevDat[0].iLUID = 0x1234;
        sensor_->place(40);
    }
    static constexpr std::size_t kRoom = 48;
    static std::array<unsigned char, kRoom> expected(int size) {
        std::array<unsigned char, kRoom> bytes;
        bytes.fill(0xEE);
        const int written = size == 3 ? 2 : size;
        constexpr unsigned char kReport[] = {1, 40, 0x34, 0x12};
        for (int i = 0; i < written; ++i)
            bytes[static_cast<std::size_t>(i)] = i < 4 ? kReport[i] : 0;
        return bytes;
    }
};

} // namespace

TEST_F(EchoIdentifier, FillsTheWholeBufferButForTheThirdByteOfThree) {
    for (short size = 0; size <= 40; ++size) {
        std::array<unsigned char, kRoom> buffer;
        buffer.fill(0xEE);
        EXPECT_EQ(zelecho_GetActiveID(buffer.data(), size), 4) << size;
        EXPECT_EQ(buffer, expected(size)) << size;
        const std::string asked =
            size == 0 ? "" : kQuery + std::string("< 01 8B 00 00 00 00 00 00\n");
        EXPECT_EQ(bus().takeTrace(), asked) << size;
    }
}

TEST_F(EchoIdentifier, FillsThe32ByteBufferOfTheLongReadToo) {
    std::array<unsigned char, kRoom> buffer;
    buffer.fill(0xEE);
    EXPECT_EQ(zelecho_GetActiveID32(buffer.data(), 32), 4);
    EXPECT_EQ(buffer, expected(32));
}

TEST_F(EchoIdentifier, IsKeptByTheExportedCall) {
    std::array<unsigned char, kRoom> buffer;
    buffer.fill(0xEE);
    EXPECT_EQ(GetActiveID(buffer.data(), 32), 4);
    EXPECT_EQ(buffer, expected(32));
    EXPECT_TRUE(std::equal(activeIDBuf, activeIDBuf + 32, buffer.begin()));
}

TEST_F(EchoIdentifier, WritesNothingForASizeBelowZero) {
    unsigned char byte = 0xEE;
    EXPECT_EQ(zelecho_GetActiveID(&byte, -1), 4);
    EXPECT_EQ(byte, 0xEE);
}

TEST_F(EchoIdentifier, IsFourBytesEvenWhenTheSensorDoesNotAnswer) {
    failAt(2);
    unsigned char buffer[4] = {9, 9, 9, 9};
    EXPECT_EQ(zelecho_GetActiveID(buffer, 4), 4);
    EXPECT_EQ(buffer[0], 0);
    EXPECT_EQ(buffer[1], 0);
    EXPECT_EQ(buffer[2], 0x34);
    EXPECT_EQ(record().lLastErr, 0x1000000);
}

TEST_F(EchoIdentifier, AloneOfTheCallsOnCardsHasAnAnswer) {
    EXPECT_EQ(zelecho_getActiveID(8) + zelecho_getActiveID32(32) + zelecho_getActiveID_byte(0), 0);
    EXPECT_EQ(zelecho_SetRawPayload_index(8, 1) + zelecho_GetRawPayload_index(11), 0);
    EXPECT_EQ(zelecho_GetQueuedID(1, 1), 0);
    EXPECT_EQ(zelecho_GetQueuedID_index(40), 0);
    sTimeParms times = {};
    EXPECT_EQ(zelecho_GetTimeParms(&times) + zelecho_SetTimeParms(&times), 0);
    EXPECT_EQ(bus().takeTrace(), "");
}
