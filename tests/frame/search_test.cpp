// SPDX-License-Identifier: MIT
// Which transports a connect tries, and how a device is found again.
#include "family/tag/tag.h"
#include "tests/support/library_test.h"

using namespace zel::test;

namespace {
class TransportSearch : public LibraryTest {};
class DeviceByLuid : public LibraryTest {
protected:
    DeviceByLuid() {
        iDevsFnd = 4;
        DevDat[1].iLUID = DevDat[3].iLUID = 7;
    }
    ~DeviceByLuid() override { iDevsFnd = 0; }
};
} // namespace

TEST_F(TransportSearch, TakesFourValuesAndKeepsTheRestOut) {
    for (const short type : std::initializer_list<short>{0, 1, 2, -1}) {
        EXPECT_EQ(SetDevTypeSrch(type), 1) << type;
        EXPECT_EQ(iCnctDevType, static_cast<std::uint16_t>(type));
    }
    for (const short type : std::initializer_list<short>{3, -2, 32767, -32768}) {
        EXPECT_EQ(SetDevTypeSrch(type), 0) << type;
        EXPECT_EQ(zeltag_SetDevTypeSrch(type), 0) << type;
        EXPECT_EQ(iCnctDevType, 65535);
    }
}

TEST_F(TransportSearch, TriesAllAtStart) {
    _APIinit();
    EXPECT_EQ(iCnctDevType, 65535);
}

TEST_F(TransportSearch, LeavesUsbAloneOnOtherTransports) {
    plugReader();
    SetIpPort(127, 0, 0, 1, 9);
    for (const short type : std::initializer_list<short>{1, 2}) {
        SetDevTypeSrch(type);
        EXPECT_EQ(zeltag_USBConnect(), 0) << type;
    }
    EXPECT_EQ(bus().takeTrace().find("open"), std::string::npos);
}

TEST_F(TransportSearch, FindsAUsbReaderOnAllTransports) {
    plugReader();
    EXPECT_EQ(zeltag_USBConnect(), 1);
    EXPECT_EQ(bus().takeTrace(), "open reader\n");
    EXPECT_EQ(GetProduct(), 1U);
}

TEST_F(TransportSearch, CountsAReaderThatJoinsOthers) {
    plugReader();
    EXPECT_EQ(zeltag_USBConnect(), 1);
    EXPECT_EQ(zeltag_USBConnect(), 1);
    EXPECT_EQ(GetDevCnt(), 2);
    bus().unplug(0);
    EXPECT_EQ(zeltag_USBConnect(), 0) << "none new";
}

TEST_F(DeviceByLuid, IsTheFirstFromTheStartUpward) {
    EXPECT_EQ(GetDevByLUID(7, 0), 1);
    EXPECT_EQ(GetDevByLUID(7, 1), 1);
    EXPECT_EQ(GetDevByLUID(7, 2), 3);
    EXPECT_EQ(GetDevByLUID(7, 4), -1);
    EXPECT_EQ(GetDevByLUID(7, -1), -1);
    EXPECT_EQ(GetDevByLUID(8, 0), -1);
}

TEST_F(DeviceByLuid, IsSoughtAmongTheDevicesFound) {
    iDevsFnd = 3;
    EXPECT_EQ(GetDevByLUID(7, 2), -1);
    iDevsFnd = 0;
    EXPECT_EQ(GetDevByLUID(7, 0), -1);
    iDevsFnd = 32767;
    EXPECT_EQ(GetDevByLUID(8, 0), -1) << "never past the table";
}

TEST_F(DeviceByLuid, ComparesSixteenBits) {
    DevDat[2].iLUID = 0xFFFF;
    EXPECT_EQ(GetDevByLUID(-1, 0), 2);
}
