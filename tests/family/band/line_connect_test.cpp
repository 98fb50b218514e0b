// SPDX-License-Identifier: MIT
// The scan for stripe readers on lines, which is not the one for proximity readers.
#include "family/band/band.h"
#include "tests/family/line_scan.h"
#include "transport/port.h"
#include "transport/port_objects.h"
#include "transport/serial_lines.h"

#include <cstring>

using namespace zel::test;

namespace {

class BandLines : public LineScan {
protected:
    ~BandLines() override { iDevsFnd = 0; }
};

class BandScan : public BandLines {};
class BandScanPorts : public BandLines {};
class BandComConnect : public BandLines {};
class BandComConnectPort : public BandLines {};
class BandComDisconnect : public BandLines {};
class BandSearch : public BandLines {};
class BandFullTable : public BandLines {};

} // namespace

TEST_F(BandScan, WakesAndAsksAReaderOnEachLine) {
    attachStripe(1);
    SetComSrchRange(1, 1);
    EXPECT_EQ(zelband_ComConnect(nullptr), 1);
    EXPECT_EQ(told(), "open /dev/ttySIM1\n"
                      "~ 30 ms\n"
                      "> \"\\r\\r\"\n"
                      "~ 30 ms\n"
                      "> \"QRZ00000000000000000000\\r\"\n"
                      "~ 5 ms\n"
                      "< \"RRZZB100\\rxxxxxxxxxxxxxxx\"\n"
                      "~ 2 ms\n");
}

TEST_F(BandScan, TriesTheLinesOfTheRangeInOrder) {
    for (const int port : {1, 3, 5, 6})
        attachStripe(port);
    SetComSrchRange(2, 5);
    EXPECT_EQ(zelband_ComConnect(nullptr), 1);
    EXPECT_EQ(opened(), "2 fails 3 4 fails 5");
    EXPECT_EQ(GetDevCnt(), 2);
}

TEST_F(BandScan, NamesRecordZeroWhicheverRecordTakesTheReader) {
    attachStripe(2);
    attachStripe(7);
    std::strcpy(DevDat[1].szDevName, "kept");
    EXPECT_EQ(zelband_ComConnect(nullptr), 1);
    EXPECT_STREQ(DevDat[0].szDevName, "COM7:");
    EXPECT_STREQ(DevDat[1].szDevName, "kept");
    for (const tsDevDat* const record : {&DevDat[0], &DevDat[1]}) {
        EXPECT_EQ(record->iProduct, 2U);
        EXPECT_EQ(record->iDevType, 1);
        EXPECT_EQ(record->Band.bBandOpen, 0U) << "that mark is of USB";
        EXPECT_EQ(record->bTagOpen, 0U);
    }
}

TEST_F(BandScan, GoesOnBehindTheDevicesInTheTable) {
    connectReader();
    attachStripe(1);
    EXPECT_EQ(zelband_ComConnect(nullptr), 1);
    EXPECT_EQ(GetDevCnt(), 2);
    EXPECT_EQ(DevDat[0].iProduct, 1U);
    EXPECT_STREQ(DevDat[0].szDevName, "COM1:");
    EXPECT_EQ(DevDat[0].pPort, nullptr);
    EXPECT_EQ(DevDat[1].iProduct, 2U);
    ASSERT_NE(DevDat[1].pPort, nullptr);
    EXPECT_EQ(DevDat[1].pPort->port(), 1U);
}

TEST_F(BandScan, LeavesTheActiveIndexWhereItWas) {
    attachSilence(1);
    attachStripe(2);
    iDevsFnd = 3;
    iActDev = 2;
    EXPECT_TRUE(zel::band::scanLines());
    EXPECT_EQ(iActDev, 2);
    EXPECT_EQ(GetDevCnt(), 4);
}

TEST_F(BandScan, RunsAtNineThousandSixHundredBaud) {
    SetBaudRate(38400);
    baudrate = 38400;
    EXPECT_EQ(zelband_comConnect(), 0);
    EXPECT_EQ(baudrate, 9600U);
}

TEST_F(BandScan, PassesOverLinesThatAnyRecordHasAnObjectFor) {
    for (const int port : {1, 2, 3})
        attachStripe(port);
    zel::freshPort(DevDat[126]);
    DevDat[126].pPort->SetPort(2);
    EXPECT_EQ(zelband_comConnect(), 1);
    EXPECT_EQ(opened(), "1 3 4 fails 5 fails 6 fails 7 fails 8 fails");
    EXPECT_EQ(GetDevCnt(), 2);
}

TEST_F(BandScan, FindsNothingOnItsOwnReadersLines) {
    attachStripe(1);
    EXPECT_EQ(zelband_comConnect(), 1);
    bus().takeTrace();
    EXPECT_EQ(zelband_comConnect(), 0);
    EXPECT_EQ(opened(), "2 fails 3 fails 4 fails 5 fails 6 fails 7 fails 8 fails");
    EXPECT_EQ(GetDevCnt(), 1) << "it empties no table";
}

TEST_F(BandScan, TakesNoProximityReader) {
    attachTag(1);
    EXPECT_EQ(zelband_comConnect(), 0);
    EXPECT_EQ(GetDevCnt(), 0);
}

