// SPDX-License-Identifier: MIT
// The layout of the public records: fields in their order, natural alignment. Offsets are worked
// out by hand from the widths.
#include "frame/zelTagState.h"

#include <cstddef>
#include <gtest/gtest.h>

TEST(Records, AreEightWordsOfSixteenBits) {
    EXPECT_EQ(sizeof(sCfgFlags), 16U);
    EXPECT_EQ(sizeof(sCfgFlags2), 16U);
    EXPECT_EQ(sizeof(sCfgFlags3), 16U);
    EXPECT_EQ(sizeof(sIDBitCnts), 16U);
    EXPECT_EQ(sizeof(sIDDispParms), 16U);
    EXPECT_EQ(sizeof(sIDDispParms2), 16U);
    EXPECT_EQ(sizeof(sIDDispParms3), 16U);
    EXPECT_EQ(sizeof(sTimeParms), 16U);
    EXPECT_EQ(sizeof(sLEDCtrl), 16U);
    EXPECT_EQ(sizeof(sBprRlyCtrl), 16U);
}

TEST(Records, KeepTheirWordsInOrder) {
    EXPECT_EQ(offsetof(sCfgFlags, bHaltKBSnd), 14U);
    EXPECT_EQ(offsetof(sIDDispParms, iExOutputFormat), 8U);
    EXPECT_EQ(offsetof(sTimeParms, ExFeatures01), 10U);
    EXPECT_EQ(offsetof(sTimeParms, iTPCfgFlg3), 14U);
    EXPECT_EQ(offsetof(sCfgFlags3, bNotBootDev), 12U);
    EXPECT_EQ(offsetof(sLEDCtrl, bVolatile), 14U);
    EXPECT_EQ(offsetof(sBprRlyCtrl, iBeeperState), 2U);
}

TEST(SensorRecords, KeepTheirWidths) {
    EXPECT_EQ(sizeof(sSonarParms), 16U);
    EXPECT_EQ(sizeof(sWalkAwayParms), 32U);
    EXPECT_EQ(sizeof(sWalkUpParms), 32U);
    EXPECT_EQ(sizeof(sIdleParms), 16U);
    EXPECT_EQ(sizeof(sRangeInfo), 10U);
    EXPECT_EQ(offsetof(sWalkAwayParms, Flags0WA), 16U);
    EXPECT_EQ(offsetof(sWalkAwayParms, Key1CodeWA), 20U);
}

TEST(StripeRecords, KeepTheirWidths) {
    EXPECT_EQ(sizeof(BandUserField), 27U);
    EXPECT_EQ(offsetof(tsBand, HaltKBSend), 20U);
    EXPECT_EQ(offsetof(tsBand, UserField), 29U);
    EXPECT_EQ(offsetof(tsBand, KeyPressTime), 326U);
}

TEST(QueuedIdentifier, IsFortyEightBytes) {
    EXPECT_EQ(sizeof(tsQueuedID), 48U);
    EXPECT_EQ(offsetof(tsQueuedID, age), 32U);
    EXPECT_EQ(offsetof(tsQueuedID, word40), 40U);
    EXPECT_EQ(offsetof(tsQueuedID, byte43), 43U);
}

TEST(FilterList, KeepsItsLayout) {
    EXPECT_EQ(sizeof(tsVidPidRow), 88U);
    EXPECT_EQ(offsetof(tsVidPidRow, vendor), 32U);
    EXPECT_EQ(offsetof(tsVidPidRow, vendorName), 36U);
    EXPECT_EQ(sizeof(tsVidPidList), 32U + 51U * 88U);
}

TEST(Configuration, KeepsItsFieldsInOrder) {
    EXPECT_EQ(offsetof(tsTagCfg, sCfgFlags), 8U);
    EXPECT_EQ(offsetof(tsTagCfg, bDirtyIDFrmt1), 40U);
    EXPECT_EQ(offsetof(tsTagCfg, sTimeParms), 64U);
    EXPECT_EQ(offsetof(tsTagCfg, sBprRlyCtrl), 160U);
    EXPECT_EQ(offsetof(tsTagCfg, ExtBlock), 180U);
    EXPECT_EQ(offsetof(tsTagCfg, bDirtySepFld), 196U);
    EXPECT_EQ(offsetof(tsTagCfg, uSFD), 200U);
    EXPECT_EQ(offsetof(tsTagCfg, sHashKeyData), 328U);
    EXPECT_EQ(offsetof(tsTagCfg, iCardType), 380U);
    EXPECT_EQ(sizeof(tsTagCfg), 384U);
}

TEST(DeviceRecord, KeepsItsFieldsInOrder) {
    EXPECT_EQ(offsetof(tsDevDat, lLastErr), 8U);
    EXPECT_EQ(offsetof(tsDevDat, iDevType), 16U);
    EXPECT_EQ(offsetof(tsDevDat, iProduct), 20U);
    EXPECT_EQ(offsetof(tsDevDat, hDev), 24U);
    EXPECT_EQ(offsetof(tsDevDat, szDevName), 32U);
    EXPECT_EQ(offsetof(tsDevDat, szPartNum), 544U);
    EXPECT_EQ(offsetof(tsDevDat, szFullFWVer), 634U);
    EXPECT_EQ(offsetof(tsDevDat, iLUID), 700U);
    EXPECT_EQ(offsetof(tsDevDat, bLUIDDirty), 704U);
    EXPECT_EQ(offsetof(tsDevDat, lSN), 712U);
    EXPECT_EQ(offsetof(tsDevDat, Cfg), 728U);
    EXPECT_EQ(offsetof(tsDevDat, Band), 728U + 11U * 384U);
    EXPECT_EQ(sizeof(DevDat) / sizeof(DevDat[0]), 127U);
}
