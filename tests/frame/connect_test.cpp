// SPDX-License-Identifier: MIT
// USBConnect() step by step.
#include "tests/support/library_test.h"

#include <cstring>
#include <fstream>

using namespace zel::test;
using zel::sim::Fault;
using zel::sim::TagReader;
using zel::sim::UsbIdentity;

namespace {

class Connect : public LibraryTest {
protected:
    // The library's own way, on USB alone: the other transports are another matter.
    Connect() { EXPECT_EQ(SetDevTypeSrch(0), 1); }

    static std::shared_ptr<TagReader> plug(const TagReader::Options& options,
                                           const UsbIdentity& identity = kBuiltIn) {
        return plugReader(identity, options);
    }

    static inline const UsbIdentity kBuiltIn = {TagReader::kVendor, TagReader::kProduct, "reader"};
};

class ConnectTrace : public Connect {
protected:
    static TagReader::Options options() {
        return {.partNumber = "ZT5", .firmwareVersion = "764", .fileName = "LARK7604"};
    }

    // A recorded trace: lines that start with # are remarks.
    static std::string recorded(const std::string& name) {
        std::ifstream file(ZEL_TRACES + name);
        EXPECT_TRUE(file) << name;
        std::string text;
        for (std::string line; std::getline(file, line);)
            if (line.empty() || line[0] != '#')
                text += line + '\n';
        return text;
    }
};

class ConnectOrder : public Connect {
protected:
    // The requests of a trace that hold a word, each as port and name.
    static std::string requests(const std::string& trace, const std::string& word) {
        std::string found;
        for (std::size_t at = 0; at < trace.size();) {
            const std::size_t end = trace.find('\n', at);
            const std::string line = trace.substr(at, end - at);
            if (line.find('>') != std::string::npos && line.find(word) != std::string::npos)
                found += line.substr(0, 1) + ' ' + line.substr(line.rfind(word)) + '\n';
            at = end + 1;
        }
        return found;
    }
};

class ConnectReset : public Connect {};
class ConnectVersions : public Connect {};
class FailedConnect : public Connect {};
class ConnectMask : public Connect {};
class ConnectKinds : public Connect {};
class SecondConnect : public Connect {};

} // namespace

TEST_F(ConnectTrace, OfAPlainReaderIsThatOfItsRecording) {
    plug(options());
    EXPECT_EQ(USBConnect(nullptr), 1);
    EXPECT_EQ(bus().takeTrace(), recorded("connect_plain.trace"));
}

TEST_F(ConnectTrace, OfThreeConfigurationsIsThatOfItsRecording) {
    TagReader::Options three = options();
    three.tagPlusConfigurations = 3;
    three.cardTypes = {0x1204, 0x0003};
    three.versions = {{{0x07060400, 0x01020304}, {}, {1, 2, 3, 4, 5, 6}}};
    const auto reader = plug(three);
    reader->configuration(1).cardType = 3;
    reader->configuration(2).cardType = 0x1204;
    reader->configuration(2).cardPriority = true;
    reader->activate(1);
    EXPECT_EQ(USBConnect(nullptr), 1);
    EXPECT_EQ(bus().takeTrace(), recorded("connect_tagplus.trace"));
    EXPECT_EQ(reader->violations(), 0);
}

TEST_F(ConnectOrder, FindsAllReadersBeforeItReadsTheFirst) {
    plug({}, {0x5A3E, 0x9D23, "a"});
    plug({}, {0x5A3E, 0x9D23, "b"});
    EXPECT_EQ(USBConnect(nullptr), 1);
    const std::string trace = bus().takeTrace();
    EXPECT_EQ(trace.substr(0, 14), "open a\nopen b\n");
    EXPECT_EQ(requests(trace, "LUID"), "0 LUID\n1 LUID\n");
    EXPECT_EQ(requests(trace, "multi: query"), "0 multi: query\n0 multi: query\n1 multi: query\n");
}

// The probe at the start is of device 0 alone; a reader behind it tells its kind inside the loop
// over configurations, which by then has but one pass.
TEST_F(ConnectOrder, ReadsAllConfigurationsOfTheFirstReaderOnly) {
    plug({.tagPlusConfigurations = 2}, {0x5A3E, 0x9D23, "a"});
    plug({.tagPlusConfigurations = 2}, {0x5A3E, 0x9D23, "b"});
    USBConnect(nullptr);
    EXPECT_EQ(requests(bus().takeTrace(), "multi: select"),
              "0 multi: select 1\n0 multi: select 0\n0 multi: select 0\n1 multi: select 0\n");
}

