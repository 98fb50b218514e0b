// SPDX-License-Identifier: MIT
// The range of each word: at its limits, beyond them, refused and repaired.
#include "family/tag/validators.h"
#include "tests/family/tag/tag_record.h"

#include <climits>

using namespace zel::test;

namespace {

class Validators : public TagRecordTest {};
class UnlimitedRecords : public TagRecordTest {};

struct Limit {
    const char* name;
    std::size_t word;
    std::int16_t least; // SHRT_MIN: none
    std::int16_t most;
    std::int16_t repair; // of a word above `most`
    std::int64_t error;
};

template <class Record> struct Case {
    int (*check)(Record*, int);
    int (*set)(Record*);
    Record tsTagCfg::*stored;
    Record good; // every word inside its range
    Limit limit;
};

template <class Record> Record withWord(Record record, std::size_t index, int value) {
    const auto word = static_cast<std::int16_t>(value);
    std::memcpy(reinterpret_cast<char*>(&record) + index * 2, &word, sizeof word);
    return record;
}

template <class Record> void expectAccepted(const Case<Record>& test, int value) {
    const std::string what = std::string(test.limit.name) + " " + std::to_string(value);
    const Record wanted = withWord(test.good, test.limit.word, value);
    for (const int fix : {0, 1}) {
        Record record = wanted;
        DevDat[0].lLastErr = 0;
        EXPECT_EQ(test.check(&record, fix), 1) << what;
        EXPECT_TRUE(isSame(record, wanted)) << what;
        EXPECT_EQ(DevDat[0].lLastErr, 0) << what;
    }
    Record record = wanted;
    EXPECT_EQ(test.set(&record), 1) << what;
    EXPECT_TRUE(isSame(DevDat[0].Cfg[0].*test.stored, wanted)) << what;
    EXPECT_EQ(GetLastLibErr(), 0) << what;
}

template <class Record> void expectRefused(const Case<Record>& test, int value) {
    const std::string what = std::string(test.limit.name) + " " + std::to_string(value);
    const Record wanted = withWord(test.good, test.limit.word, value);
    Record record = wanted;
    DevDat[0].lLastErr = 0x8000;
    EXPECT_EQ(test.check(&record, 0), 0) << what;
    EXPECT_TRUE(isSame(record, wanted)) << what;
    EXPECT_EQ(DevDat[0].lLastErr, 0x8000 | test.limit.error) << what;

    const tsTagCfg before = DevDat[0].Cfg[0];
    EXPECT_EQ(test.set(&record), 0) << what;
    EXPECT_EQ(GetLastLibErr(), 0x200000 | test.limit.error) << what;
    EXPECT_TRUE(isSame(DevDat[0].Cfg[0], before)) << what;
}

template <class Record> void expectRepaired(const Case<Record>& test, int value, int repaired) {
    Record record = withWord(test.good, test.limit.word, value);
    DevDat[0].lLastErr = 0x8000;
    EXPECT_EQ(test.check(&record, 1), 1) << test.limit.name;
    EXPECT_TRUE(isSame(record, withWord(test.good, test.limit.word, repaired)))
        << test.limit.name << " " << value;
    EXPECT_EQ(DevDat[0].lLastErr, 0x8000) << "a repair touches no error word";
}

template <class Record> void expectLimit(const Case<Record>& test) {
    const Limit& limit = test.limit;
    expectAccepted(test, limit.most);
    for (const int above : {limit.most + 1, SHRT_MAX}) {
        expectRefused(test, above);
        expectRepaired(test, above, limit.repair);
    }
    expectAccepted(test, limit.least);
    if (limit.least == SHRT_MIN) {
        expectAccepted(test, -1);
        return;
    }
    for (const int below : {limit.least - 1, -1, SHRT_MIN}) {
        expectRefused(test, below);
        expectRepaired(test, below, limit.least);
    }
}

constexpr sIDBitCnts kCounts = {1, 2, 26, 37, -4, -5, 600, 30000};
constexpr sIDDispParms kDisplay = {'-', 13, 8, 4, 999, 5, 6, 7};
constexpr sTimeParms kTimes = {40, 1000, 2000, 8, 12, 0, -6, 0};

} // namespace

