// SPDX-License-Identifier: MIT
// The simulated presence sensor by itself, against its wire format.
#include "tests/sim/spoken_sensor.h"

using namespace zel::sim;

namespace {

class SimulatedSensor : public zel::test::SpokenSensor {};
class SensorBlock : public zel::test::SpokenSensor {};
class SensorDefaults : public zel::test::SpokenSensor {};

} // namespace

TEST_F(SensorBlock, IsDeliveredBehindItsCommand) {
    EXPECT_EQ(query({0x80}), kBlock0);
    EXPECT_EQ(query({0x81}), kBlock1);
    EXPECT_EQ(query({0x82}), "01 00 0F 00 00 00 00 00");
    EXPECT_EQ(query({0x83}), "01 02 00 00 00 00 00 00");
    EXPECT_EQ(query({0x84}), "01 00 29 00 00 00 00 00");
    EXPECT_EQ(query({0x85}), "00 00 00 00 00 07 1E 17");
}

TEST_F(SensorBlock, OneIsAnnouncedToAFetchWithoutACommand) {
    EXPECT_EQ(query({0x80}), kBlock0);
    EXPECT_EQ(fetch(), "81 00 00 00 00 00 00 00");
    usleep(kDataPause);
    EXPECT_EQ(fetch(), kBlock1);
    EXPECT_EQ(fetch(), "81 00 00 00 00 00 00 00") << "and once more";
}

TEST_F(SensorBlock, OneThatWasAnnouncedIsNotWritten) {
    fetch();
    send({0x80});
    usleep(kDataPause);
    EXPECT_EQ(fetch(), kBlock0);
    EXPECT_EQ(query({0x81}), kBlock1);
}

TEST_F(SensorBlock, IsWrittenByTheReportBehindItsCommand) {
    write({0x81}, {6, 3, 1, 2, 3, 4, 5, 6});
    write({0x85}, {9, 8, 7, 6, 5, 4, 3, 2});
    EXPECT_EQ(query({0x81}), "06 03 01 02 03 04 05 06");
    EXPECT_EQ(query({0x85}), "09 08 07 06 05 04 03 02");
    EXPECT_EQ(query({0x80}), kBlock0);
}

TEST_F(SensorBlock, ZeroKeepsItsThirdByte) {
    write({0x80}, {0x7F, 50, 0xAA, 51, 200, 3, 4, 6});
    EXPECT_EQ(query({0x80}), "7F 32 10 33 C8 03 04 06");
}

TEST_F(SensorBlock, OutlivesALossOfPowerWhenTheCommitNamesIt) {
    write({0x81}, {2, 2, 2, 2, 2, 2, 2, 2});
    write({0x82}, {3, 3, 3, 3, 3, 3, 3, 3});
    write({0x85}, {4, 4, 4, 4, 4, 4, 4, 4});
    send({0x90, 0x22});
    write({0x81}, {5, 5, 5, 5, 5, 5, 5, 5});
    EXPECT_EQ(sensor_.committed()[1], (Block{2, 2, 2, 2, 2, 2, 2, 2}));
    sensor_.powerUp();
    EXPECT_EQ(query({0x81}), "02 02 02 02 02 02 02 02");
    EXPECT_EQ(query({0x82}), "01 00 0F 00 00 00 00 00");
    EXPECT_EQ(query({0x85}), "04 04 04 04 04 04 04 04");
}

TEST_F(SensorBlock, TakesLostDataWhenItIsSentAgain) {
    send({0x83});
    usleep(kDataPause);
    sensor_.sendLost(Block{1, 2, 3});
    send({1, 2, 3});
    EXPECT_EQ(query({0x83}), "01 02 03 00 00 00 00 00");
}

TEST_F(SensorBlock, StaysWhenTheHostGaveUpOnLostData) {
    send({0x83});
    usleep(kDataPause);
    sensor_.sendLost(Block{1, 2, 3});
    EXPECT_EQ(query({0x81}), kBlock1);
    EXPECT_EQ(query({0x83}), "01 02 00 00 00 00 00 00");
}

