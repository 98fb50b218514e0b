// SPDX-License-Identifier: MIT
// Gets, sets and checks of the sensor's records, in memory.
#include "tests/family/echo/sensor_test.h"
#include "tests/support/is_same.h"

#include <algorithm>

using namespace zel::test;

namespace {

class EchoRecords : public SensorTest {
protected:
    EchoRecords() {
        iDevsFnd = 1;
        DevDat[0].iProduct = 4;
    }
    ~EchoRecords() override { iDevsFnd = 0; }

    static std::int64_t error() { return DevDat[0].lLastErr; }
};

class EchoCheck : public EchoRecords {
protected:
    // Sets a word, checks strictly and with repair: the code, the result, the word behind.
    template <class Record>
    static void expectRange(int (*check)(Record*, int), const Record& good, short Record::*word,
                            int least, int most, std::int64_t code) {
        for (const int value : {-32768, -1, 0, least - 1, least, most, most + 1, 32767}) {
            Record record = good;
            record.*word = static_cast<short>(value);
            const bool inside = value >= least && value <= most;
            DevDat[0].lLastErr = 0;
            EXPECT_EQ(check(&record, 0), inside ? 1 : 0) << value;
            EXPECT_EQ(error(), inside ? 0 : code) << value;
            EXPECT_EQ(record.*word, value) << "a strict check repairs nothing";
            DevDat[0].lLastErr = 0;
            EXPECT_EQ(check(&record, 1), 1) << value;
            EXPECT_EQ(record.*word, std::clamp(value, least, most)) << value;
            EXPECT_EQ(error(), 0);
        }
    }
    template <class Record>
    static void expectKeyCount(int (*check)(Record*, int), const Record& good, short Record::*word,
                               std::int64_t code) {
        for (const int value : {-32768, -1, 0, 6, 7, 15, 32767}) {
            Record record = good;
            record.*word = static_cast<short>(value);
            DevDat[0].lLastErr = 0;
            EXPECT_EQ(check(&record, 0), value <= 6 ? 1 : 0) << value;
            EXPECT_EQ(error(), value <= 6 ? 0 : code) << value;
            EXPECT_EQ(check(&record, -1), 1) << value;
            EXPECT_EQ(record.*word, value <= 6 ? value : 0) << value;
        }
    }
};

constexpr sSonarParms kSonar = {1, 248, 16, 14, 60, 2, 1, 5};
constexpr sWalkAwayParms kAway = {3, 64, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14};
constexpr sWalkUpParms kUp = {2, 128, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 15};
constexpr sIdleParms kIdle = {-1, 32767, -32768, 4, 5, 6, 7, 8};

// A record set through its call, and its mark.
template <class Record>
void expectSet(int (*set)(Record*), const Record& good, Record tsEcho::*member,
               std::uint32_t tsEcho::*mark) {
    DevDat[0].Echo = {};
    DevDat[0].lLastErr = 0x77;
    Record record = good;
    EXPECT_EQ(set(&record), 1);
    tsEcho expected = {};
    expected.*member = good;
    expected.*mark = 1;
    EXPECT_TRUE(isSame(DevDat[0].Echo, expected)) << "that record and that mark, nothing else";
    EXPECT_EQ(DevDat[0].lLastErr, 0);
}

template <class Record>
void expectGet(int (*get)(Record*), const Record& good, Record tsEcho::*member) {
    DevDat[0].Echo = {};
    DevDat[0].Echo.*member = good;
    Record record = {};
    EXPECT_EQ(get(&record), 0);
    EXPECT_EQ(DevDat[0].lLastErr, 0x100002);
    EXPECT_TRUE(isSame(record, Record{})) << "never read: nothing copied";
    DevDat[0].Echo.bEchoCfgValid = 1;
    EXPECT_EQ(get(&record), 1);
    EXPECT_EQ(DevDat[0].lLastErr, 0);
    EXPECT_TRUE(isSame(record, good));
    EXPECT_EQ(get(nullptr), 0);
    EXPECT_EQ(DevDat[0].lLastErr, 0x100001);
}

} // namespace

TEST_F(EchoRecords, AreSetWithAMarkOfTheirOwnAndNoTraffic) {
    expectSet(zelecho_SetSonarParms, kSonar, &tsEcho::sSonarParms, &tsEcho::bDirtySonar);
    expectSet(zelecho_SetWalkAwayParms, kAway, &tsEcho::sWalkAwayParms, &tsEcho::bDirtyWalkAway);
    expectSet(zelecho_SetWalkUpParms, kUp, &tsEcho::sWalkUpParms, &tsEcho::bDirtyWalkUp);
    expectSet(zelecho_SetIdleParms, kIdle, &tsEcho::sIdleParms, &tsEcho::bDirtyIdle);
    EXPECT_EQ(bus().takeTrace(), "");
}

