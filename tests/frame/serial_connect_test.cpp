// SPDX-License-Identifier: MIT
// ComConnect() and ComConnectPort() step by step.
#include "tests/family/line_scan.h"
#include "transport/port.h"

using namespace zel::test;
using zel::sim::StreamFault;

namespace {

class LineConnect : public LineScan {
protected:
};

class LineConnectMask : public LineConnect {};
class LineConnectPort : public LineConnect {};
class FailedLineConnect : public LineConnect {};

int kindQueries(const std::string& trace) {
    int count = 0;
    for (std::size_t at = 0; (at = trace.find("> 09 01 00 00", at)) != std::string::npos; ++at)
        ++count;
    return count;
}

} // namespace

TEST_F(LineConnect, ReadsAllReadersAndEndsOnDeviceZero) {
    attachTag(2)->reader().settings().luid = 7;
    attachTag(5)->reader().settings().luid = 9;
    EXPECT_EQ(ComConnect(nullptr), 1);
    EXPECT_EQ(GetDevCnt(), 2);
    EXPECT_EQ(GetActDev(), 0);
    EXPECT_EQ(DevDat[0].iLUID, 7);
    EXPECT_EQ(DevDat[1].iLUID, 9);
    EXPECT_EQ(DevDat[0].Cfg[0].bCfgValid & DevDat[1].Cfg[0].bCfgValid, 1U);
}

TEST_F(LineConnect, StartsTheTableAnewButNotTheRecordsNorTheList) {
    attachTag(1);
    iActDev = 3;
    iDevsFnd = 5;
    cbIndex = 4;
    listIndex = 6;
    lLastCnctErr = 2;
    DevDat[9].bTagAdv = DevDat[9].bTagOpen = 1;
    EXPECT_EQ(ComConnect(nullptr), 1);
    EXPECT_EQ(GetDevCnt(), 1);
    EXPECT_EQ(cbIndex, 0);
    EXPECT_EQ(listIndex, 14) << "eight rows behind the six";
    EXPECT_EQ(DevDat[9].bTagAdv & DevDat[9].bTagOpen, 1U);
    EXPECT_EQ(lLastCnctErr, 2U) << "the connects on USB alone clear it";
}

TEST_F(LineConnect, TellsTheDeviceIdSignExtended) {
    attachTag(1)->replyWith({0x04, 0, 0}, {0, 0, 0xFE, 0xFF});
    int64_t did = 0;
    EXPECT_EQ(ComConnect(&did), 1);
    EXPECT_EQ(did, -2);
    did = 0;
    EXPECT_EQ(ComConnectPort(1, &did), 1);
    EXPECT_EQ(did, -2);
}

TEST_F(LineConnect, FindsTheSameReadersEachTime) {
    attachTag(1);
    attachTag(2);
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(ComConnect(nullptr), 1);
        EXPECT_EQ(GetDevCnt(), 2);
        EXPECT_EQ(lines().openLines(), 2);
    }
}

TEST_F(LineConnect, ForgetsRowZeroOfTheFilterListTheSecondTime) {
    attachTag(1);
    ComConnect(nullptr);
    EXPECT_EQ(zelTagVidPid.rows[0].vendor, 0x7C1F);
    EXPECT_EQ(listIndex, 8);
    ComConnect(nullptr);
    EXPECT_EQ(zelTagVidPid.rows[0].vendor, 0);
    EXPECT_EQ(zelTagVidPid.rows[8].vendor, 0x7C1F);
    EXPECT_EQ(listIndex, 16);
}

TEST_F(LineConnect, LeavesUsbAlone) {
    plugReader();
    EXPECT_EQ(ComConnect(nullptr), 0);
    EXPECT_EQ(told().find("open reader"), std::string::npos);
    EXPECT_EQ(GetDevCnt(), 0);
}

TEST_F(LineConnect, ScansWhateverTheSearchOfUsbConnectIs) {
    attachTag(1);
    SetDevTypeSrch(2);
    EXPECT_EQ(ComConnect(nullptr), 1);
}

// The kind of reader is asked of record 0 also where no line found one: a USB reader that the
// record still holds answers.
TEST_F(LineConnect, AsksForTheKindAlsoInVain) {
    connectReader({.tagPlusConfigurations = 2});
    SetConnectProduct(ZELTAGAPI_ZELECHO);
    EXPECT_EQ(ComConnectPort(1, nullptr), 0);
    EXPECT_EQ(told(), "");
    EXPECT_EQ(ComConnect(nullptr), 0);
    EXPECT_TRUE(told().starts_with("> 89 01 00 00 00 00 00 00  multi: query\n"));
    EXPECT_EQ(DevDat[0].iTagPlusState, 2U);
}

TEST_F(LineConnect, InVainCountsTheNextReaderAsAPlainOneUntilADisconnect) {
    EXPECT_EQ(ComConnect(nullptr), 0);
    EXPECT_EQ(DevDat[0].iTagPlusState, 1U);
    attachReader(path(1), {.tagPlusConfigurations = 3});
    EXPECT_EQ(ComConnect(nullptr), 1);
    EXPECT_EQ(DevDat[0].iTagPlusState, 1U);
    EXPECT_EQ(GetMaxConfig(), 0);
    USBDisconnect();
    EXPECT_EQ(DevDat[0].iTagPlusState, 0U);
    EXPECT_EQ(ComConnect(nullptr), 1);
    EXPECT_EQ(DevDat[0].iTagPlusState, 2U);
    EXPECT_EQ(GetMaxConfig(), 2);
}