TEST_F(SensorBlock, StaysWhenItsReplyWasLost) {
    send({0x83});
    usleep(kDataPause);
    sensor_.replyLost();
    EXPECT_EQ(query({0x81}), kBlock1);
    EXPECT_EQ(query({0x83}), "01 02 00 00 00 00 00 00");
}

TEST_F(SimulatedSensor, TellsLuidDeviceAndVersion) {
    EchoSensor other({.luid = 0x1234, .deviceId = 0x0402, .firmwareVersion = 0x5A3C});
    other.take(0, Block{0x8A});
    usleep(kDataPause);
    Block reply = {};
    EXPECT_TRUE(other.answer(0, reply));
    EXPECT_EQ(hexOf(reply), "34 12 02 04 35 3A 33 3C");
}

TEST_F(SimulatedSensor, KeepsItsLuidAtOnceAndForGood) {
    write({0x8A}, {0, 0x78, 0x56, 0xEE});
    EXPECT_EQ(sensor_.luid(), 0x5678);
    sensor_.powerUp();
    reset(0xA0);
    EXPECT_EQ(query({0x8A}), "78 56 10 05 30 31 32 33");
}

TEST_F(SimulatedSensor, SendsKeysUntilItIsHalted) {
    EXPECT_FALSE(sensor_.isHalted());
    send({0xB1});
    EXPECT_TRUE(sensor_.isHalted());
    send({0xB0});
    EXPECT_FALSE(sensor_.isHalted());
    send({0xB1});
    sensor_.powerUp();
    EXPECT_FALSE(sensor_.isHalted());
}

TEST_F(SimulatedSensor, RefusesAnotherReportIdAndAnotherLength) {
    const std::uint8_t tooShort[7] = {};
    EXPECT_FALSE(sensor_.take(1, Block{0x8F}));
    EXPECT_FALSE(sensor_.take(0, tooShort));
    Block reply = {};
    EXPECT_FALSE(sensor_.answer(1, reply));
}

TEST_F(SimulatedSensor, AnswersAsItIsTold) {
    sensor_.replyWith({0x8A}, {1, 2, 3});
    sensor_.replyWith({0x80}, {4, 5, 6});
    EXPECT_EQ(query({0x8A}), "01 02 03 00 00 00 00 00");
    EXPECT_EQ(query({0x80}), "04 05 06 00 00 00 00 00");
    EXPECT_EQ(query({0x81}), kBlock1);
}

TEST_F(SimulatedSensor, NamesItsCommands) {
    EXPECT_EQ(sensor_.nameOf(Block{0x8F}), "range");
    EXPECT_EQ(sensor_.nameOf(Block{0x83}), "block 3");
    EXPECT_EQ(sensor_.nameOf(Block{0x86}), "");
    send({0x83});
    EXPECT_EQ(sensor_.nameOf(Block{0x8F}), "block 3 data");
}

TEST_F(SensorDefaults, OfTheFactoryAreInForceAndKept) {
    write({0x80}, {1, 1, 1, 1, 1, 1, 1, 1});
    send({0x90, 0x3F});
    reset(0xA0);
    EXPECT_EQ(query({0x80}), kBlock0);
    sensor_.powerUp();
    EXPECT_EQ(query({0x80}), kBlock0);
}

TEST_F(SensorDefaults, OfTheUserAreThoseThatWereSaved) {
    write({0x81}, {2, 2, 2, 2, 2, 2, 2, 2});
    reset(0xE0);
    EXPECT_EQ(sensor_.userDefaults()[1], (Block{2, 2, 2, 2, 2, 2, 2, 2}));
    EXPECT_EQ(hexOf(sensor_.committed()[1]), kBlock1) << "saving isn't a commit";
    reset(0xA0);
    EXPECT_EQ(query({0x81}), kBlock1);
    reset(0xD0);
    EXPECT_EQ(query({0x81}), "02 02 02 02 02 02 02 02");
    sensor_.powerUp();
    EXPECT_EQ(query({0x81}), "02 02 02 02 02 02 02 02");
}

TEST_F(SensorDefaults, OfTheUserAreThoseOfTheFactoryAtFirst) {
    write({0x81}, {2, 2, 2, 2, 2, 2, 2, 2});
    reset(0xD0);
    EXPECT_EQ(query({0x81}), kBlock1);
}
