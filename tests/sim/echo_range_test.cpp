// SPDX-License-Identifier: MIT
// What the simulated presence sensor sees, and the pauses that it wants.
#include "tests/sim/spoken_sensor.h"

using namespace zel::sim;

namespace {

class SensorRange : public zel::test::SpokenSensor {};
class SensorPause : public zel::test::SpokenSensor {};

} // namespace

TEST_F(SensorRange, IsStatusAndUnitsOfAboutSevenMillimetres) {
    // 3.472222 units an inch, rounded: 13 in 45.1, 14 in 48.6, 16 in 55.6, 60 in 208.3, 61 in 211.8
    EXPECT_EQ(range(), "00 00") << "nothing is there";
    sensor_.place(13);
    EXPECT_EQ(range(), "00 2D");
    sensor_.place(14);
    EXPECT_EQ(range(), "01 31");
    sensor_.place(16);
    EXPECT_EQ(range(), "01 38");
    sensor_.place(60);
    EXPECT_EQ(range(), "01 D0");
    sensor_.place(61);
    EXPECT_EQ(range(), "00 D4");
    sensor_.place(74);
    EXPECT_EQ(range(), "00 FF");
}

TEST_F(SensorRange, FollowsAScript) {
    sensor_.follow({{500, 20}, {1'000, 30}, {1'500, 0}});
    EXPECT_EQ(range(), "00 00") << "after 250 ms";
    EXPECT_EQ(range(), "01 45") << "after 500 ms";
    usleep(249'000);
    EXPECT_EQ(range(), "01 45") << "after 999 ms";
    EXPECT_EQ(range(), "01 68") << "after 1249 ms";
    usleep(1'000);
    EXPECT_EQ(range(), "00 00") << "after 1500 ms";
}

TEST_F(SensorRange, IsWithinTheLimitsInForce) {
    sensor_.place(10);
    write({0x80}, {0, 50, 0, 35, 35, 0, 0, 0});
    EXPECT_EQ(range(), "01 23");
    sensor_.settings()[0][3] = 36;
    EXPECT_EQ(range(), "00 23");
    sensor_.settings()[0][3] = 0;
    sensor_.place(0);
    EXPECT_EQ(range(), "00 00") << "nothing is never within";
}

TEST_F(SensorRange, HasTheOtherBitsThatItIsTold) {
    sensor_.setStatus(0x87);
    EXPECT_EQ(range(), "86 00");
    sensor_.place(20);
    EXPECT_EQ(range(), "87 45");
}

TEST_F(SensorPause, LiesBetweenCommandAndReply) {
    send({0x8F});
    usleep(kDataPause - 100);
    EXPECT_EQ(fetch(), "00 00 00 00 00 00 00 00");
    EXPECT_EQ(sensor_.lastViolation(), "range reply, 100 us too early");
    EXPECT_EQ(sensor_.takeRemark(), "too early");
    EXPECT_EQ(sensor_.takeRemark(), "");
    expectedViolations_ = 1;
}

TEST_F(SensorPause, LiesBetweenCommandAndData) {
    send({0x82});
    send({1});
    EXPECT_EQ(sensor_.lastViolation(), "block 2 data, 250000 us too early");
    EXPECT_EQ(hexOf(sensor_.settings()[2]), "01 00 00 00 00 00 00 00");
    expectedViolations_ = 1;
}

TEST_F(SensorPause, LiesBetweenAnnouncementAndData) {
    fetch();
    fetch();
    EXPECT_EQ(sensor_.lastViolation(), "block 1 reply, 250000 us too early");
    expectedViolations_ = 1;
}

TEST_F(SensorPause, LiesBehindWhatChangesTheDefaults) {
    for (const char command : {'\xA0', '\xD0', '\xE0'}) {
        SCOPED_TRACE(int{static_cast<std::uint8_t>(command)});
        send({static_cast<std::uint8_t>(command)});
        usleep(kResetPause - 1'000);
        send({0x80});
        EXPECT_EQ(sensor_.lastViolation(), "block 0, 1000 us too early");
        usleep(kDataPause);
        EXPECT_EQ(fetch(), kBlock0);
    }
    send({0xA0});
    EXPECT_EQ(fetch(), "81 00 00 00 00 00 00 00");
    EXPECT_EQ(sensor_.lastViolation(), "announcement, 2000000 us too early");
    expectedViolations_ = 4;
}

TEST_F(SensorPause, IsNotBehindACommitOrAHalt) {
    send({0x90});
    send({0xB1});
    send({0x90});
    EXPECT_EQ(query({0x80}), kBlock0);
}