// The proximity readers' scan passes the stripe reader over; the other goes on behind the first.
TEST_F(LineConnect, TriesBothFamilies) {
    attachTag(1);
    attachStripe(2);
    ComConnect(nullptr);
    EXPECT_EQ(GetDevCnt(), 2);
    EXPECT_EQ(DevDat[0].iProduct, 1U);
    EXPECT_EQ(DevDat[1].iProduct, 2U);
    EXPECT_STREQ(DevDat[0].szDevName, "COM2:") << "a stripe reader names record 0";
    ASSERT_TRUE(DevDat[0].pPort && DevDat[1].pPort);
    EXPECT_EQ(DevDat[0].pPort->port(), 1U);
    EXPECT_EQ(DevDat[1].pPort->port(), 2U);
}

TEST_F(LineConnectMask, ChoosesTheFamilies) {
    struct Case {
        unsigned mask;
        bool probes, wakes, loads;
    };
    attachSilence(1);
    for (const Case& each :
         {Case{0, false, false, false}, Case{4, false, false, false}, Case{1, true, false, true},
          Case{2, false, true, false}, Case{3, true, true, true}, Case{~0U, true, true, true}}) {
        SetConnectProduct(each.mask);
        listIndex = 0;
        EXPECT_EQ(ComConnect(nullptr), 0);
        const std::string trace = told();
        EXPECT_EQ(trace.find("> 04 ED") != std::string::npos, each.probes) << each.mask;
        EXPECT_EQ(trace.find("\\r\\r") != std::string::npos, each.wakes) << each.mask;
        EXPECT_EQ(listIndex == 8, each.loads) << each.mask;
    }
}

TEST_F(LineConnectPort, TakesTheReaderOfOneLine) {
    attachTag(1);
    attachTag(4)->reader().settings().luid = 9;
    cbIndex = 3;
    EXPECT_EQ(ComConnectPort(4, nullptr), 1);
    EXPECT_EQ(openedIn(told()), "4");
    EXPECT_EQ(GetDevCnt(), 1);
    EXPECT_EQ(GetLUID(), 9);
    EXPECT_EQ(cbIndex, 0);
    EXPECT_EQ(ComConnectPort(4, nullptr), 1) << "it empties the table first";
}

TEST_F(LineConnectPort, TriesTheStripeReadersWhereThereIsNoOther) {
    attachStripe(4);
    ComConnectPort(4, nullptr);
    EXPECT_EQ(GetDevCnt(), 1);
    EXPECT_EQ(DevDat[0].iProduct, 2U);
    EXPECT_EQ(lLastCnctErr & 0x10000U, 0x10000U) << "of the family that was tried first";
}

// A line that couldn't be opened counts as in use by the time the second family comes.
TEST_F(LineConnectPort, OpensALineThatFailsOnceOnly) {
    EXPECT_EQ(ComConnectPort(4, nullptr), 0);
    EXPECT_EQ(openedIn(told()), "4 fails");
    EXPECT_EQ(lLastCnctErr, 0x10000U);
}

TEST_F(LineConnectPort, FailsQuietlyForNumberZero) {
    attachTag(1);
    EXPECT_EQ(ComConnectPort(0, nullptr), 0);
    EXPECT_EQ(lLastCnctErr, 0U);
    EXPECT_EQ(lines().opens(), 0);
}

TEST_F(LineConnectPort, AsksForNoKindBeforeItReads) {
    attachReader(path(1), {.tagPlusConfigurations = 1});
    SetComSrchRange(1, 1);
    EXPECT_EQ(ComConnect(nullptr), 1);
    EXPECT_EQ(kindQueries(told()), 2) << "and again with the configuration";
    USBDisconnect();
    told();
    EXPECT_EQ(ComConnectPort(1, nullptr), 1);
    EXPECT_EQ(kindQueries(told()), 1);
}

TEST_F(FailedLineConnect, KeepsTheReadersFoundAndNamesTheReason) {
    attachTag(1);
    attachTag(2)->fail(StreamFault::Silence, 100, 1); // behind the probe
    attachTag(3);
    DevDat[0].iDID = 0xFFFE;
    int64_t did = 0x5EED;
    EXPECT_EQ(ComConnect(&did), 0);
    EXPECT_EQ(lLastCnctErr, 0x10000U);
    EXPECT_EQ(GetDevCnt(), 3);
    EXPECT_EQ(GetActDev(), 0);
    EXPECT_EQ(did, 0xFFFE) << "what the scan told, of the time before";
    EXPECT_EQ(DevDat[1].lLastErr, 0x20000);
    EXPECT_EQ(DevDat[2].Cfg[0].bCfgValid, 0U) << "the readers behind it aren't read";
    EXPECT_EQ(lines().openLines(), 3);
}

TEST_F(FailedLineConnect, OnOneLineKeepsTheReaderFoundAndNamesTheReason) {
    attachTag(2)->fail(StreamFault::Silence, 100, 1);
    EXPECT_EQ(ComConnectPort(2, nullptr), 0);
    EXPECT_EQ(lLastCnctErr, 0x10000U);
    EXPECT_EQ(GetDevCnt(), 1);
}