TEST_F(Validators, HoldTheBitCountsInTheirRanges) {
    const Limit limits[] = {
        {"iLeadParityBitCnt", 0, SHRT_MIN, 15, 15, 0x1010},
        {"iTrailParityBitCnt", 1, SHRT_MIN, 15, 15, 0x1011},
        {"iIDBitCnt", 2, 1, 255, 64, 0x1012},
        {"iTotalBitCnt", 3, 26, 255, 255, 0x1013},
    };
    for (const Limit& limit : limits)
        expectLimit<sIDBitCnts>(
            {CheckUserIDBitCnts, SetIDBitCnts, &tsTagCfg::sIDBitCnts, kCounts, limit});
}

TEST_F(Validators, LetParityGoTo142WhereTheReaderTellsLongParity) {
    config().sTimeParms.ExFeatures01 = 0x80;
    const Limit limits[] = {{"iLeadParityBitCnt", 0, SHRT_MIN, 142, 142, 0x1010},
                            {"iTrailParityBitCnt", 1, SHRT_MIN, 142, 142, 0x1011}};
    for (const Limit& limit : limits)
        expectLimit<sIDBitCnts>(
            {CheckUserIDBitCnts, SetIDBitCnts, &tsTagCfg::sIDBitCnts, kCounts, limit});
}

TEST_F(Validators, TakeNoOtherFeatureForLongParity) {
    config().sTimeParms.ExFeatures01 = 0x7F;
    expectLimit<sIDBitCnts>({CheckUserIDBitCnts,
                             SetIDBitCnts,
                             &tsTagCfg::sIDBitCnts,
                             kCounts,
                             {"iLeadParityBitCnt", 0, SHRT_MIN, 15, 15, 0x1010}});
}

TEST_F(Validators, LookForLongParityInTheActiveConfiguration) {
    device().Cfg[2].sTimeParms.ExFeatures01 = 0x80;
    sIDBitCnts counts = withWord(kCounts, 0, 20);
    EXPECT_EQ(CheckUserIDBitCnts(&counts, 0), 0);
    device().iActConfig = 2;
    EXPECT_EQ(CheckUserIDBitCnts(&counts, 0), 1);
}

TEST_F(Validators, LetAnIdOf200BitsStandAndCutOneOf300To64) {
    sIDBitCnts counts = withWord(kCounts, 2, 200);
    EXPECT_EQ(CheckUserIDBitCnts(&counts, 1), 1);
    EXPECT_EQ(counts.iIDBitCnt, 200);
    EXPECT_EQ(SetIDBitCnts(&counts), 1);
    counts.iIDBitCnt = 300;
    EXPECT_EQ(SetIDBitCnts(&counts), 0);
    EXPECT_EQ(GetLastLibErr(), 0x201012);
    EXPECT_EQ(CheckUserIDBitCnts(&counts, 1), 1);
    EXPECT_EQ(counts.iIDBitCnt, 64);
}

TEST_F(Validators, AcceptEveryBitCountUnderTheAsciiProtocol) {
    useACPMode = 1;
    constexpr sIDBitCnts kWild = {300, 300, 300, 300, 0, 0, 0, 0};
    for (const int fix : {0, 1}) {
        SCOPED_TRACE(fix);
        sIDBitCnts counts = kWild;
        EXPECT_EQ(CheckUserIDBitCnts(&counts, fix), 1);
        EXPECT_TRUE(isSame(counts, kWild));
    }
    EXPECT_EQ(device().lLastErr, 0);
}

TEST_F(Validators, KeepToTheOtherRangesUnderTheAsciiProtocol) {
    useACPMode = 1;
    sIDDispParms display = withWord(kDisplay, 2, 26);
    EXPECT_EQ(CheckUserDispParms(&display, 0), 0);
}

