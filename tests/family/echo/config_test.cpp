// SPDX-License-Identifier: MIT
// The sensor's settings, read whole.
#include "tests/family/echo/sensor_test.h"

#include <algorithm>

using namespace zel::test;

namespace {

constexpr const char kReadTrace[] = "> 80 00 00 00 00 00 00 00  block 0\n"
                                    "~ 250 ms\n"
                                    "< 01 3E 10 31 D0 02 01 05\n"
                                    "< 81 00 00 00 00 00 00 00\n"
                                    "~ 250 ms\n"
                                    "< 06 02 11 12 13 14 15 16\n"
                                    "> 82 00 00 00 00 00 00 00  block 2\n"
                                    "~ 250 ms\n"
                                    "< F3 21 22 23 24 25 26 27\n"
                                    "> 83 00 00 00 00 00 00 00  block 3\n"
                                    "~ 250 ms\n"
                                    "< 05 03 31 32 33 34 35 36\n"
                                    "> 84 00 00 00 00 00 00 00  block 4\n"
                                    "~ 250 ms\n"
                                    "< F4 41 42 43 44 45 46 47\n"
                                    "> 85 00 00 00 00 00 00 00  block 5\n"
                                    "~ 250 ms\n"
                                    "< 5A 51 52 53 54 55 56 57\n"
                                    "> 8A 00 00 00 00 00 00 00  identity\n"
                                    "~ 250 ms\n"
                                    "< 34 12 10 05 39 31 3A 33\n";
constexpr int kReadExchanges = 14;

class EchoRead : public FullSensorTest {
protected:
    // A word of each block: it is not 0 once the block was decoded.
    static int decodedBlocks() {
        const tsEcho& e = echo();
        const short words[] = {e.sSonarParms.Reserved1S,    e.sWalkAwayParms.Key1ModsWA,
                               e.sWalkAwayParms.Key1CodeWA, e.sWalkUpParms.Key1ModsWU,
                               e.sWalkUpParms.Key1CodeWU,   e.sIdleParms.Key1ModsI};
        int count = 0;
        for (const short word : words)
            count += word != 0;
        return count;
    }
    static int rawRecords() {
        return (gsSonarParms2.Reserved1S != 0) + (gsWalkAwayParms2.Key1ModsWA != 0) +
               (gsWalkUpParms2.Key1ModsWU != 0) + (gsIdleParms2.Key1ModsI != 0);
    }
};

} // namespace

TEST_F(EchoRead, FetchesSixBlocksAndTheIdsWithBlockOneFetchedTwice) {
    EXPECT_EQ(zelecho_ReadCfg(), 1);
    EXPECT_EQ(bus().takeTrace(), kReadTrace);
    EXPECT_EQ(takePausedMicroseconds(), 1'750'000U);
}

TEST_F(EchoRead, FillsTheRecordsAndTheIds) {
    record().lLastErr = 0x1234;
    zelecho_ReadCfg();
    const tsEcho& e = echo();
    EXPECT_EQ(decodedBlocks(), 6);
    EXPECT_EQ(e.sSonarParms.MaxDistS, 60);
    EXPECT_EQ(e.sWalkAwayParms.InterKeyDelayWA, 128);
    EXPECT_EQ(e.sWalkAwayParms.Key6CodeWA, 0x27);
    EXPECT_EQ(e.sWalkUpParms.Flags0WU, 0xF4);
    EXPECT_EQ(e.sIdleParms.SNBlankTmI, 0x57);
    EXPECT_EQ(e.bEchoCfgValid, 1U);
    EXPECT_EQ(record().iLUID, 0x1234);
    EXPECT_EQ(record().iDID, 0x0510);
    EXPECT_EQ(record().iFWVer, 0x91A3);
    EXPECT_EQ(record().lLastErr, 0);
}

TEST_F(EchoRead, ForgetsWhatWasMarkedForWriting) {
    markAll(1);
    record().bLUIDDirty = 1;
    zelecho_ReadCfg();
    EXPECT_EQ(dirtyGroups(), 0U);
    EXPECT_EQ(record().bLUIDDirty, 0U);
}

