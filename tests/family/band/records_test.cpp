// SPDX-License-Identifier: MIT
// The records that the family shares with proximity readers.
#include "frame/zelTagAPI.h"
#include "tests/family/band/band_device.h"
#include "tests/support/is_same.h"

using namespace zel::test;

namespace {

class BandRecords : public BandLineTest {
protected:
    ~BandRecords() override { EXPECT_EQ(told(), "") << "no command goes out"; }
    static tsTagCfg& config() { return DevDat[0].Cfg[0]; }
};

constexpr sCfgFlags kFlags = {1, 0, 1, 0, 1, 0, 1, 1};
constexpr sTimeParms kTimes = {100, 500, 1000, 8, 12, 3, 0, 5};

} // namespace

TEST_F(BandRecords, AreThoseOfConfigurationZero) {
    config().sCfgFlags = kFlags;
    config().sTimeParms = kTimes;
    DevDat[0].iActConfig = 3;
    DevDat[0].lLastErr = 7;
    sCfgFlags flags = {};
    EXPECT_EQ(zelband_GetFlags(&flags), 1);
    EXPECT_TRUE(isSame(flags, kFlags));
    EXPECT_EQ(error(), 0);
    DevDat[0].lLastErr = 7;
    sTimeParms times = {};
    EXPECT_EQ(GetTimeParms(&times), 1);
    EXPECT_TRUE(isSame(times, kTimes));
    EXPECT_EQ(error(), 0);
}

TEST_F(BandRecords, AreNeededForAGet) {
    EXPECT_EQ(zelband_GetFlags(nullptr), 0);
    EXPECT_EQ(error(), 0x100001);
    DevDat[0].lLastErr = 0;
    EXPECT_EQ(zelband_GetTimeParms(nullptr), 0);
    EXPECT_EQ(error(), 0x100001);
}

TEST_F(BandRecords, AreNeededForASet) {
    EXPECT_EQ(zelband_SetFlags(nullptr), 0);
    EXPECT_EQ(error(), 0x200001);
    DevDat[0].lLastErr = 0;
    EXPECT_EQ(zelband_SetTimeParms(nullptr), 0);
    EXPECT_EQ(error(), 0x200001);
    EXPECT_EQ(config().bDirtyTime, 0U);
}

TEST_F(BandRecords, OfFlagsAreStoredUnderTheFirstDirtyWord) {
    sCfgFlags flags = kFlags;
    DevDat[0].lLastErr = 7;
    EXPECT_EQ(zelband_SetFlags(&flags), 1);
    EXPECT_TRUE(isSame(config().sCfgFlags, kFlags));
    EXPECT_EQ(config().bDirtyIDFrmt1, 1U);
    EXPECT_EQ(settings().HaltKBSend, 0);
    EXPECT_EQ(error(), 0);
}

TEST_F(BandRecords, OfTimesKeepTheWordOfFurtherFlags) {
    config().sTimeParms.iTPCfgFlg3 = 0x42;
    DevDat[0].lLastErr = 7;
    sTimeParms times = kTimes;
    EXPECT_EQ(SetTimeParms(&times), 1);
    sTimeParms wanted = kTimes;
    wanted.iTPCfgFlg3 = 0x42;
    EXPECT_TRUE(isSame(config().sTimeParms, wanted));
    EXPECT_EQ(config().bDirtyTime, 1U);
    EXPECT_EQ(config().bDirtyIDFrmt1, 0U);
    EXPECT_EQ(error(), 0);
}

TEST_F(BandRecords, OfTimesAreRefusedBeyondTheirLimits) {
    config().sTimeParms = kTimes;
    sTimeParms times = kTimes;
    times.iBitStrmTO = 5000;
    EXPECT_EQ(zelband_SetTimeParms(&times), 0);
    EXPECT_EQ(times.iBitStrmTO, 5000) << "nothing is repaired";
    EXPECT_TRUE(isSame(config().sTimeParms, kTimes));
    EXPECT_EQ(config().bDirtyTime, 0U);
    EXPECT_EQ(error() & 0x200000, 0x200000);
}

TEST_F(BandRecords, OfTimesAreNotTheReadersKeyTimes) {
    settings().KeyPressTime = 44;
    settings().KeyReleaseTime = 48;
    sTimeParms times = kTimes;
    zelband_SetTimeParms(&times);
    EXPECT_EQ(settings().KeyPressTime, 44);
    EXPECT_EQ(zelband_getTimeParms_iUSBKeyPrsTm(), 44);
    EXPECT_EQ(zelband_getTimeParms_iUSBKeyRlsTm(), 48);
    EXPECT_EQ(zelband_setTimeParms_iUSBKeyPrsTm(100), 1);
    EXPECT_EQ(zelband_setTimeParms_iUSBKeyRlsTm(-4), 1);
    EXPECT_EQ(settings().KeyPressTime, 100);
    EXPECT_EQ(settings().KeyReleaseTime, 0xFFFC);
    EXPECT_EQ(zelband_getTimeParms_iUSBKeyRlsTm(), -4);
    EXPECT_TRUE(isSame(config().sTimeParms.iUSBKeyPrsTm, kTimes.iUSBKeyPrsTm));
}

TEST_F(BandRecords, ExportedCarryTheQuietModeAlone) {
    settings().HaltKBSend = 1;
    sCfgFlags flags = {7, 7, 7, 7, 7, 7, 7, 7};
    EXPECT_EQ(GetFlags(&flags), 1);
    EXPECT_TRUE(isSame(flags, sCfgFlags{7, 7, 7, 7, 7, 7, 7, 1}));
    for (const std::int16_t value : std::initializer_list<std::int16_t>{0, 2, -1}) {
        SCOPED_TRACE(value);
        flags = kFlags;
        flags.bHaltKBSnd = value;
        EXPECT_EQ(SetFlags(&flags), 1);
        EXPECT_EQ(settings().HaltKBSend, value != 0);
    }
    EXPECT_TRUE(isSame(config().sCfgFlags, sCfgFlags{}));
    EXPECT_EQ(config().bDirtyIDFrmt1, 0U);
}

TEST_F(BandRecords, ExportedLeaveTheErrorWordAlone) {
    DevDat[0].lLastErr = 7;
    sCfgFlags flags = {};
    EXPECT_EQ(GetFlags(&flags), 1);
    EXPECT_EQ(SetFlags(&flags), 1);
    EXPECT_EQ(GetFlags(nullptr), 0);
    EXPECT_EQ(SetFlags(nullptr), 0);
    EXPECT_EQ(error(), 7);
}

TEST_F(BandRecords, CarryTheNumericKeypadInTheThirdFlags) {
    settings().UseNumKP = 1;
    sCfgFlags3 flags = {7, 7, 7, 7, 7, 7, 7, 7};
    EXPECT_EQ(GetFlags3(&flags), 1);
    EXPECT_TRUE(isSame(flags, sCfgFlags3{1, 7, 7, 7, 7, 7, 7, 7}));
    flags.bUseNumKP = 0;
    EXPECT_EQ(SetFlags3(&flags), 1);
    EXPECT_EQ(settings().UseNumKP, 0);
}
