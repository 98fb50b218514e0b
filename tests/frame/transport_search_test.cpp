// SPDX-License-Identifier: MIT
// USBConnect() beyond USB: the order of the transports, and what a device on a line is called.
#include "family/tag/tag.h"
#include "tests/family/band/stripe_reader.h"
#include "tests/family/line_scan.h"
#include "tests/support/loopback.h"
#include "transport/port.h"
#include "transport/port_objects.h"
#include "transport/serial_lines.h"

#include <cstring>

using namespace zel::test;

namespace {

// The network holds no bridge.
class SearchOrder : public LineScan {
protected:
    SearchOrder() {
        const auto host = loopbackHost(5);
        SetIpPort(host[0], host[1], host[2], host[3], 9);
        SetConnectProduct(ZELTAGAPI_ZELTAG);
        SetComSrchRange(1, 2);
    }
    ~SearchOrder() override {
        SetIpPort(0, 0, 0, 0, 0);
        iDevsFnd = 0;
    }
};

class SearchCount : public SearchOrder {};
class LineName : public LineScan {
protected:
    LineName() { std::memset(name, 'x', sizeof name); }

    char name[512];
};
class LineDisconnect : public LineScan {};

// A bridge is asked for its address twice, once for each form; it answers neither.
const std::string kNetwork = "~ 50 ms x 20\n";

} // namespace

TEST_F(SearchOrder, IsUsbThenLinesThenNetwork) {
    SetDevTypeSrch(-1);
    EXPECT_EQ(USBConnect(nullptr), 0);
    EXPECT_EQ(told(), "open /dev/ttySIM1 fails\nopen /dev/ttySIM2 fails\n" + kNetwork);
    EXPECT_EQ(lLastCnctErr, 0x10000U);
}

TEST_F(SearchOrder, EndsWithUsbWhereAReaderIs) {
    plugReader();
    attachTag(1);
    SetDevTypeSrch(-1);
    EXPECT_EQ(USBConnect(nullptr), 1);
    EXPECT_EQ(lines().opens(), 0);
    EXPECT_EQ(lLastCnctErr, 0U);
    EXPECT_EQ(GetDevType(), 0);
}

TEST_F(SearchOrder, EndsWithTheLinesWhereAReaderIs) {
    attachTag(2);
    SetDevTypeSrch(-1);
    EXPECT_EQ(USBConnect(nullptr), 1);
    EXPECT_EQ(told().find(kNetwork), std::string::npos);
    EXPECT_EQ(lLastCnctErr, 0U);
    EXPECT_EQ(GetDevType(), 1);
    EXPECT_EQ(GetDevCnt(), 1);
    EXPECT_EQ(DevDat[0].Cfg[0].bCfgValid, 1U);
}

TEST_F(SearchOrder, OnLinesAloneLeavesTheOthers) {
    plugReader();
    SetDevTypeSrch(1);
    EXPECT_EQ(USBConnect(nullptr), 0);
    EXPECT_EQ(told(), "open /dev/ttySIM1 fails\nopen /dev/ttySIM2 fails\n");
    EXPECT_EQ(lLastCnctErr, 0x10000U);
    attachTag(1);
    EXPECT_EQ(USBConnect(nullptr), 1);
    EXPECT_EQ(lLastCnctErr, 0U);
    EXPECT_STREQ(DevDat[0].szDevName, "COM1:");
}

TEST_F(SearchOrder, OnTheNetworkAloneLeavesTheOthersAndNamesNoReason) {
    plugReader();
    attachTag(1);
    SetDevTypeSrch(2);
    EXPECT_EQ(USBConnect(nullptr), 0);
    EXPECT_EQ(told(), kNetwork);
    EXPECT_EQ(lLastCnctErr, 0U);
}

TEST_F(SearchOrder, ReadsTheVersionsOfAReaderOnALine) {
    attachReader(path(1), {.tagPlusConfigurations = 1, .versions = {{{11, 12}}}});
    SetDevTypeSrch(1);
    EXPECT_EQ(USBConnect(nullptr), 1);
    EXPECT_EQ(DevDat[0].iTagPlusState, 2U);
    EXPECT_EQ(DevDat[0].FWVerTbl[0][0], 11U);
    EXPECT_EQ(DevDat[0].FWVerTbl[0][1], 12U);
    EXPECT_EQ(DevDat[0].FWVerTbl[0][2], 0U);
}