TEST_F(BandScanPorts, KeepAnObjectThatCouldNotOpenForTheNextLine) {
    EXPECT_EQ(zelband_comConnect(), 0);
    const CPort* const object = DevDat[0].pPort;
    ASSERT_NE(object, nullptr);
    EXPECT_EQ(object->port(), 8U);
    EXPECT_FALSE(object->IsConn());
}

TEST_F(BandScanPorts, LoseTheObjectOfALineThatDoesNotAnswer) {
    attachSilence(8);
    EXPECT_EQ(zelband_comConnect(), 0);
    EXPECT_EQ(DevDat[0].pPort, nullptr);
    EXPECT_EQ(DevDat[0].iProduct, 0U);
    lines().takeIn();
    EXPECT_EQ(lines().openLines(), 0);
}

TEST_F(BandScanPorts, CloseALineThatTheNextRecordStillHolds) {
    attachStripe(1);
    zel::freshPort(DevDat[0]);
    DevDat[0].pPort->SetPort(5);
    lines().attach(path(5), std::make_shared<StripeLine>());
    ASSERT_TRUE(DevDat[0].pPort->Connect());
    SetComSrchRange(1, 1);
    EXPECT_EQ(zelband_comConnect(), 1);
    lines().takeIn();
    EXPECT_EQ(lines().openLines(), 1);
    EXPECT_EQ(DevDat[0].pPort->port(), 1U);
}

TEST_F(BandComConnect, TellsTheDeviceIdOfRecordZeroAndMakesItActive) {
    attachStripe(1);
    iDevsFnd = 2;
    iActDev = 1;
    DevDat[0].iDID = 0xFFFE;
    std::int64_t did = 0;
    EXPECT_EQ(zelband_ComConnect(&did), 1);
    EXPECT_EQ(did, 0xFFFE);
    EXPECT_EQ(GetActDev(), 0);
}

TEST_F(BandComConnectPort, TriesOneLineAndPutsTheRangeBack) {
    attachStripe(1);
    attachStripe(4);
    SetComSrchRange(2, 9);
    EXPECT_EQ(zelband_comConnectPort(4), 1);
    EXPECT_EQ(opened(), "4");
    EXPECT_EQ(iComPortMin, 2);
    EXPECT_EQ(iComPortMax, 9);
    EXPECT_EQ(lLastCnctErr, 0U);
}

TEST_F(BandComConnectPort, PutsTheRangeBackAlsoInVainAndNamesTheReason) {
    SetComSrchRange(2, 9);
    EXPECT_EQ(zelband_comConnectPort(5), 0);
    EXPECT_EQ(lLastCnctErr, 0x10000U);
    EXPECT_EQ(iComPortMin, 2);
    EXPECT_EQ(iComPortMax, 9);
}

TEST_F(BandComConnectPort, RefusesNumberZeroAndATableInUse) {
    attachStripe(1);
    EXPECT_EQ(zelband_comConnectPort(0), 0);
    iDevsFnd = 1;
    EXPECT_EQ(zelband_comConnectPort(1), 0);
    EXPECT_EQ(lLastCnctErr, 0U);
    EXPECT_EQ(lines().opens(), 0);
}

TEST_F(BandComDisconnect, ClosesTheLineAndKeepsTheRecordAndTheObject) {
    attachStripe(1);
    zelband_comConnect();
    told();
    EXPECT_EQ(zelband_ComDisconnect(), 1);
    EXPECT_EQ(told(), "close /dev/ttySIM1\n");
    EXPECT_EQ(GetProduct(), 2U);
    EXPECT_TRUE(IsComPortInUse(1));
    EXPECT_EQ(zelband_IsDevicePresent(), 0);
}

TEST_F(BandComDisconnect, OfARecordWithoutALineIsZero) { EXPECT_EQ(zelband_ComDisconnect(), 0); }

TEST_F(BandComDisconnect, LeavesTheSocketOfAConnectAlone) {
    tcpipUSBmode = true;
    zelband_ComDisconnect();
    EXPECT_TRUE(tcpipUSBmode);
    tcpipUSBmode = false;
}

TEST_F(BandSearch, ReachesTheLinesWhereTheSearchAllows) {
    attachStripe(1);
    for (const short type : std::initializer_list<short>{0, 2}) {
        SetDevTypeSrch(type);
        EXPECT_EQ(zelband_USBConnect(), 0) << type;
        EXPECT_EQ(lines().opens(), 0) << type;
        EXPECT_EQ(lLastCnctErr, 0U) << type;
    }
    SetDevTypeSrch(1);
    EXPECT_EQ(zelband_USBConnect(), 1);
    SetDevTypeSrch(-1);
    EXPECT_EQ(zelband_USBConnect(), 0) << "its line is in use";
    EXPECT_EQ(lLastCnctErr, 0x10000U);
    EXPECT_EQ(GetDevCnt(), 1);
}

TEST_F(BandFullTable, TakesOneReaderIntoTheLastRecord) {
    attachStripe(1);
    attachStripe(2);
    iDevsFnd = 126;
    EXPECT_EQ(zelband_comConnect(), 1);
    EXPECT_EQ(GetDevCnt(), 127);
    EXPECT_EQ(DevDat[126].iProduct, 2U);
    EXPECT_EQ(lines().opens(), 1);
}

TEST_F(BandFullTable, TakesNoReader) {
    attachStripe(1);
    iDevsFnd = 127;
    EXPECT_EQ(zelband_comConnect(), 0);
    EXPECT_EQ(lines().opens(), 0);
}
