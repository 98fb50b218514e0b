// SPDX-License-Identifier: MIT
// The sensor's settings, written by groups.
#include "tests/family/echo/sensor_test.h"

#include <utility>

using namespace zel::test;

namespace {

constexpr int kWriteExchanges = 15; // six blocks, commit, LUID

class EchoWrite : public FullSensorTest {
protected:
    EchoWrite() {
        EXPECT_EQ(zelecho_ReadCfg(), 1);
        bus().takeTrace();
        takePausedMicroseconds();
    }
};

} // namespace

TEST_F(EchoWrite, WithNothingMarkedStillCommitsWithMaskZero) {
    EXPECT_EQ(zelecho_WriteCfg(), 1);
    EXPECT_EQ(bus().takeTrace(), "> 90 00 00 00 00 00 00 00  commit\n");
}

TEST_F(EchoWrite, SendsAllBlocksInOrderWithTheirMask) {
    markAll(1);
    EXPECT_EQ(zelecho_WriteCfg(), 1);
    EXPECT_EQ(bus().takeTrace(), "> 80 00 00 00 00 00 00 00  block 0\n~ 250 ms\n"
                                 "> 01 3E 10 31 D0 02 01 05  block 0 data\n"
                                 "> 81 00 00 00 00 00 00 00  block 1\n~ 250 ms\n"
                                 "> 06 02 11 12 13 14 15 16  block 1 data\n"
                                 "> 82 00 00 00 00 00 00 00  block 2\n~ 250 ms\n"
                                 "> 03 21 22 23 24 25 26 27  block 2 data\n"
                                 "> 83 00 00 00 00 00 00 00  block 3\n~ 250 ms\n"
                                 "> 05 03 31 32 33 34 35 36  block 3 data\n"
                                 "> 84 00 00 00 00 00 00 00  block 4\n~ 250 ms\n"
                                 "> 04 41 42 43 44 45 46 47  block 4 data\n"
                                 "> 85 00 00 00 00 00 00 00  block 5\n~ 250 ms\n"
                                 "> 0A 51 52 53 54 55 56 57  block 5 data\n"
                                 "> 90 3F 00 00 00 00 00 00  commit\n");
    EXPECT_EQ(dirtyGroups(), 0U);
}

TEST_F(EchoWrite, SendsMarkedGroupsAlone) {
    const std::pair<std::uint32_t tsEcho::*, std::pair<int, const char*>> rows[] = {
        {&tsEcho::bDirtySonar, {1, "> 90 01 "}},
        {&tsEcho::bDirtyWalkAway, {2, "> 90 06 "}},
        {&tsEcho::bDirtyWalkUp, {2, "> 90 18 "}},
        {&tsEcho::bDirtyIdle, {1, "> 90 20 "}},
    };
    for (const auto& [mark, expected] : rows) {
        SCOPED_TRACE(expected.second);
        echo().*mark = 0x100;
        const int before = bus().exchanges(port_);
        EXPECT_EQ(zelecho_WriteCfg(), 1);
        EXPECT_EQ(bus().exchanges(port_) - before, 2 * expected.first + 1);
        EXPECT_NE(bus().takeTrace().find(expected.second), std::string::npos);
        EXPECT_EQ(takePausedMicroseconds(), 250'000U * static_cast<unsigned>(expected.first));
        EXPECT_EQ(echo().*mark, 0U);
    }
}

TEST_F(EchoWrite, SendsTheLuidBehindZeros) {
    record().iLUID = 0xBEEF;
    record().bLUIDDirty = 1;
    EXPECT_EQ(zelecho_WriteCfg(), 1);
    EXPECT_EQ(bus().takeTrace(), "> 90 00 00 00 00 00 00 00  commit\n"
                                 "> 8A 00 00 00 00 00 00 00  identity\n~ 250 ms\n"
                                 "> 00 EF BE 00 00 00 00 00  identity data\n");
    EXPECT_EQ(sensor_->luid(), 0xBEEF);
    EXPECT_EQ(record().bLUIDDirty, 0U);
}

TEST_F(EchoWrite, SendsTheLuidInFrontOfWhatTheBlockBeforeHad) {
    record().iLUID = 0xBEEF;
    record().bLUIDDirty = 1;
    echo().bDirtyIdle = 1;
    EXPECT_EQ(zelecho_WriteCfg(), 1);
    const std::string trace = bus().takeTrace();
    EXPECT_NE(trace.find("> 00 EF BE 53 54 55 56 57  identity data\n"), std::string::npos) << trace;
}

TEST_F(EchoWrite, ThatFailsAtAnyExchangeKeepsItsMarksUntilTheCommit) {
    for (int n = 1; n <= kWriteExchanges; ++n) {
        markAll(1);
        record().iLUID = 0xBEEF;
        record().bLUIDDirty = 1;
        failAt(n);
        EXPECT_EQ(zelecho_WriteCfg(), 0) << n;
        EXPECT_EQ(record().lLastErr, 0x40000) << n;
        EXPECT_EQ(dirtyGroups(), n <= 13 ? 15U : 0U) << n;
        EXPECT_EQ(record().bLUIDDirty, 1U) << n;
        EXPECT_EQ(sensor_->luid(), 0x1234) << n;
        sensor_->powerUp();
    }
}

TEST_F(EchoWrite, ClearsAnOldErrorWord) {
    record().lLastErr = 0x1000;
    zelecho_WriteCfg();
    EXPECT_EQ(record().lLastErr, 0);
}

TEST_F(EchoWrite, CarriesNewLedFlagsOnlyWhenTheSonarRecordIsMarked) {
    zelecho_SetLEDCtrl(6);
    zelecho_WriteCfg();
    EXPECT_EQ(sensor_->settings()[0][0], 1);
    echo().bDirtySonar = 1;
    zelecho_WriteCfg();
    EXPECT_EQ(sensor_->settings()[0][0], 6);
}