TEST_F(EchoRecords, AreGotOnlyBehindARead) {
    expectGet(zelecho_GetSonarParms, kSonar, &tsEcho::sSonarParms);
    expectGet(zelecho_GetWalkAwayParms, kAway, &tsEcho::sWalkAwayParms);
    expectGet(zelecho_GetWalkUpParms, kUp, &tsEcho::sWalkUpParms);
    expectGet(zelecho_GetIdleParms, kIdle, &tsEcho::sIdleParms);
}

TEST_F(EchoRecords, ThatAreNullAreNotSet) {
    EXPECT_EQ(zelecho_SetSonarParms(nullptr), 0);
    EXPECT_EQ(error(), 0x200001);
    EXPECT_EQ(zelecho_SetWalkAwayParms(nullptr), 0);
    EXPECT_EQ(zelecho_SetWalkUpParms(nullptr), 0);
    EXPECT_EQ(zelecho_SetIdleParms(nullptr), 0);
    EXPECT_EQ(dirtyGroups(), 0U);
}

TEST_F(EchoRecords, WithAFaultAreRefusedAndTheSettingsStay) {
    sSonarParms sonar = kSonar;
    sonar.MaxDistS = 73;
    EXPECT_EQ(zelecho_SetSonarParms(&sonar), 0);
    EXPECT_EQ(error(), 0x201002);
    sWalkAwayParms away = kAway;
    away.KeyCountWA = 7;
    EXPECT_EQ(zelecho_SetWalkAwayParms(&away), 0);
    EXPECT_EQ(error(), 0x201010);
    sWalkUpParms up = kUp;
    up.InterKeyDelayWU = 63;
    EXPECT_EQ(zelecho_SetWalkUpParms(&up), 0);
    EXPECT_EQ(error(), 0x201021);
    EXPECT_TRUE(isSame(echo(), tsEcho{}));
}

TEST_F(EchoRecords, WithAMinimumOfFiveOrAMaximumOfSeventyTwoInchesAreTaken) {
    sSonarParms sonar = kSonar;
    sonar.MinDistS = 5;
    sonar.MaxDistS = 72;
    EXPECT_EQ(zelecho_SetSonarParms(&sonar), 1);
    EXPECT_EQ(echo().sSonarParms.MinDistS, 5);
    EXPECT_EQ(echo().sSonarParms.MaxDistS, 72);
}

TEST_F(EchoRecords, WithAMinimumAboveTheMaximumAreTaken) {
    sSonarParms sonar = kSonar;
    sonar.MinDistS = 59;
    sonar.MaxDistS = 15;
    EXPECT_EQ(zelecho_SetSonarParms(&sonar), 1);
}

TEST_F(EchoRecords, WithANegativeKeyCountAreTaken) {
    sWalkAwayParms away = kAway;
    away.KeyCountWA = -1;
    EXPECT_EQ(zelecho_SetWalkAwayParms(&away), 1);
    EXPECT_EQ(echo().sWalkAwayParms.KeyCountWA, -1);
}

TEST_F(EchoCheck, HasTheLimitsOfTheSonarRecord) {
    expectRange(CheckSonarParms, kSonar, &sSonarParms::PingRateS, 200, 1020, 0x1000);
    expectRange(CheckSonarParms, kSonar, &sSonarParms::MinDistS, 1, 59, 0x1001);
    expectRange(CheckSonarParms, kSonar, &sSonarParms::MaxDistS, 15, 72, 0x1002);
}

TEST_F(EchoCheck, HasTheLimitsOfTheKeys) {
    expectKeyCount(CheckWalkAwayParms, kAway, &sWalkAwayParms::KeyCountWA, 0x1010);
    expectKeyCount(CheckWalkUpParms, kUp, &sWalkUpParms::KeyCountWU, 0x1020);
    expectRange(CheckWalkAwayParms, kAway, &sWalkAwayParms::InterKeyDelayWA, 64, 16320, 0x1011);
    expectRange(CheckWalkUpParms, kUp, &sWalkUpParms::InterKeyDelayWU, 64, 16320, 0x1021);
}

TEST_F(EchoCheck, OfTheIdleRecordTakesEverything) {
    sIdleParms idle = kIdle;
    EXPECT_EQ(CheckIdleParms(&idle, 0), 1);
    EXPECT_EQ(CheckIdleParms(&idle, 1), 1);
    EXPECT_TRUE(isSame(idle, kIdle));
}

TEST_F(EchoCheck, TellsTheFirstFaultAlone) {
    sSonarParms sonar = {1, 0, 0, 0, 0, 0, 0, 0};
    EXPECT_EQ(CheckSonarParms(&sonar, 0), 0);
    EXPECT_EQ(error(), 0x1000);
}

TEST_F(EchoCheck, RepairsEveryFault) {
    sSonarParms sonar = {1, 0, 0, 60, 0, 0, 0, 0};
    EXPECT_EQ(CheckSonarParms(&sonar, 1), 1);
    EXPECT_TRUE(isSame(sonar, {1, 200, 0, 59, 15, 0, 0, 0}));
}
