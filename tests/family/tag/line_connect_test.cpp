// SPDX-License-Identifier: MIT
// The scan for proximity readers on lines: what it tries, and what it leaves in the table.
#include "family/tag/tag.h"
#include "tests/family/line_scan.h"
#include "transport/port.h"
#include "transport/serial_lines.h"

using namespace zel::test;

namespace {

class TagScan : public LineScan {};
class TagScanPorts : public LineScan {};
class TagComConnect : public LineScan {};
class TagComConnectPort : public LineScan {};
class TagFullTable : public LineScan {
protected:
    ~TagFullTable() override { iDevsFnd = 0; }
};

} // namespace

TEST_F(TagScan, AsksALineWhetherAReaderIsThere) {
    attachTag(1);
    SetComSrchRange(1, 1);
    EXPECT_EQ(zeltag_ComConnect(nullptr), 1);
    EXPECT_EQ(told(), "open /dev/ttySIM1\n"
                      "> FA\n"
                      "~ 50 ms\n"
                      "> 04 ED ED 04\n"
                      "~ 5 ms\n"
                      "< 04 00 00 42 01 90 00\n");
}

// Each try waits for a procedure byte and for the rest of a refusal's status word.
TEST_F(TagScan, AsksTwiceWhereNothingAnswersAndClosesTheLine) {
    attachSilence(1);
    SetComSrchRange(1, 1);
    EXPECT_EQ(zeltag_ComConnect(nullptr), 0);
    EXPECT_EQ(told(), "open /dev/ttySIM1\n"
                      "> FA\n"
                      "~ 50 ms\n"
                      "> 04 ED ED 04\n"
                      "~ 5 ms x 200\n"
                      "> FA\n"
                      "~ 50 ms\n"
                      "> 04 ED ED 04\n"
                      "~ 5 ms x 200\n"
                      "close /dev/ttySIM1\n");
    EXPECT_EQ(lLastCnctErr, 0U) << "its callers set it";
}

TEST_F(TagScan, TriesTheLinesOfTheRangeInOrder) {
    for (const int port : {1, 3, 5, 6})
        attachTag(port);
    SetComSrchRange(5, 2);
    EXPECT_EQ(zeltag_ComConnect(nullptr), 1);
    EXPECT_EQ(opened(), "2 fails 3 4 fails 5");
    EXPECT_EQ(GetDevCnt(), 2);
}

TEST_F(TagScan, TriesLinesOneToEightAtStart) {
    for (unsigned short port = 9; port <= 16; ++port)
        SetComLinux(port, path(port).c_str());
    EXPECT_EQ(zeltag_ComConnect(nullptr), 0);
    EXPECT_EQ(opened(), "1 fails 2 fails 3 fails 4 fails 5 fails 6 fails 7 fails 8 fails");
}

TEST_F(TagScan, OpensTheRegisteredPathsAndNoOther) {
    for (unsigned short port = 1; port <= 8; ++port)
        SetComLinux(port, "");
    SetComLinux(3, "/dev/ttySIM8");
    SetComLinux(4, "ttySIM8");
    SetComLinux(5, "/DEV/ttySIM8");
    attachTag(1);
    attachTag(8);
    SetComSrchRange(1, 256);
    EXPECT_EQ(zeltag_ComConnect(nullptr), 1);
    EXPECT_EQ(opened(), "8");
    EXPECT_EQ(lines().opens(), 1);
    EXPECT_STREQ(DevDat[0].szDevName, "COM3:");
}

TEST_F(TagScan, IsTheFirstToOpenAnyPath) {
    _APIinit();
    SetComLinux(1, kPath);
    SetComSrchRange(1, 256);
    SetBaudRate(19200);
    attachReader();
    SetActDev(0);
    ComDisconnect();
    EXPECT_EQ(lines().opens(), 0);
    zeltag_ComConnect(nullptr);
    EXPECT_EQ(lines().opens(), 1);
}

TEST_F(TagScan, FillsARecordForEachReader) {
    attachTag(2);
    attachTag(7);
    DevDat[1].iProduct = 4;
    EXPECT_EQ(zeltag_ComConnect(nullptr), 1);
    EXPECT_EQ(GetDevCnt(), 2);
    EXPECT_EQ(GetActDev(), 0);
    EXPECT_STREQ(DevDat[0].szDevName, "COM2:");
    EXPECT_STREQ(DevDat[1].szDevName, "COM7:");
    for (const tsDevDat* const record : {&DevDat[0], &DevDat[1]}) {
        EXPECT_EQ(record->bTagOpen, 1U);
        EXPECT_EQ(record->iProduct, 1U);
        EXPECT_EQ(record->iDevType, 1);
        EXPECT_TRUE(record->pPort && record->pPort->IsConn());
    }
    EXPECT_EQ(DevDat[2].bTagOpen, 0U);
}

TEST_F(TagScan, OpensLinesAtTheDefaultSpeed) {
    SetBaudRate(38400);
    baudrate = 9600;
    EXPECT_EQ(zeltag_ComConnect(nullptr), 0);
    EXPECT_EQ(baudrate, 38400U);
}

