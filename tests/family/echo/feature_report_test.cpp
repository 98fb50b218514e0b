// SPDX-License-Identifier: MIT
// The sensor's reports and the pause between a command and what belongs to it.
#include "family/echo/feature_report.h"

#include "tests/family/echo/sensor_test.h"

using namespace zel::test;
using namespace zel::echo;
using zel::sim::Fault;

namespace {

class EchoReport : public SensorTest {
protected:
    EchoReport() { connectSensor(); }
};

} // namespace

TEST_F(EchoReport, IsEightBytesWithZerosBehindTheCommand) {
    EXPECT_EQ(command(Opcode::Commit, 0x21), (Payload{0x90, 0x21, 0, 0, 0, 0, 0, 0}));
    EXPECT_TRUE(send(command(Opcode::Commit)));
    EXPECT_EQ(bus().takeTrace(), "> 90 00 00 00 00 00 00 00  commit\n");
}

TEST_F(EchoReport, IsFetchedAQuarterOfASecondBehindItsCommand) {
    Payload reply;
    EXPECT_TRUE(query({0x80}, reply));
    EXPECT_EQ(reply, (Payload{1, 62, 16, 49, 208, 2, 1, 5}));
    EXPECT_EQ(takePausedMicroseconds(), 250'000U);
}

TEST_F(EchoReport, IsFollowedByItsDataAQuarterOfASecondLater) {
    EXPECT_TRUE(write({0x85}, {1, 2, 3, 4, 5, 6, 7, 8}));
    EXPECT_EQ(bus().takeTrace(), "> 85 00 00 00 00 00 00 00  block 5\n~ 250 ms\n"
                                 "> 01 02 03 04 05 06 07 08  block 5 data\n");
}

TEST_F(EchoReport, ThatArrivesShortEndsInZeros) {
    Payload reply;
    reply.fill(0xEE);
    bus().fail(port_, Fault::ShortAnswer);
    EXPECT_TRUE(query({0x80}, reply));
    EXPECT_EQ(reply, (Payload{1, 62, 16, 0, 0, 0, 0, 0}));
}

TEST_F(EchoReport, ThatCannotBeSentIsTriedSixTimesAndNothingFollows) {
    failAt(1);
    Payload reply;
    EXPECT_FALSE(query({0x80}, reply));
    EXPECT_EQ(bus().exchanges(port_), 6);
    EXPECT_EQ(takePausedMicroseconds(), 480'000U);
}

TEST_F(EchoReport, WhoseDataCannotBeSentFails) {
    failAt(2);
    EXPECT_FALSE(write({0x85}, {}));
}

TEST_F(EchoReport, ThatIsNotFetchedFailsAtOnce) {
    failAt(2);
    Payload reply;
    EXPECT_FALSE(query({0x80}, reply));
    EXPECT_EQ(bus().exchanges(port_), 2);
}
