// SPDX-License-Identifier: MIT
// What all calls on single words have in common.
#include "tests/api/accessors_test.h"

#include <initializer_list>

using namespace zel::test;

namespace {

// A legal value that legalWords() doesn't give the word.
short anotherValue(const Pair& pair) {
    if (pair.word == 3)
        return pair.record.is("IDBitCnts") ? 30 : 2;
    return 3;
}

// What the word holds after a set to `value`: two words of the times have a will of their own.
short kept(const Pair& pair, short value) {
    if (pair.name == "TimeParms_ExFeatures01")
        return static_cast<short>(value | 0x7F);
    return pair.name == "TimeParms_iTPCfgFlg3" ? short{7} : value;
}

} // namespace

TEST_F(Accessors, AreAGetAndASetOfEightyWordsInTwoLayers) {
    EXPECT_EQ(forEachPair([](const Pair&) {}), 160);
}

TEST_F(Accessors, SetChangesItsOneWordAndMarksTheBlocksOfItsRecord) {
    connectAndRead();
    forEachPair([](const Pair& pair) {
        Words expected = legalWords(pair.record);
        pair.record.store(config(), expected);
        clearMarks();
        const short value = anotherValue(pair);
        expected[pair.word] = kept(pair, value);
        EXPECT_EQ(pair.set(value), 1);
        EXPECT_EQ(GetLastLibErr(), 0);
        EXPECT_EQ(pair.get(), expected[pair.word]);
        EXPECT_EQ(pair.record.whole(), expected);
        EXPECT_EQ(marks(), pair.record.marksOf(pair.word));
    });
}

TEST_F(Accessors, GetYieldsTheWordSignExtended) {
    connectAndRead();
    forEachPair([](const Pair& pair) {
        Words words = legalWords(pair.record);
        words[pair.word] = -300;
        pair.record.store(config(), words);
        EXPECT_EQ(pair.get(), -300);
    });
}

TEST_F(Accessors, ReachTheActiveConfiguration) {
    connectAndRead();
    DevDat[0].iActConfig = 1;
    DevDat[0].Cfg[1].bCfgValid = 1;
    config().sTimeParms.iBitStrmTO = 40;
    EXPECT_EQ(setTimeParms_iBitStrmTO(44), 1);
    EXPECT_EQ(getTimeParms_iBitStrmTO(), 44);
    EXPECT_EQ(DevDat[0].Cfg[1].sTimeParms.iBitStrmTO, 44);
    EXPECT_EQ(config().sTimeParms.iBitStrmTO, 40);
}

TEST_F(Accessors, CauseNoTraffic) {
    connectAndRead();
    EXPECT_EQ(setLEDCtrl_iRedLEDState(1), 1);
    EXPECT_EQ(setBprRlyCtrl_iBeeperState(1), 1);
    EXPECT_EQ(getLEDCtrl_iRedLEDState(), 1);
    EXPECT_EQ(bus().takeTrace(), "");
}

TEST_F(Accessors, YieldTheUnsupportedValueWithNoDevice) {
    SetUnsupportedProductErrorCode(-7);
    expectAll(-7);
    EXPECT_EQ(DevDat[0].lLastErr, 0);
}

TEST_F(Accessors, YieldTheUnsupportedValueWithAnIndexOutsideTheTable) {
    connectAndRead();
    SetUnsupportedProductErrorCode(-7);
    for (const short index : std::initializer_list<short>{1, 127, 32767, -1, -32768}) {
        iActDev = index;
        expectAll(-7);
    }
    iActDev = 0;
    EXPECT_EQ(marks(), "");
}

TEST_F(Accessors, YieldZeroBeforeAnyRead) {
    connectReader();
    SetUnsupportedProductErrorCode(-7);
    expectAll(0);
    EXPECT_EQ(marks(), "");
}

TEST_F(Accessors, TellBeforeAnyReadThatTheGetFailedInASetToo) {
    connectReader();
    const int64_t reason = ZELTAGAPI_ERR_GET | ZELTAGAPI_ERR_NEVER_READ;
    EXPECT_EQ(getCfgFlags_bFixLenDsp(), 0);
    EXPECT_EQ(GetLastLibErr(), reason);
    DevDat[0].lLastErr = 0;
    EXPECT_EQ(setCfgFlags_bFixLenDsp(1), 0);
    EXPECT_EQ(GetLastLibErr(), reason);
}

TEST_F(Accessors, SetOutOfRangeLeavesTheRecord) {
    connectAndRead();
    config().sIDBitCnts.iTotalBitCnt = 26;
    EXPECT_EQ(setIDBitCnts_iTotalBitCnt(25), 0);
    EXPECT_EQ(GetLastLibErr(), ZELTAGAPI_ERR_SET | 0x1013);
    EXPECT_EQ(getIDBitCnts_iTotalBitCnt(), 26);
    EXPECT_EQ(marks(), "");
}

TEST_F(Accessors, SetChecksTheRecordsOtherWordsToo) {
    connectAndRead();
    config().sIDBitCnts.iTotalBitCnt = 25;
    EXPECT_EQ(setIDBitCnts_iPad7(1), 0);
    EXPECT_EQ(GetLastLibErr(), ZELTAGAPI_ERR_SET | 0x1013);
    EXPECT_EQ(config().sIDBitCnts.iPad7, 0);
}
