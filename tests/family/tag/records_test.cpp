// SPDX-License-Identifier: MIT
// Each record's get and set: what is copied, what is marked, what is refused.
#include "family/tag/records.h"
#include "tests/family/tag/tag_record.h"

using namespace zel::test;

namespace {

class RecordCalls : public TagRecordTest {};
class ThirdFlags : public TagRecordTest {};
class Times : public TagRecordTest {};
class FieldData : public TagRecordTest {};
class KeyData : public TagRecordTest {};

template <class Record> struct Calls {
    const char* name;
    int (*get)(Record*);
    int (*set)(Record*);
    Record tsTagCfg::*stored;
    Record value; // in range, each word another
    const char* marks;
};

// Calls `visit` with each record's calls.
template <class Visit> void forEachRecord(Visit visit) {
    visit(Calls<sCfgFlags>{"Flags", GetFlags, SetFlags, &tsTagCfg::sCfgFlags,
                           countedFrom<sCfgFlags>(-3), "IDFrmt1"});
    visit(Calls<sCfgFlags2>{"Flags2", GetFlags2, SetFlags2, &tsTagCfg::sCfgFlags2,
                            countedFrom<sCfgFlags2>(-3), "IDFrmt2"});
    visit(Calls<sCfgFlags3>{"Flags3", GetFlags3, SetFlags3, &tsTagCfg::sCfgFlags3,
                            countedFrom<sCfgFlags3>(-3), "Time"});
    visit(Calls<sIDBitCnts>{"IDBitCnts",
                            GetIDBitCnts,
                            SetIDBitCnts,
                            &tsTagCfg::sIDBitCnts,
                            {1, 2, 24, 26, -4, 5, 6, 32767},
                            "IDFrmt1"});
    visit(Calls<sIDDispParms>{"IDDispParms",
                              GetIDDispParms,
                              SetIDDispParms,
                              &tsTagCfg::sIDDispParms,
                              {45, 13, 8, 4, 1, -5, 6, 32767},
                              "IDFrmt1 Ext"});
    visit(Calls<sIDDispParms2>{"IDDispParms2",
                               GetIDDispParms2,
                               SetIDDispParms2,
                               &tsTagCfg::sIDDispParms2,
                               {3, 65, 66, 67, 68, 69, -6, 32767},
                               "IDFrmt2"});
    visit(Calls<sIDDispParms3>{"IDDispParms3",
                               GetIDDispParms3,
                               SetIDDispParms3,
                               &tsTagCfg::sIDDispParms3,
                               {2, 65, 66, 67, 68, 69, -6, 32767},
                               "IDFrmt2"});
    visit(Calls<sTimeParms>{"TimeParms",
                            GetTimeParms,
                            SetTimeParms,
                            &tsTagCfg::sTimeParms,
                            {40, 1000, 2000, 8, 12, 0x5F, -6, 0},
                            "Time"});
    visit(Calls<sLEDCtrl>{"LEDCtrl",
                          GetLEDCtrl,
                          SetLEDCtrl,
                          &tsTagCfg::sLEDCtrl,
                          {1, 2, 3, 4, 5, 6, -7, 0},
                          "IDFrmt2"});
    visit(Calls<sBprRlyCtrl>{"BprRlyCtrl",
                             GetBprRlyCtrl,
                             SetBprRlyCtrl,
                             &tsTagCfg::sBprRlyCtrl,
                             {1, 2, 3, 4, 5, 6, -7, 0},
                             "IDFrmt2"});
}

template <class Record> Record allOnes() {
    Record record;
    std::memset(&record, 0xFF, sizeof record);
    return record;
}

} // namespace

TEST_F(RecordCalls, GetCopiesTheEightWordsOut) {
    config().bCfgValid = 1;
    forEachRecord([](const auto& calls) {
        DevDat[0].Cfg[0].*calls.stored = calls.value;
        DevDat[0].lLastErr = 0x77;
        auto record = calls.value;
        std::memset(&record, 0xFF, sizeof record);
        EXPECT_EQ(calls.get(&record), 1) << calls.name;
        EXPECT_TRUE(isSame(record, calls.value)) << calls.name;
        EXPECT_EQ(GetLastLibErr(), 0) << calls.name;
    });
    EXPECT_EQ(dirtyFlags(config()), "");
}

TEST_F(RecordCalls, GetRefusesANullRecord) {
    config().bCfgValid = 1;
    forEachRecord([](const auto& calls) {
        DevDat[0].lLastErr = 0x77;
        EXPECT_EQ(calls.get(nullptr), 0) << calls.name;
        EXPECT_EQ(GetLastLibErr(), 0x100001) << calls.name;
    });
}

TEST_F(RecordCalls, GetBeforeAnyReadFailsAndLeavesTheCallersRecord) {
    forEachRecord([](const auto& calls) {
        auto record = calls.value;
        DevDat[0].lLastErr = 0x77;
        EXPECT_EQ(calls.get(&record), 0) << calls.name;
        EXPECT_EQ(GetLastLibErr(), 0x100002) << calls.name;
        EXPECT_TRUE(isSame(record, calls.value)) << calls.name;
    });
}