// Each family's connect clears the word, and the sensor has no line to fail on.
TEST_F(SearchOrder, OfAllFamiliesNamesTheReasonOfTheLastOne) {
    SetDevTypeSrch(1);
    SetConnectProduct(ZELTAGAPI_ZELTAG | ZELTAGAPI_ZELBAND);
    EXPECT_EQ(USBConnect(nullptr), 0);
    EXPECT_EQ(lLastCnctErr, 0x10000U);
    SetConnectProduct(~0U);
    EXPECT_EQ(USBConnect(nullptr), 0);
    EXPECT_EQ(lLastCnctErr, 0U);
}

TEST_F(SearchOrder, ComesToTheStripeReadersBehindTheOthers) {
    lines().attach(path(2), std::make_shared<StripeLine>());
    SetDevTypeSrch(1);
    SetConnectProduct(~0U);
    USBConnect(nullptr);
    EXPECT_EQ(GetDevCnt(), 1);
    EXPECT_EQ(DevDat[0].iProduct, 2U);
    EXPECT_EQ(DevDat[0].Band.bBandOpen, 0U);
}

// A scan empties the table first; an emptied table has another count than the one before, which
// counts as found.
TEST_F(SearchCount, TakesATableThatTheScanEmptiedForASuccess) {
    connectReader();
    bus().unplug(0);
    DevDat[0].iProduct = 4;
    SetDevTypeSrch(-1);
    EXPECT_EQ(zeltag_USBConnect(), 1);
    EXPECT_EQ(GetDevCnt(), 0);
    EXPECT_EQ(lLastCnctErr, 0x10000U);
    EXPECT_EQ(DevDat[0].iProduct, 1U);
    EXPECT_EQ(told(), "open /dev/ttySIM1 fails\nopen /dev/ttySIM2 fails\n");
}

TEST_F(SearchCount, TakesAsManyReadersAsBeforeForNone) {
    connectReader();
    bus().unplug(0);
    attachTag(1);
    SetDevTypeSrch(1);
    EXPECT_EQ(zeltag_USBConnect(), 0);
    EXPECT_EQ(GetDevCnt(), 1);
    EXPECT_EQ(lLastCnctErr, 0x10000U);
    EXPECT_STREQ(DevDat[0].szDevName, "COM1:");
}

TEST_F(LineName, ComesWithTheNumberAndZerosBehindIt) {
    attachTag(3);
    ComConnect(nullptr);
    EXPECT_EQ(GetDevName(name), 3);
    EXPECT_EQ(std::string(name, 511), "COM3:" + std::string(506, '\0'));
    EXPECT_EQ(name[511], 'x');
    EXPECT_EQ(nv_GetDevName(name), 3);
}

TEST_F(LineName, OfFullLengthHasNoEnd) {
    attachTag(3);
    ComConnect(nullptr);
    std::memset(DevDat[0].szDevName, 'n', 512);
    EXPECT_EQ(GetDevName(name), 3);
    EXPECT_EQ(std::string(name, 512), std::string(511, 'n') + 'x');
}

TEST_F(LineName, IsThatOfTheNumberAfterItsLineWasClosed) {
    attachTag(3);
    ComConnect(nullptr);
    ComDisconnect();
    EXPECT_EQ(GetDevName(name), 3);
    EXPECT_STREQ(GetVidPidVendorName(), "");
}

TEST_F(LineDisconnect, ClosesLinesAndFreesObjectsOfAllRecords) {
    attachTag(1);
    attachTag(2);
    ComConnect(nullptr);
    zel::freshPort(DevDat[126]);
    DevDat[126].pPort->SetPort(77);
    told();
    EXPECT_EQ(USBDisconnect(), 1);
    EXPECT_EQ(told(), "close /dev/ttySIM1\nclose /dev/ttySIM2\n");
    for (int port = 1; port <= 256; ++port)
        EXPECT_FALSE(IsComPortInUse(port)) << port;
    EXPECT_EQ(DevDat[0].iProduct, 0U);
    EXPECT_EQ(DevDat[0].iDevType, 1) << "a name and a kind stay with the record";
    EXPECT_STREQ(DevDat[0].szDevName, "COM1:");
}

TEST_F(LineDisconnect, FreesAnObjectOnceThoughTwoRecordsHoldIt) {
    attachTag(1);
    ComConnect(nullptr);
    DevDat[5].pPort = DevDat[0].pPort;
    EXPECT_EQ(USBDisconnect(), 1);
    EXPECT_EQ(DevDat[5].pPort, nullptr);
}