TEST_F(EchoRead, RepairsInMemoryAndKeepsTheRawWordsBeside) {
    sensor_->settings()[0] = {1, 255, 16, 255, 3, 2, 1, 5};
    sensor_->settings()[1] = {7, 0, 1, 1, 1, 1, 1, 1};
    sensor_->settings()[3] = {0xFF, 0, 1, 1, 1, 1, 1, 1};
    EXPECT_EQ(zelecho_ReadCfg(), 1);
    const tsEcho& e = echo();
    EXPECT_EQ(e.sSonarParms.PingRateS, 1020);
    EXPECT_EQ(e.sSonarParms.MinDistS, 59);
    EXPECT_EQ(e.sSonarParms.MaxDistS, 15);
    EXPECT_EQ(e.sWalkAwayParms.KeyCountWA, 0);
    EXPECT_EQ(e.sWalkAwayParms.InterKeyDelayWA, 64);
    EXPECT_EQ(e.sWalkUpParms.KeyCountWU, 0);
    EXPECT_EQ(gsSonarParms2.MinDistS, 73);
    EXPECT_EQ(gsSonarParms2.MaxDistS, 1);
    EXPECT_EQ(gsWalkAwayParms2.KeyCountWA, 7);
    EXPECT_EQ(gsWalkAwayParms2.InterKeyDelayWA, 0);
    EXPECT_EQ(gsWalkUpParms2.KeyCountWU, 15);
    EXPECT_EQ(dirtyGroups(), 0U);
    EXPECT_EQ(record().lLastErr, 0);
}

TEST_F(EchoRead, ThatFailsAtAnyExchangeKeepsWhatCameBefore) {
    for (int n = 1; n <= kReadExchanges; ++n) {
        echo() = {};
        markAll(1);
        gsSonarParms2 = {}, gsWalkAwayParms2 = {}, gsWalkUpParms2 = {}, gsIdleParms2 = {};
        record().iLUID = 0x77;
        failAt(n);
        EXPECT_EQ(zelecho_ReadCfg(), 0) << n;
        EXPECT_EQ(record().lLastErr, 0x20000) << n;
        const int whole = (n - 1) / 2;
        EXPECT_EQ(decodedBlocks(), std::min(whole, 6)) << n;
        EXPECT_EQ(rawRecords(), (whole >= 1) + (whole >= 3) + (whole >= 5) + (whole >= 6)) << n;
        EXPECT_EQ(echo().bEchoCfgValid, whole == 6 ? 1U : 0U) << n;
        EXPECT_EQ(dirtyGroups(), whole == 6 ? 0U : 15U) << n;
        EXPECT_EQ(record().iLUID, 0x77) << n;
        sensor_->powerUp();
    }
}

TEST_F(EchoRead, ThatFailsAtTheIdsLeavesSettingsThatTheGetsAnswer) {
    failAt(kReadExchanges);
    EXPECT_EQ(zelecho_ReadCfg(), 0);
    sIdleParms idle = {};
    EXPECT_EQ(zelecho_GetIdleParms(&idle), 1);
    EXPECT_EQ(idle.PressRateI, 0x51);
}

TEST_F(EchoRead, OutlivesASendThatFailsFiveTimes) {
    bus().failExchange(port_, 1, 5);
    EXPECT_EQ(zelecho_ReadCfg(), 1);
}

TEST_F(EchoRead, WithoutAHandleFailsAtOnce) {
    iDevsFnd = 2;
    iActDev = 1;
    EXPECT_EQ(zelecho_ReadCfg(), 0);
    EXPECT_EQ(DevDat[1].lLastErr, 0x20000);
    EXPECT_EQ(bus().takeTrace(), "");
}

TEST_F(EchoRead, IsReachedByTheExportedCall) {
    EXPECT_EQ(ReadCfg(), 1);
    EXPECT_EQ(bus().takeTrace(), kReadTrace);
    EXPECT_EQ(WriteCfg(), 1);
    EXPECT_EQ(bus().takeTrace(), "> 90 00 00 00 00 00 00 00  commit\n");
}

TEST_F(EchoRead, ThatGetsNoAnnouncementOfBlockOneFails) {
    bus().failExchange(port_, 3);
    EXPECT_EQ(zelecho_ReadCfg(), 0) << "a fetch isn't tried again";
    EXPECT_EQ(bus().exchanges(port_), 3);
}