TEST_F(RecordCalls, SetCopiesInAndMarksTheRecordsBlocksEvenBeforeAnyRead) {
    forEachRecord([](const auto& calls) {
        tsTagCfg& config = DevDat[0].Cfg[0];
        config = {};
        DevDat[0].lLastErr = 0x77;
        auto record = calls.value;
        EXPECT_EQ(calls.set(&record), 1) << calls.name;
        EXPECT_TRUE(isSame(config.*calls.stored, calls.value)) << calls.name;
        EXPECT_TRUE(isSame(record, calls.value)) << calls.name;
        EXPECT_EQ(dirtyFlags(config), calls.marks) << calls.name;
        EXPECT_EQ(GetLastLibErr(), 0) << calls.name;
        EXPECT_EQ(config.bCfgValid, 0U);
    });
    EXPECT_EQ(bus().takeTrace(), "") << "a change waits for the write";
}

TEST_F(RecordCalls, SetTouchesNoOtherRecord) {
    forEachRecord([](const auto& calls) {
        tsTagCfg& config = DevDat[0].Cfg[0];
        std::memset(&config, 0, sizeof config);
        auto record = calls.value;
        calls.set(&record);
        std::memset(&(config.*calls.stored), 0, sizeof record);
        config.bDirtyIDFrmt1 = config.bDirtyIDFrmt2 = config.bDirtyTime = config.bDirtyExt = 0;
        config.sTimeParms.iTPCfgFlg3 = 0;
        EXPECT_TRUE(isSame(config, DevDat[5].Cfg[10])) << calls.name;
    });
}

TEST_F(RecordCalls, SetRefusesANullRecord) {
    const tsTagCfg before = config();
    forEachRecord([](const auto& calls) {
        DevDat[0].lLastErr = 0x77;
        EXPECT_EQ(calls.set(nullptr), 0) << calls.name;
        EXPECT_EQ(GetLastLibErr(), 0x200001) << calls.name;
    });
    EXPECT_TRUE(isSame(config(), before));
}

TEST_F(RecordCalls, WorkOnTheActiveConfigurationOfTheActiveDevice) {
    iDevsFnd = 2;
    DevDat[1].iProduct = 1;
    iActDev = 1;
    DevDat[1].iActConfig = 7;
    const tsDevDat other = DevDat[0];
    forEachRecord([](const auto& calls) {
        DevDat[1].Cfg[7] = {};
        DevDat[1].Cfg[7].bCfgValid = 1;
        auto record = calls.value;
        EXPECT_EQ(calls.set(&record), 1) << calls.name;
        EXPECT_TRUE(isSame(DevDat[1].Cfg[7].*calls.stored, calls.value)) << calls.name;
        std::memset(&record, 0, sizeof record);
        EXPECT_EQ(calls.get(&record), 1) << calls.name;
        EXPECT_TRUE(isSame(record, calls.value)) << calls.name;
    });
    EXPECT_EQ(dirtyFlags(DevDat[1].Cfg[0]), "");
    EXPECT_TRUE(isSame(DevDat[0], other));
}

TEST_F(RecordCalls, YieldTheUnsupportedValueWithoutAProximityReader) {
    SetUnsupportedProductErrorCode(-7);
    forEachRecord([](const auto& calls) {
        auto record = calls.value;
        iDevsFnd = 0;
        EXPECT_EQ(calls.get(&record), -7) << calls.name;
        EXPECT_EQ(calls.set(&record), -7) << calls.name;
        iDevsFnd = 1;
        DevDat[0].iProduct = 8;
        EXPECT_EQ(calls.get(&record), -7) << calls.name;
        EXPECT_EQ(calls.set(&record), -7) << calls.name;
    });
    EXPECT_EQ(dirtyFlags(config()), "");
}

TEST_F(Times, KeepTheFlagByteWhateverTheCallerSays) {
    config().sTimeParms.iTPCfgFlg3 = 0x5A;
    sTimeParms times = {40, 1000, 2000, 8, 12, 0, 0, 0xFF};
    EXPECT_EQ(SetTimeParms(&times), 1);
    EXPECT_EQ(config().sTimeParms.iTPCfgFlg3, 0x5A);
    EXPECT_EQ(times.iTPCfgFlg3, 0xFF) << "the caller's record stays as it is";
}

TEST_F(Times, TakeTheFeatureByteOfTheCaller) {
    sTimeParms times = {40, 1000, 2000, 8, 12, 0xC0, 0, 0};
    SetTimeParms(&times);
    EXPECT_EQ(config().sTimeParms.ExFeatures01, 0xC0);
}

