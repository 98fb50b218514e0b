// SPDX-License-Identifier: MIT
// The table of paths, the ranges of a scan, and the port objects of the device table.
#include "tests/transport/port_test.h"
#include "transport/port_objects.h"
#include "transport/serial_lines.h"

#include <cstring>
#include <initializer_list>

namespace zel::test {

namespace {

class SerialSettings : public PortTest {
protected:
    ~SerialSettings() override {
        iComPortMin = 1;
        iComPortMax = 8;
        iVirtualComPortMin = 1;
        iVirtualComPortMax = 256;
        std::memset(LinuxDevPath, 0, sizeof LinuxDevPath);
    }

    static std::string table() {
        return {reinterpret_cast<const char*>(LinuxDevPath), sizeof LinuxDevPath};
    }
    static void fillRow(int row, const std::string& text) {
        std::memset(LinuxDevPath[row], 'a', sizeof LinuxDevPath[row]);
        std::memcpy(LinuxDevPath[row], text.data(), text.size());
    }
};

using Pair = std::pair<int, int>;

Pair searched() { return {iComPortMin, iComPortMax}; }
Pair searchedVirtual() { return {iVirtualComPortMin, iVirtualComPortMax}; }

} // namespace

TEST_F(SerialSettings, GivePathsToNumbers1To16) {
    for (unsigned short port = 1; port <= 16; ++port) {
        const std::string path = "/dev/ttyS" + std::to_string(port);
        EXPECT_EQ(SetComLinux(port, path.c_str()), 1);
        EXPECT_EQ(LinuxDevPath[port], path);
        EXPECT_EQ(registeredPath(port), path);
    }
}

TEST_F(SerialSettings, GiveNoPathToOtherNumbers) {
    const std::string before = table();
    for (const unsigned short port : std::initializer_list<unsigned short>{0, 17, 256, 65535}) {
        EXPECT_EQ(SetComLinux(port, "/dev/ttyS0"), 0) << port;
        EXPECT_EQ(registeredPath(port), nullptr) << port;
    }
    EXPECT_EQ(table(), before);
}

TEST_F(SerialSettings, Keep128CharactersOfAPath) {
    const std::string path = "/dev/" + std::string(195, 'x');
    for (const unsigned short port : std::initializer_list<unsigned short>{1, 16}) {
        SCOPED_TRACE(port);
        EXPECT_EQ(SetComLinux(port, path.c_str()), 1);
        EXPECT_EQ(LinuxDevPath[port], path.substr(0, 128));
        EXPECT_EQ(registeredPath(port), path.substr(0, 128));
    }
    EXPECT_STREQ(LinuxDevPath[2], "");
}

TEST_F(SerialSettings, TakeAPathBack) {
    for (const char* const none : {"", static_cast<const char*>(nullptr)}) {
        SCOPED_TRACE(none);
        SetComLinux(3, "/dev/ttyS3");
        EXPECT_EQ(SetComLinux(3, none), 1);
        EXPECT_EQ(registeredPath(3), nullptr);
        EXPECT_EQ(std::string(LinuxDevPath[3], 129), std::string(129, '\0'));
    }
}

TEST_F(SerialSettings, TellOnlyPathsOfTheDeviceFolderWithCase) {
    for (const char* const path : {"/Dev/ttyS0", "/dev", "dev/ttyS0", "/devices/ttyS0", "COM1:"}) {
        EXPECT_EQ(SetComLinux(1, path), 1);
        EXPECT_EQ(registeredPath(1), nullptr) << path;
    }
    SetComLinux(1, "/dev/");
    EXPECT_STREQ(registeredPath(1), "/dev/");
}

TEST_F(SerialSettings, TellNoPathWithoutAnEnd) {
    fillRow(5, "/dev/");
    EXPECT_EQ(registeredPath(5), nullptr);
    LinuxDevPath[5][128] = '\0';
    EXPECT_EQ(registeredPath(5), "/dev/" + std::string(123, 'a'));
}

TEST_F(SerialSettings, EmptyAllRowsButTheFirstAtStart) {
    for (int row = 0; row < 17; ++row)
        fillRow(row, "/dev/");
    CPort_Init();
    EXPECT_EQ(table(), "/dev/" + std::string(124, 'a') + std::string(std::size_t{16} * 129, '\0'));
}

TEST_F(SerialSettings, OrderTheRangeOfAScan) {
    EXPECT_EQ(SetComSrchRange(9, 3), 1);
    EXPECT_EQ(searched(), Pair(3, 9));
    EXPECT_EQ(SetComSrchRange(1, 256), 1);
    EXPECT_EQ(searched(), Pair(1, 256));
    EXPECT_EQ(SetComSrchRange(7, 7), 1);
    EXPECT_EQ(searched(), Pair(7, 7));
}

TEST_F(SerialSettings, RefuseARangeOutside1To256) {
    SetComSrchRange(3, 9);
    for (const auto& [first, last] :
         {Pair(0, 5), Pair(5, 0), Pair(1, 257), Pair(257, 1), Pair(0, 0), Pair(65535, 65535)})
        EXPECT_EQ(
            SetComSrchRange(static_cast<unsigned short>(first), static_cast<unsigned short>(last)),
            0)
            << first << ", " << last;
    EXPECT_EQ(searched(), Pair(3, 9));
}

TEST_F(SerialSettings, HoldTheNumbersOfAScanWithBothEnds) {
    SetComSrchRange(3, 5);
    for (int port = 0; port < 8; ++port)
        EXPECT_EQ(isInSearchRange(port), port >= 3 && port <= 5) << port;
}

TEST_F(SerialSettings, StoreTheVirtualRangeCrossed) {
    EXPECT_EQ(VirtualComSearchRange(3, 9), 1);
    EXPECT_EQ(searchedVirtual(), Pair(9, 3));
    EXPECT_EQ(VirtualComSearchRange(1, 256), 1);
    EXPECT_EQ(searchedVirtual(), Pair(256, 1));
    EXPECT_EQ(VirtualComSearchRange(0, 0), 1);
    EXPECT_EQ(searchedVirtual(), Pair(0, 0));
}

TEST_F(SerialSettings, RefuseAVirtualRangeThatDoesNotRise) {
    VirtualComSearchRange(3, 9);
    for (const auto& [first, last] :
         {Pair(9, 3), Pair(5, 5), Pair(0, 5), Pair(5, 0), Pair(5, 257), Pair(256, 257)})
        EXPECT_EQ(VirtualComSearchRange(static_cast<unsigned short>(first),
                                        static_cast<unsigned short>(last)),
                  0)
            << first << ", " << last;
    EXPECT_EQ(searchedVirtual(), Pair(9, 3));
}

TEST_F(SerialSettings, TellNoLineAsVirtual) {
    BuildVirtualComMap();
    for (int port = -1; port <= 258; ++port)
        EXPECT_EQ(CheckVirtualMap(port), 0) << port;
    EXPECT_EQ(CheckVirtualMap(INT32_MIN), 0);
    EXPECT_EQ(CheckVirtualMap(INT32_MAX), 0);
}

TEST_F(SerialSettings, TellTheSpeedOfAScan) {
    for (const unsigned rate : {115200U, 1200U, 0U, 9600U}) {
        SetBaudRate(rate);
        EXPECT_EQ(defaultbaudrate, rate);
    }
    EXPECT_EQ(baudrate, 9600U);
}

namespace {
using PortObjects = SerialSettings;
}

TEST_F(PortObjects, AreInUseInAllRecordsWhetherLiveOrNot) {
    for (tsDevDat& record : DevDat) {
        freshPort(record)->SetPort(9);
        EXPECT_TRUE(IsComPortInUse(9)) << &record - DevDat;
        freePort(record);
        EXPECT_FALSE(IsComPortInUse(9));
    }
}

TEST_F(PortObjects, AreInUseByTheirNumberAlone) {
    CPort* const port = freshPort(DevDat[0]);
    port->SetPort(2);
    EXPECT_FALSE(port->IsConn());
    EXPECT_TRUE(IsComPortInUse(2));
    for (const int other : {0, 1, 3, 258, -1, 65538})
        EXPECT_FALSE(IsComPortInUse(other)) << other;
    port->SetTcpIp(127, 0, 0, 1);
    port->SetPort(0);
    EXPECT_TRUE(IsComPortInUse(0));
}

TEST_F(PortObjects, AreKeptForTheNextTryDisconnected) {
    CPort* const port = freshPort(DevDat[4]);
    port->SetPort(1);
    EXPECT_TRUE(port->Connect());
    EXPECT_EQ(freshPort(DevDat[4]), port);
    EXPECT_FALSE(port->IsConn());
    EXPECT_EQ(port->port(), 1U);
}

TEST_F(PortObjects, AreFreedOnceForAllRecordsThatHoldOne) {
    CPort* const shared = freshPort(DevDat[0]);
    EXPECT_TRUE(shared->Connect());
    DevDat[126].pPort = shared;
    CPort* const other = freshPort(DevDat[1]);
    freePort(DevDat[126]);
    EXPECT_EQ(DevDat[0].pPort, nullptr);
    EXPECT_EQ(DevDat[126].pPort, nullptr);
    EXPECT_EQ(DevDat[1].pPort, other);
    char next;
    EXPECT_EQ(recv(device_, &next, 1, MSG_DONTWAIT), 0) << "its line is closed";
    freePort(DevDat[0]);
}

} // namespace zel::test
