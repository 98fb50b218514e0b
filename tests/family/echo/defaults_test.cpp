// SPDX-License-Identifier: MIT
// The sensor's returns to stored settings, and the storing of them.
#include "tests/family/echo/sensor_test.h"

using namespace zel::test;
using namespace zel::sim;

namespace {

constexpr int kReadExchanges = 14;

class EchoDefaults : public SensorTest {
protected:
    void connectKind(std::uint16_t deviceId) {
        EchoOptions options;
        options.deviceId = deviceId;
        options.factory[5][4] = 0x33; // FlagsI
        connectSensor(options);
    }
    // The lines in front of the read.
    static std::string start() {
        const std::string trace = bus().takeTrace();
        return trace.substr(0, trace.find("> 80"));
    }
};

struct Return {
    int (*run)();
    const char* start;
};
constexpr Return kReturns[] = {
    {zelecho_ResetFactoryDflts, "> A0 00 00 00 00 00 00 00  factory defaults\n~ 2000 ms\n"},
    {zelecho_ResetUserDflts, "> D0 00 00 00 00 00 00 00  user defaults\n~ 2000 ms\n"},
    {zelecho_SaveUserDflts, "> E0 00 00 00 00 00 00 00  save user defaults\n~ 2000 ms\n"},
};

} // namespace

TEST_F(EchoDefaults, TakeTwoSecondsAndARead) {
    connectKind(0x0510);
    for (const Return& row : kReturns) {
        SCOPED_TRACE(row.start);
        const int before = bus().exchanges(port_);
        EXPECT_EQ(row.run(), 1);
        EXPECT_EQ(bus().exchanges(port_) - before, 1 + kReadExchanges);
        EXPECT_EQ(start(), row.start);
        EXPECT_EQ(takePausedMicroseconds(), 3'750'000U);
        EXPECT_EQ(record().lLastErr, 0);
    }
}

TEST_F(EchoDefaults, AreReachedByTheExportedCalls) {
    connectKind(0x0510);
    int row = 0;
    for (int (*run)() : {ResetFactoryDflts, ResetUserDflts, SaveUserDflts}) {
        EXPECT_EQ(run(), 1);
        EXPECT_EQ(start(), kReturns[row++].start);
    }
}

TEST_F(EchoDefaults, ThatCannotBeSentReadNothing) {
    connectKind(0x0510);
    for (const Return& row : kReturns) {
        SCOPED_TRACE(row.start);
        record().lLastErr = 0x1000;
        failAt(1);
        EXPECT_EQ(row.run(), 0);
        EXPECT_EQ(record().lLastErr, 0x80000);
        EXPECT_EQ(echo().bEchoCfgValid, 0U);
    }
}

TEST_F(EchoDefaults, ThatCannotBeReadBehindFail) {
    connectKind(0x0400);
    for (const Return& row : kReturns) {
        for (int n = 2; n <= 1 + kReadExchanges; ++n) {
            failAt(n);
            EXPECT_EQ(row.run(), 0) << n;
            EXPECT_EQ(record().lLastErr, 0x20000) << n;
            EXPECT_EQ(dirtyGroups(), 0U) << n;
            sensor_->powerUp();
        }
    }
}

TEST_F(EchoDefaults, SetTheHaltWordToOneBeforeTheyAreSent) {
    connectKind(0x0510);
    for (const auto& run : {zelecho_ResetFactoryDflts, zelecho_ResetUserDflts}) {
        echo().bEchoHalt = 177;
        failAt(1);
        run();
        EXPECT_EQ(echo().bEchoHalt, 1U);
    }
}

TEST_F(EchoDefaults, ThatAreSavedKeepTheHaltWord) {
    connectKind(0x0510);
    echo().bEchoHalt = 177;
    zelecho_SaveUserDflts();
    EXPECT_EQ(echo().bEchoHalt, 177U);
}

TEST_F(EchoDefaults, OfTheUserAreWhatWasSaved) {
    connectKind(0x0510);
    sensor_->settings()[5][1] = 9;
    zelecho_SaveUserDflts();
    sensor_->settings()[5][1] = 4;
    zelecho_ResetUserDflts();
    EXPECT_EQ(echo().sIdleParms.PressRateI, 9);
    zelecho_ResetFactoryDflts();
    EXPECT_EQ(echo().sIdleParms.PressRateI, 0);
}

TEST_F(EchoDefaults, OfTheFactoryKeepTheIdleFlagsOfANewerKind) {
    connectKind(0x0510);
    for (const unsigned kind : {0x03F0U, 0x0410U, 0x0510U, 0x1400U}) {
        sensor_->replyWith(
            {0x8A}, {0, 0, static_cast<std::uint8_t>(kind), static_cast<std::uint8_t>(kind >> 8U)});
        EXPECT_EQ(zelecho_ResetFactoryDflts(), 1);
        EXPECT_EQ(echo().sIdleParms.FlagsI, 0x33) << kind;
    }
}

TEST_F(EchoDefaults, OfTheFactoryClearTheIdleFlagsOfTheOlderKind) {
    connectKind(0x040F);
    EXPECT_EQ(zelecho_ResetFactoryDflts(), 1);
    const std::string trace = bus().takeTrace();
    EXPECT_NE(trace.find("> 85 00 00 00 00 00 00 00  block 5\n~ 250 ms\n"
                         "> 00 00 00 00 00 07 1E 17  block 5 data\n"
                         "> 90 20 00 00 00 00 00 00  commit\n"
                         "> 80 00 00 00 00 00 00 00  block 0\n"),
              std::string::npos)
        << trace;
    EXPECT_EQ(sensor_->committed()[5][4], 0);
    EXPECT_EQ(echo().sIdleParms.FlagsI, 0);
    EXPECT_EQ(takePausedMicroseconds(), 2'000'000U + 2 * 1'750'000U + 250'000U);
}

// The write is exchanges 16 to 18.
TEST_F(EchoDefaults, OfTheOlderKindGoOnWhenTheWriteFails) {
    connectKind(0x0400);
    for (int n = 16; n <= 18; ++n) {
        failAt(n);
        EXPECT_EQ(zelecho_ResetFactoryDflts(), 1) << n;
        EXPECT_EQ(record().lLastErr, 0) << n;
        EXPECT_EQ(dirtyGroups(), 0U) << n;
    }
}

TEST_F(EchoDefaults, OfTheOlderKindFailWithTheirSecondRead) {
    connectKind(0x0400);
    for (int n = 19; n < 19 + kReadExchanges; ++n) {
        failAt(n);
        EXPECT_EQ(zelecho_ResetFactoryDflts(), 0) << n;
        EXPECT_EQ(record().lLastErr, 0x20000) << n;
        sensor_->powerUp();
    }
}
