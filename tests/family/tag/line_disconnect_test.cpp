// SPDX-License-Identifier: MIT
// What is left of a proximity reader whose line was closed.
#include "family/tag/tag.h"
#include "tests/family/line_scan.h"
#include "transport/serial_lines.h"

using namespace zel::test;

namespace {
class TagComDisconnect : public LineScan {};
} // namespace

TEST_F(TagComDisconnect, ClosesTheLineAndKeepsTheRecordAndTheObject) {
    attachTag(1);
    zeltag_comConnect();
    told();
    EXPECT_EQ(zeltag_ComDisconnect(), 1);
    EXPECT_EQ(told(), "close /dev/ttySIM1\n");
    EXPECT_EQ(GetDevCnt(), 1);
    EXPECT_EQ(GetProduct(), 1U);
    EXPECT_TRUE(IsComPortInUse(1));
    EXPECT_EQ(zeltag_ComDisconnect(), 1) << "there is an object still";
}

TEST_F(TagComDisconnect, LeavesCallsToFailAtTheTransport) {
    attachTag(1);
    zeltag_comConnect();
    zeltag_ComDisconnect();
    told();
    EXPECT_EQ(zeltag_IsDevicePresent(), 0);
    EXPECT_EQ(ReadCfg(), 0);
    EXPECT_EQ(GetLastLibErr(), 0x20000);
    EXPECT_EQ(lLastICSWErr, 0U);
    EXPECT_EQ(told(), "");
}

TEST_F(TagComDisconnect, OfARecordWithoutALineIsZero) {
    connectReader();
    EXPECT_EQ(zeltag_ComDisconnect(), 0);
    EXPECT_EQ(bus().takeTrace(), "");
}

TEST_F(TagComDisconnect, IsNotNeededWhereTheRecordIsSetUpAnew) {
    attachTag(1);
    zeltag_comConnect();
    told();
    iDevsFnd = 0;
    zeltag_SetSerialPort(5, 9600);
    EXPECT_EQ(told(), "close /dev/ttySIM1\n");
    EXPECT_TRUE(IsComPortInUse(5));
    EXPECT_FALSE(IsComPortInUse(1));
}