TEST_F(ThirdFlags, MakeTheFlagByte) {
    const std::int16_t bits[8] = {0x80, 0x40, 0x20, 0x10, 0x08, 0x02, 0, 0x04};
    for (std::size_t word = 0; word < 8; ++word) {
        std::int16_t words[8] = {};
        words[word] = -32768; // any value but 0 counts
        sCfgFlags3 flags;
        std::memcpy(&flags, words, sizeof flags);
        config().sTimeParms.iTPCfgFlg3 = 0xFF;
        EXPECT_EQ(SetFlags3(&flags), 1);
        EXPECT_EQ(config().sTimeParms.iTPCfgFlg3, bits[word]) << word;
    }
    sCfgFlags3 all = allOnes<sCfgFlags3>();
    SetFlags3(&all);
    EXPECT_EQ(config().sTimeParms.iTPCfgFlg3, 0xFE);
}

TEST_F(ThirdFlags, ChangeOfTheBootDeviceMarksOnlyTheTimes) {
    config().sTimeParms.iTPCfgFlg3 = 0x01;
    sCfgFlags3 flags = {0, 0, 0, 0, 0, 0, 1, 0};
    EXPECT_EQ(SetFlags3(&flags), 1);
    EXPECT_EQ(dirtyFlags(config()), "Time");
    EXPECT_EQ(config().sTimeParms.iTPCfgFlg3, 0);
    EXPECT_EQ(config().sCfgFlags3.bNotBootDev, 1);
}

TEST_F(FieldData, CopiesOutOnceItWasRead) {
    config().bCfgValid = 1;
    for (int i = 0; i < 128; ++i)
        config().uSFD.bytes[i] = static_cast<std::uint8_t>(200 - i);
    for (const short size : std::initializer_list<short>{128, 129, 32767}) {
        uSFD data = {};
        device().lLastErr = 0x77;
        EXPECT_EQ(GetSepFldData(&data, size), 1) << size;
        EXPECT_TRUE(isSame(data, config().uSFD)) << size;
        EXPECT_EQ(GetLastLibErr(), 0) << size;
    }
    EXPECT_EQ(dirtyFlags(config()), "");
}

TEST_F(FieldData, CopiesInOnceItWasReadAndMarksIt) {
    config().bCfgValid = 1;
    uSFD data = allOnes<uSFD>();
    data.bytes[127] = 0x12;
    device().lLastErr = 0x77;
    EXPECT_EQ(SetSepFldData(&data, 128), 1);
    EXPECT_TRUE(isSame(config().uSFD, data));
    EXPECT_EQ(dirtyFlags(config()), "SepFld");
    EXPECT_EQ(GetLastLibErr(), 0);
}

TEST_F(FieldData, OfANullBufferAddsToTheErrorWord) {
    config().bCfgValid = 1;
    device().lLastErr = 0x8000;
    EXPECT_EQ(GetSepFldData(nullptr, 128), 0);
    EXPECT_EQ(GetLastLibErr(), 0x8001);
    device().lLastErr = 0x4000;
    EXPECT_EQ(SetSepFldData(nullptr, 0), 0) << "the buffer is looked at before the size";
    EXPECT_EQ(GetLastLibErr(), 0x4001);
}

TEST_F(FieldData, NeverReadAddsToTheErrorWord) {
    const tsTagCfg before = config();
    uSFD data = allOnes<uSFD>();
    device().lLastErr = 0x8000;
    EXPECT_EQ(GetSepFldData(&data, 128), 0);
    EXPECT_EQ(GetLastLibErr(), 0x8002);
    device().lLastErr = 0x4000;
    EXPECT_EQ(SetSepFldData(&data, 128), 0);
    EXPECT_EQ(GetLastLibErr(), 0x4002);
    EXPECT_TRUE(isSame(data, allOnes<uSFD>()));
    EXPECT_TRUE(isSame(config(), before));
}

TEST_F(FieldData, OfAShortBufferFailsWithNoErrorWord) {
    for (const std::uint32_t valid : {0U, 1U}) {
        config().bCfgValid = valid;
        const tsTagCfg before = config();
        for (const short size : std::initializer_list<short>{127, 0, -1, -32768}) {
            uSFD data = allOnes<uSFD>();
            device().lLastErr = 0x8000;
            EXPECT_EQ(GetSepFldData(&data, size), 0) << size;
            EXPECT_EQ(SetSepFldData(&data, size), 0) << size;
            EXPECT_EQ(GetLastLibErr(), 0x8000) << size;
            EXPECT_TRUE(isSame(data, allOnes<uSFD>())) << size;
        }
        EXPECT_TRUE(isSame(config(), before));
    }
}

TEST_F(KeyData, GoesInAndMarksTheFieldData) {
    sHashKeyData keys = allOnes<sHashKeyData>();
    keys.key[1][15] = 0x12;
    device().lLastErr = 0x77;
    EXPECT_EQ(SetHashKeyData(&keys), 1);
    EXPECT_TRUE(isSame(config().sHashKeyData, keys));
    EXPECT_EQ(dirtyFlags(config()), "SepFld");
    EXPECT_EQ(GetLastLibErr(), 0);
}

TEST_F(KeyData, RefusesANullRecord) {
    const tsTagCfg before = config();
    device().lLastErr = 0x77;
    EXPECT_EQ(SetHashKeyData(nullptr), 0);
    EXPECT_EQ(GetLastLibErr(), 0x200001);
    EXPECT_TRUE(isSame(config(), before));
}