// The index goes back to 0 on the device before: twice on device 0, never on the last one.
TEST_F(ConnectOrder, PutsTheConfigurationIndexBackBeforeItMovesOn) {
    const auto first = plug({.tagPlusConfigurations = 3}, {0x5A3E, 0x9D23, "a"});
    const auto second = plug({.tagPlusConfigurations = 3}, {0x5A3E, 0x9D23, "b"});
    const auto third = plug({.tagPlusConfigurations = 3}, {0x5A3E, 0x9D23, "c"});
    for (tsDevDat& record : DevDat)
        record.iActConfig = 2;
    first->activate(2);
    EXPECT_EQ(USBConnect(nullptr), 1);
    EXPECT_EQ(DevDat[0].iActConfig, 0);
    EXPECT_EQ(DevDat[1].iActConfig, 0);
    EXPECT_EQ(DevDat[2].iActConfig, 2);
    EXPECT_EQ(first->activeConfiguration(), 0U);
    EXPECT_EQ(second->activeConfiguration(), 2U) << "read before its index went back";
    EXPECT_EQ(third->activeConfiguration(), 2U);
}

TEST_F(Connect, FillsTheRecordsAndEndsOnDeviceZero) {
    plug({}, {0x5A3E, 0x9D23, "a"})->settings().luid = 7;
    plug({}, {0x5A3E, 0x9D23, "b"})->settings().luid = 9;
    EXPECT_EQ(USBConnect(nullptr), 1);
    EXPECT_EQ(GetDevCnt(), 2);
    EXPECT_EQ(GetActDev(), 0);
    EXPECT_EQ(GetLUID(), 7);
    EXPECT_EQ(DevDat[1].iLUID, 9);
    EXPECT_EQ(DevDat[1].iProduct, 1U);
    EXPECT_EQ(DevDat[0].Cfg[0].bCfgValid & DevDat[1].Cfg[0].bCfgValid, 1U);
    EXPECT_EQ(lLastCnctErr, 0U);
}

TEST_F(Connect, TellsTheDeviceIdSignExtended) {
    plug({})->replyWith({0x8A}, {0, 0, 0xFE, 0xFF});
    int64_t did = 0;
    EXPECT_EQ(USBConnect(&did), 1);
    EXPECT_EQ(did, -2);
}

TEST_F(Connect, OfSeveralReadersTellsTheIdOfTheFirst) {
    plug({}, {0x5A3E, 0x9D23, "a"})->replyWith({0x8A}, {0, 0, 0x11});
    plug({}, {0x5A3E, 0x9D23, "b"})->replyWith({0x8A}, {0, 0, 0x22});
    int64_t did = 0;
    USBConnect(&did);
    EXPECT_EQ(did, 0x11);
}

TEST_F(Connect, ThatFindsNothingLeavesTheDeviceIdAlone) {
    int64_t did = 0x5EED;
    lLastCnctErr = 0x10000;
    EXPECT_EQ(USBConnect(&did), 0);
    EXPECT_EQ(did, 0x5EED);
    EXPECT_EQ(lLastCnctErr, 0U);
    EXPECT_EQ(bus().takeTrace(), "");
}

TEST_F(Connect, WithoutArgumentsFillsTheTableToo) {
    EXPECT_EQ(usbConnect(), 0);
    plug({});
    EXPECT_EQ(usbConnect(), 1);
    EXPECT_EQ(GetDevCnt(), 1);
}

TEST_F(Connect, FillsTheWholeTableAndClosesTheRest) {
    for (int i = 0; i < 130; ++i)
        plug({}, {0x5A3E, 0x9D23, "r" + std::to_string(i)});
    EXPECT_EQ(USBConnect(nullptr), 1);
    EXPECT_EQ(GetDevCnt(), 127);
    EXPECT_EQ(bus().openHandles(), 127);
    EXPECT_EQ(DevDat[126].Cfg[0].bCfgValid, 1U);
}

TEST_F(ConnectReset, StartsEveryRecordAnew) {
    for (tsDevDat& record : DevDat) {
        record.bSepFldOK = record.bPartNumOK = 0;
        record.bTagOpen = record.iTagPlusState = record.bTagAdv = 1;
    }
    iActDev = 3;
    cbIndex = 4;
    iDevsFnd = 5;
    listIndex = 6;
    SetConnectProduct(0);
    EXPECT_EQ(USBConnect(nullptr), 0);
    for (const tsDevDat& record : DevDat) {
        SCOPED_TRACE(&record - DevDat);
        EXPECT_EQ(record.bSepFldOK & record.bPartNumOK, 1U);
        EXPECT_EQ(record.bTagOpen | record.iTagPlusState | record.bTagAdv, 0U);
    }
    EXPECT_EQ(iActDev + cbIndex + iDevsFnd + listIndex, 0);
}

