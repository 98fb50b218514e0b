// SPDX-License-Identifier: MIT
// What the sensor sees, and the halt of its keys.
#include "tests/family/echo/sensor_test.h"

#include <algorithm>
#include <array>
#include <cstring>

using namespace zel::test;
using namespace zel::sim;

namespace {

constexpr const char kQuery[] = "> 8F 00 00 00 00 00 00 00  range\n~ 250 ms\n";

class EchoRange : public SensorTest {
protected:
    EchoRange() { connectSensor(); }

    static std::array<int, 5> wordsOf(const sRangeInfo& r) {
        return {r.iObjDist, r.bRangeStat0, r.bRangeStat1, r.bRangeStat2, r.iRangeStat};
    }
    using Words = std::array<int, 5>;
    sRangeInfo seen_ = {9, 9, 9, 9, 9};
};
class EchoHalt : public EchoRange {};

} // namespace

TEST_F(EchoRange, IsAskedForAndTold) {
    sensor_->place(40);
    record().lLastErr = 0x1000;
    EXPECT_EQ(zelecho_GetObjRangeInfo(&seen_), 1);
    EXPECT_EQ(wordsOf(seen_), (Words{40, 1, 0, 0, 1}));
    EXPECT_EQ(bus().takeTrace(), std::string(kQuery) + "< 01 8B 00 00 00 00 00 00\n");
    EXPECT_EQ(record().lLastErr, 0);
}

TEST_F(EchoRange, HasThreeBitsOfTheStatusAndTheWholeByte) {
    sensor_->replyWith({0x8F}, {0xF6, 255});
    zelecho_GetObjRangeInfo(&seen_);
    EXPECT_EQ(wordsOf(seen_), (Words{73, 0, 1, 1, 0xF6}));
    sensor_->replyWith({0x8F}, {0x05, 1});
    zelecho_GetObjRangeInfo(&seen_);
    EXPECT_EQ(wordsOf(seen_), (Words{0, 1, 0, 1, 5}));
}

TEST_F(EchoRange, ThatCannotBeAskedForOrFetchedIsZeros) {
    for (const int n : {1, 2}) {
        SCOPED_TRACE(n);
        seen_ = {9, 9, 9, 9, 9};
        failAt(n);
        EXPECT_EQ(zelecho_GetObjRangeInfo(&seen_), 0);
        EXPECT_EQ(record().lLastErr, 0x1000000);
        EXPECT_EQ(wordsOf(seen_), Words{});
    }
}

TEST_F(EchoRange, IsNotKeptBesideTheAnswer) {
    sensor_->place(40);
    zelecho_GetObjRangeInfo(&seen_);
    EXPECT_EQ(wordsOf(gsRangeInfo2), Words{});
}

TEST_F(EchoRange, IntoANullRecordIsNotAskedFor) {
    EXPECT_EQ(zelecho_GetObjRangeInfo(nullptr), 0);
    EXPECT_EQ(bus().takeTrace(), "");
}

TEST_F(EchoHalt, IsOneReportWithoutAReply) {
    lLastCnctErr = 0x10000;
    EXPECT_EQ(zelecho_HaltKBSends(-5), 1);
    EXPECT_EQ(bus().takeTrace(), "> B1 00 00 00 00 00 00 00  send no keys\n");
    EXPECT_TRUE(sensor_->isHalted());
    EXPECT_EQ(lLastCnctErr, 0U);
}

TEST_F(EchoHalt, AndRangeAreReachedByTheExportedCalls) {
    sensor_->place(40);
    EXPECT_EQ(HaltKBSends(1), 1);
    EXPECT_TRUE(sensor_->isHalted());
    EXPECT_EQ(GetObjRangeInfo(&seen_), 1);
    EXPECT_EQ(seen_.iObjDist, 40);
    record().iProduct = 1;
    SetUnsupportedProductErrorCode(-7);
    EXPECT_EQ(HaltKBSends(0), -7);
    EXPECT_TRUE(sensor_->isHalted());
}

TEST_F(EchoHalt, EndsWithAnotherReport) {
    zelecho_HaltKBSends(1);
    bus().takeTrace();
    EXPECT_EQ(zelecho_HaltKBSends(0), 1);
    EXPECT_EQ(bus().takeTrace(), "> B0 00 00 00 00 00 00 00  send keys\n");
    EXPECT_FALSE(sensor_->isHalted());
}

TEST_F(EchoHalt, ThatCannotBeSentIsToldByTheErrorOfTheConnect) {
    failAt(1);
    record().lLastErr = 0x55;
    EXPECT_EQ(zelecho_HaltKBSends(1), 0);
    EXPECT_EQ(lLastCnctErr, 0x2000000U);
    EXPECT_EQ(record().lLastErr, 0x55);
    EXPECT_EQ(echo().bEchoHalt, 177U) << "the word is that of the command all the same";
}

TEST_F(EchoHalt, IsAFlagOf176Or177OrOneBehindAReset) {
    sCfgFlags flags = {};
    zelecho_HaltKBSends(0);
    EXPECT_EQ(zelecho_GetFlags(&flags), 1);
    EXPECT_EQ(flags.bHaltKBSnd, 176);
    zelecho_HaltKBSends(1);
    EXPECT_EQ(GetFlags(&flags), 1);
    EXPECT_EQ(flags.bHaltKBSnd, 177);
    zelecho_ResetUserDflts();
    zelecho_GetFlags(&flags);
    EXPECT_EQ(flags.bHaltKBSnd, 1);
}

TEST_F(EchoHalt, IsTheOnlyFlagThatIsTouched) {
    sCfgFlags flags;
    std::memset(&flags, 0x42, sizeof flags);
    sCfgFlags expected = flags;
    expected.bHaltKBSnd = 176;
    echo().bEchoHalt = 176;
    zelecho_GetFlags(&flags);
    EXPECT_EQ(std::memcmp(&flags, &expected, sizeof flags), 0);
}

TEST_F(EchoHalt, IsSentByTheFamilysFlagsWhoseResultIsAlwaysOne) {
    sCfgFlags flags = {};
    flags.bHaltKBSnd = 2;
    EXPECT_EQ(zelecho_SetFlags(&flags), 1);
    EXPECT_TRUE(sensor_->isHalted());
    failAt(1);
    EXPECT_EQ(zelecho_SetFlags(&flags), 1);
    EXPECT_EQ(lLastCnctErr, 0x2000000U);
}

TEST_F(EchoHalt, IsAWordInMemoryToTheExportedFlags) {
    sCfgFlags flags = {};
    flags.bHaltKBSnd = 2;
    EXPECT_EQ(SetFlags(&flags), 1);
    EXPECT_EQ(echo().bEchoHalt, 2U);
    EXPECT_EQ(bus().takeTrace(), "");
}

TEST_F(EchoHalt, OfTheFamilysFlagsNeedsARecord) {
    EXPECT_EQ(zelecho_GetFlags(nullptr), 0);
    EXPECT_EQ(zelecho_SetFlags(nullptr), 0);
    EXPECT_EQ(bus().takeTrace(), "");
}