TEST_F(Validators, HoldTheDisplaySettingsInTheirRanges) {
    const Limit limits[] = {
        {"iFACIDDelim", 0, SHRT_MIN, 255, 0, 0x1020},
        {"iELDelim", 1, SHRT_MIN, 255, 0, 0x1021},
        {"iIDDispLen", 2, SHRT_MIN, 25, 25, 0x1022},
        {"iFACDispLen", 3, SHRT_MIN, 25, 25, 0x1023},
    };
    for (const Limit& limit : limits)
        expectLimit<sIDDispParms>(
            {CheckUserDispParms, SetIDDispParms, &tsTagCfg::sIDDispParms, kDisplay, limit});
}

TEST_F(Validators, HoldTheTimesInOneByteOfTheReadersUnits) {
    const Limit limits[] = {
        {"iBitStrmTO", 0, SHRT_MIN, 1020, 1020, 0x1030},
        {"iIDHoldTO", 1, SHRT_MIN, 12750, 12750, 0x1031},
        {"iIDLockOutTm", 2, SHRT_MIN, 12750, 12750, 0x1032},
        {"iUSBKeyPrsTm", 3, SHRT_MIN, 1020, 1020, 0x1033},
        {"iUSBKeyRlsTm", 4, SHRT_MIN, 1020, 1020, 0x1034},
    };
    for (const Limit& limit : limits)
        expectLimit<sTimeParms>(
            {CheckUserTimeParms, SetTimeParms, &tsTagCfg::sTimeParms, kTimes, limit});
}

TEST_F(Validators, HoldBothCharacterCountsBelowFourWithOneErrorWord) {
    expectLimit<sIDDispParms2>({CheckUserDispParms2,
                                SetIDDispParms2,
                                &tsTagCfg::sIDDispParms2,
                                {1, 999, -2, 3, 400, 5, 6, 7},
                                {"iLeadChrCnt", 0, SHRT_MIN, 3, 0, 0x1050}});
    expectLimit<sIDDispParms3>({CheckUserDispParms3,
                                SetIDDispParms3,
                                &tsTagCfg::sIDDispParms3,
                                {1, 999, -2, 3, 400, 5, 6, 7},
                                {"iTrailChrCnt", 0, SHRT_MIN, 3, 0, 0x1050}});
}

TEST_F(Validators, ReportTheFirstFaultOnly) {
    sIDBitCnts counts = {16, 16, 0, 25, 0, 0, 0, 0};
    EXPECT_EQ(SetIDBitCnts(&counts), 0);
    EXPECT_EQ(GetLastLibErr(), 0x201010);
}

TEST_F(Validators, RepairEveryFault) {
    sIDBitCnts counts = {16, 16, 0, 25, 9, 9, 9, 9};
    EXPECT_EQ(CheckUserIDBitCnts(&counts, 1), 1);
    EXPECT_TRUE(isSame(counts, sIDBitCnts{15, 15, 1, 26, 9, 9, 9, 9}));
}

TEST_F(UnlimitedRecords, TakeAnyWords) {
    const auto expectAny = [](auto check, auto wild) {
        for (const int fix : {0, 1}) {
            auto record = wild;
            DevDat[0].lLastErr = 0;
            EXPECT_EQ(check(&record, fix), 1);
            EXPECT_TRUE(isSame(record, wild));
            EXPECT_EQ(DevDat[0].lLastErr, 0);
        }
    };
    expectAny(CheckUserFlags, countedFrom<sCfgFlags>(32760));
    expectAny(CheckUserFlags2, countedFrom<sCfgFlags2>(32760));
    expectAny(CheckUserFlags3, countedFrom<sCfgFlags3>(32760));
    expectAny(CheckUserLEDCtrl, countedFrom<sLEDCtrl>(32760));
    expectAny(CheckUserBRCtrl, countedFrom<sBprRlyCtrl>(32760));
    uSFD data;
    std::memset(&data, 0xFF, sizeof data);
    expectAny(CheckUserSFD, data);
}