TEST_F(ConnectReset, ClearsTheCardTypesOfRecordZeroOnly) {
    DevDat[0].CardTypeList[0] = DevDat[0].CardTypeList[1024] = 0x1204;
    DevDat[1].CardTypeList[0] = 0x1204;
    iActDev = 1;
    iDevsFnd = 2;
    USBConnect(nullptr);
    EXPECT_EQ(DevDat[0].CardTypeList[0] | DevDat[0].CardTypeList[1024], 0);
    EXPECT_EQ(DevDat[1].CardTypeList[0], 0x1204);
}

TEST_F(ConnectVersions, EndAtTheFirstZeroOfEachUnit) {
    plug({.tagPlusConfigurations = 1,
          .versions = {{{11, 12, 0, 14}, {0, 22}, {31, 32, 33, 34, 35, 36}}}});
    std::memset(DevDat[0].FWVerTbl, 0xEE, sizeof DevDat[0].FWVerTbl);
    USBConnect(nullptr);
    const std::uint32_t expected[3][6] = {{11, 12, 0, 0, 0, 0xEEEEEEEE},
                                          {0, 0, 0, 0, 0, 0xEEEEEEEE},
                                          {31, 32, 33, 34, 35, 0xEEEEEEEE}};
    EXPECT_EQ(std::memcmp(DevDat[0].FWVerTbl, expected, sizeof expected), 0);
    EXPECT_EQ(GetFirmwareVersion(2, 4), 35U);
}

TEST_F(ConnectVersions, OfAPlainReaderAreZero) {
    plug({});
    std::memset(DevDat[0].FWVerTbl, 0xEE, sizeof DevDat[0].FWVerTbl);
    USBConnect(nullptr);
    for (const auto& unit : DevDat[0].FWVerTbl)
        for (int slot = 0; slot < 5; ++slot)
            EXPECT_EQ(unit[slot], 0U);
}

TEST_F(FailedConnect, KeepsTheDevicesFoundAndNamesTheReason) {
    plug({}, {0x5A3E, 0x9D23, "a"});
    plug({}, {0x5A3E, 0x9D23, "b"});
    plug({}, {0x5A3E, 0x9D23, "c"});
    bus().fail(1, Fault::NoAnswer, 100);
    int64_t did = 0x5EED;
    EXPECT_EQ(USBConnect(&did), 0);
    EXPECT_EQ(lLastCnctErr, 0x10000U);
    EXPECT_EQ(GetDevCnt(), 3);
    EXPECT_EQ(GetActDev(), 0);
    EXPECT_EQ(did, 0x5EED);
    EXPECT_EQ(DevDat[1].lLastErr, 0x20000);
    EXPECT_EQ(DevDat[2].Cfg[0].bCfgValid, 0U) << "the readers behind it aren't read";
    EXPECT_EQ(bus().openHandles(), 3);
}

TEST_F(FailedConnect, CountsAReaderWithoutVersionsAsConnected) {
    plug({.tagPlusConfigurations = 1});
    bus().plug(std::make_shared<TagReader>(), {0x5A3E, 0x9D23, "b"});
    bus().failExchange(0, 1, 6); // the probe of the kind
    EXPECT_EQ(USBConnect(nullptr), 1);
    EXPECT_EQ(DevDat[0].iTagPlusState, 1U);
    EXPECT_EQ(DevDat[0].FWVerTbl[0][0], 0U);
    EXPECT_EQ(GetDevCnt(), 2);
}

TEST_F(FailedConnect, AtAnyExchangeLeavesAWholeTableAndNoHandleBehind) {
    int failures = 0;
    for (int n = 1;; ++n) {
        USBDisconnect();
        bus().clear();
        plug({.tagPlusConfigurations = 2, .cardTypes = {1}, .versions = {{{1}}}});
        bus().failExchange(0, n, 6);
        const int result = USBConnect(nullptr);
        failures += result == 0;
        EXPECT_EQ(lLastCnctErr, result != 0 ? 0U : 0x10000U) << n;
        EXPECT_EQ(GetDevCnt(), 1) << n;
        EXPECT_EQ(GetActDev(), 0) << n;
        EXPECT_EQ(bus().openHandles(), 1) << n;
        if (bus().exchanges(0) < n)
            break;
    }
    EXPECT_GT(failures, 10);
}

TEST_F(ConnectMask, IsStoredWithoutATest) {
    for (const unsigned mask : {0U, 8U, 0xFFFFFFFFU})
        EXPECT_EQ(SetConnectProduct(mask), 1) << mask;
}