TEST_F(TagScanPorts, KeepAnObjectThatCouldNotOpenForTheNextLine) {
    attachTag(8);
    lines().failOpens(path(8));
    EXPECT_EQ(zeltag_ComConnect(nullptr), 0);
    const CPort* const object = DevDat[0].pPort;
    ASSERT_NE(object, nullptr);
    EXPECT_TRUE(IsComPortInUse(8));
    EXPECT_FALSE(IsComPortInUse(7));
    EXPECT_FALSE(object->IsConn());
    lines().failOpens(path(8), false);
    EXPECT_EQ(zeltag_ComConnect(nullptr), 1);
    EXPECT_EQ(DevDat[0].pPort, object) << "lines 1 to 7 and 8 again, all by the same object";
}

TEST_F(TagScanPorts, LoseTheObjectOfALineThatDoesNotAnswer) {
    attachSilence(8);
    EXPECT_EQ(zeltag_ComConnect(nullptr), 0);
    EXPECT_EQ(DevDat[0].pPort, nullptr);
    EXPECT_FALSE(IsComPortInUse(8));
    EXPECT_EQ(DevDat[0].iProduct, 0U);
    lines().takeIn();
    EXPECT_EQ(lines().openLines(), 0);
}

TEST_F(TagScanPorts, BehindAReaderBelongToTheNextRecord) {
    attachTag(3);
    EXPECT_EQ(zeltag_ComConnect(nullptr), 1);
    EXPECT_TRUE(IsComPortInUse(3));
    ASSERT_NE(DevDat[1].pPort, nullptr);
    EXPECT_EQ(DevDat[1].pPort->port(), 8U);
    EXPECT_EQ(DevDat[2].pPort, nullptr);
}

TEST_F(TagComConnect, TellsTheDeviceIdOfRecordZeroAsSixteenBits) {
    attachTag(1);
    DevDat[0].iDID = 0xFFFE;
    std::int64_t did = 0;
    EXPECT_EQ(zeltag_ComConnect(&did), 1);
    EXPECT_EQ(did, 0xFFFE);
}

TEST_F(TagComConnect, FailsWhenItFindsAsManyAsStoodThere) {
    attachTag(1);
    attachTag(2);
    EXPECT_EQ(zeltag_comConnect(), 1);
    std::int64_t did = 0x5EED;
    EXPECT_EQ(zeltag_ComConnect(&did), 0);
    EXPECT_EQ(did, 0x5EED);
    EXPECT_EQ(GetDevCnt(), 2);
    EXPECT_EQ(GetActDev(), 1) << "the reader found last";
    attachTag(3);
    EXPECT_EQ(zeltag_comConnect(), 1);
    EXPECT_EQ(GetDevCnt(), 3);
}

TEST_F(TagComConnect, EmptiesTheTableAlsoInVain) {
    attachSilence(1);
    iDevsFnd = 5;
    iActDev = 4;
    EXPECT_EQ(zeltag_comConnect(), 0);
    EXPECT_EQ(GetDevCnt(), 0);
    EXPECT_EQ(GetActDev(), 0);
}

TEST_F(TagComConnectPort, TriesOneLineAndPutsTheRangeBack) {
    attachTag(1);
    attachTag(4);
    SetComSrchRange(2, 9);
    DevDat[0].iDID = 0x142;
    std::int64_t did = 0;
    EXPECT_EQ(zeltag_ComConnectPort(4, &did), 1);
    EXPECT_EQ(did, 0x142);
    EXPECT_EQ(opened(), "4");
    EXPECT_EQ(iComPortMin, 2);
    EXPECT_EQ(iComPortMax, 9);
    EXPECT_EQ(lLastCnctErr, 0U);
}

TEST_F(TagComConnectPort, PutsTheRangeBackAlsoInVainAndNamesTheReason) {
    SetComSrchRange(2, 9);
    for (const auto port : std::initializer_list<unsigned short>{5, 17, 257, 65535}) {
        lLastCnctErr = 2;
        EXPECT_EQ(zeltag_comConnectPort(port), 0) << port;
        EXPECT_EQ(lLastCnctErr, 0x10002U) << port;
        EXPECT_EQ(iComPortMin, 2);
        EXPECT_EQ(iComPortMax, 9);
    }
    EXPECT_EQ(opened(), "5 fails");
}

TEST_F(TagComConnectPort, RefusesNumberZeroAndATableInUse) {
    attachTag(1);
    EXPECT_EQ(zeltag_comConnectPort(0), 0);
    iDevsFnd = 1;
    EXPECT_EQ(zeltag_comConnectPort(1), 0);
    EXPECT_EQ(lLastCnctErr, 0U);
    EXPECT_EQ(GetDevCnt(), 1);
    EXPECT_EQ(lines().opens(), 0);
}

TEST_F(TagFullTable, HasALastRecord) {
    iDevsFnd = 126;
    zeltag_SetSerialPort(5, 19200);
    ASSERT_NE(DevDat[126].pPort, nullptr);
    EXPECT_EQ(DevDat[126].pPort->port(), 5U);
    EXPECT_EQ(DevDat[126].iDevType, 1);
    EXPECT_EQ(baudrate, 19200U);
}

TEST_F(TagFullTable, HasNoRecordForALine) {
    baudrate = 9600;
    for (const short count : std::initializer_list<short>{127, 32767, -1}) {
        iDevsFnd = count;
        zeltag_SetSerialPort(5, 19200);
    }
    EXPECT_FALSE(IsComPortInUse(5));
    EXPECT_EQ(baudrate, 9600U);
}

TEST_F(TagFullTable, IsEmptiedByAScan) {
    attachTag(1);
    iDevsFnd = 127;
    EXPECT_EQ(zeltag_comConnect(), 1);
    EXPECT_EQ(GetDevCnt(), 1);
}