TEST_F(ConnectMask, OfTheStripeReadersLoadsNoFilterList) {
    plug({});
    SetConnectProduct(ZELTAGAPI_ZELBAND);
    EXPECT_EQ(USBConnect(nullptr), 0);
    EXPECT_EQ(zelTagVidPid.rows[0].vendor, 0);
    EXPECT_EQ(listIndex, 0);
    EXPECT_EQ(bus().takeTrace(), "");
}

TEST_F(ConnectMask, OfTheSensorLoadsNoFilterListAndEndsOnDeviceZero) {
    SetConnectProduct(ZELTAGAPI_ZELECHO);
    EXPECT_EQ(USBConnect(nullptr), 0);
    EXPECT_EQ(zelTagVidPid.rows[0].vendor, 0);
    EXPECT_EQ(GetActDev(), 0);
}

TEST_F(ConnectMask, OfTheProximityReadersLoadsIt) {
    SetConnectProduct(ZELTAGAPI_ZELTAG);
    EXPECT_EQ(USBConnect(nullptr), 0);
    EXPECT_EQ(listIndex, 8);
}

// The other families' connects clear the error word, and the sensor's moves the active index.
TEST_F(ConnectMask, EndsTheSearchAtTheFirstFamilyThatHasADevice) {
    plug({}, {0x5A3E, 0x9D23, "a"});
    plug({}, {0x5A3E, 0x9D23, "b"});
    DevDat[1].Band.bBandOpen = 1; // would make the stripe readers' connect fail
    EXPECT_EQ(USBConnect(nullptr), 1);
    EXPECT_EQ(lLastCnctErr, 0U);
    DevDat[1].Band.bBandOpen = 0;
}

TEST_F(ConnectKinds, UnlocksTheKeystrokeModeOfItsReaderFirst) {
    const auto reader = plug({}, {TagReader::kKq7Vendor, TagReader::kKq7Product, "kq7"});
    EXPECT_EQ(USBConnect(nullptr), 1);
    EXPECT_EQ(reader->beeps(), 1);
    EXPECT_EQ(reader->lastBeep(), 0);
    EXPECT_EQ(isKQ7Reader(), 1);
    EXPECT_STREQ(GetVidPidVendorName(), "6B2D:9D25 Norvanex KQ7");
    const std::string start = "open kq7\n"
                              "> 8C 03 00 00 00 00 00 00  service: beep 0\n"
                              "< 00 00 00 00 00 00 00 00\n"
                              "> 89 01 00 00 00 00 00 00  multi: query\n";
    EXPECT_EQ(bus().takeTrace().substr(0, start.size()), start);
}

TEST_F(ConnectKinds, BeepsOnNoOtherReader) {
    const auto reader = plug({});
    USBConnect(nullptr);
    EXPECT_EQ(reader->beeps(), 0);
    EXPECT_EQ(isKQ7Reader(), 0);
}

TEST_F(ConnectKinds, MarksTheKeyboardlessReader) {
    plug({}, {0x5A3E, TagReader::kTagAdvProduct, "adv"});
    plug({}, {0x5A3E, 0x9D21, "wiegand"});
    EXPECT_EQ(USBConnect(nullptr), 1);
    EXPECT_EQ(DevDat[0].bTagAdv, 1U);
    EXPECT_EQ(DevDat[0].iVidPidIdx, 2);
    EXPECT_EQ(DevDat[1].bTagAdv, 0U);
    EXPECT_EQ(DevDat[1].iVidPidIdx, 1);
}

TEST_F(SecondConnect, ClosesTheHandlesThatItOverwritesAndLeaksNone) {
    plug({}, {0x5A3E, 0x9D23, "a"});
    plug({}, {0x5A3E, 0x9D23, "b"});
    USBConnect(nullptr);
    bus().unplug(1);
    bus().takeTrace();
    EXPECT_EQ(USBConnect(nullptr), 1);
    EXPECT_EQ(GetDevCnt(), 1);
    EXPECT_EQ(bus().takeTrace().substr(0, 15), "open a\nclose a\n");
    EXPECT_EQ(bus().openHandles(), 2) << "record 1 holds its handle until it is overwritten";
    USBDisconnect();
    EXPECT_EQ(bus().openHandles(), 0);
}

TEST_F(SecondConnect, ForgetsTheFirstOnesCount) {
    plug({});
    for (int i = 0; i < 3; ++i)
        EXPECT_EQ(USBConnect(nullptr), 1);
    EXPECT_EQ(GetDevCnt(), 1);
    EXPECT_EQ(cbIndex, 1);
    EXPECT_EQ(listIndex, 8);
    EXPECT_EQ(bus().openHandles(), 1);
}
