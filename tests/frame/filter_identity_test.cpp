// SPDX-License-Identifier: MIT
// Name and filter values that the filter list gives the active device.
#include "family/band/band.h"
#include "family/echo/echo.h"
#include "tests/support/library_test.h"
#include "tests/support/temporary_folder.h"

#include <climits>

using namespace zel::test;

namespace {

class ListedDevice : public LibraryTest {
protected:
    ListedDevice() { listIndex = 0; }
    ~ListedDevice() override {
        tcpipUSBmode = false;
        iDevsFnd = 0;
    }

    // Connects to one reader, with the fixed list in force.
    void connectTo(unsigned short vendor, unsigned short product) {
        plugReader({vendor, product, "reader"});
        EXPECT_EQ(USBConnect(nullptr), 1);
    }

    static constexpr char kBuiltInName[] = "5A3E:9D23 Norvanex";

    TemporaryFolder folder_;
};

class ListedName : public ListedDevice {};
class ListedFilter : public ListedDevice {};

} // namespace

TEST_F(ListedName, WithNoDeviceIsTheBuiltInOne) {
    EXPECT_STREQ(GetVidPidVendorName(), kBuiltInName);
    DevDat[0].iDevType = 1;
    EXPECT_STREQ(GetVidPidVendorName(), kBuiltInName);
}

TEST_F(ListedName, OfADeviceMatchedDirectlyIsTheBuiltInOne) {
    connectTo(0x5A3E, 0x9D23);
    EXPECT_STREQ(GetVidPidVendorName(), kBuiltInName);
}

TEST_F(ListedName, OfADeviceOfTheListIsThatOfItsRow) {
    connectTo(0x5A3E, 0x9D21);
    EXPECT_STREQ(GetVidPidVendorName(), "5A3E:9D21 Norvanex Wiegand");
}

TEST_F(ListedName, OfARowOutsideTheListIsTheBuiltInOne) {
    connectTo(0x5A3E, 0x9D21);
    for (const int row : {-1, 51, INT_MAX, INT_MIN}) {
        DevDat[0].iVidPidIdx = row;
        EXPECT_STREQ(GetVidPidVendorName(), kBuiltInName) << row;
    }
    DevDat[0].iVidPidIdx = 50;
    EXPECT_STREQ(GetVidPidVendorName(), "") << "an empty row inside it";
}

TEST_F(ListedName, IsEmptyOnOtherTransports) {
    connectTo(0x5A3E, 0x9D21);
    for (const std::uint16_t type : std::initializer_list<std::uint16_t>{1, 2}) {
        DevDat[0].iDevType = type;
        EXPECT_STREQ(GetVidPidVendorName(), "") << type;
    }
    DevDat[0].iDevType = 3;
    EXPECT_STREQ(GetVidPidVendorName(), "5A3E:9D21 Norvanex Wiegand");
    tcpipUSBmode = true;
    EXPECT_STREQ(GetVidPidVendorName(), "");
}

TEST_F(ListedName, IsEmptyForOtherProducts) {
    char name[] = "other";
    zelecho_FoundDevice(name, nullptr, -1);
    zelband_FoundDevice(name, nullptr, 0);
    EXPECT_STREQ(GetVidPidVendorName(), "");
    SetActDev(1);
    EXPECT_STREQ(GetVidPidVendorName(), "");
}

TEST_F(ListedName, ComesCharacterByCharacter) {
    EXPECT_EQ(getVidPidVendorName_char(0), '5');
    EXPECT_EQ(getVidPidVendorName_char(17), 'x');
    for (const short index : std::initializer_list<short>{18, 32767, -1, -32768})
        EXPECT_EQ(getVidPidVendorName_char(index), 0) << index;
}

TEST_F(ListedFilter, OfADeviceMatchedDirectlyIsTheDefaultPair) {
    connectTo(0x5A3E, 0x9D23);
    EXPECT_EQ(GetVidPidFilterMask(1), 0x8000);
    EXPECT_EQ(GetVidPidFilterCompare(1), 0x8000);
}

TEST_F(ListedFilter, OfADeviceOfTheListIsThatOfItsRow) {
    connectTo(0x5A3E, 0x9D21);
    zelTagVidPid.rows[1].filter[1].compare = 0x2001;
    EXPECT_EQ(GetVidPidFilterMask(1), 0x2000);
    EXPECT_EQ(GetVidPidFilterCompare(1), 0x2001);
}

TEST_F(ListedFilter, AtIndexZeroIsTheDefaultPairsZero) {
    connectTo(0x5A3E, 0x9D21);
    zelTagVidPid.rows[1].filter[0] = {5, 6};
    EXPECT_EQ(GetVidPidFilterMask(0), 0);
    EXPECT_EQ(GetVidPidFilterCompare(0), 0);
    zelTagVidPid.defaults[0] = {7, 8};
    EXPECT_EQ(GetVidPidFilterMask(0), 7);
    EXPECT_EQ(GetVidPidFilterCompare(0), 8);
}

TEST_F(ListedFilter, AtAnyOtherIndexIsZero) {
    connectTo(0x5A3E, 0x9D21);
    for (const int index : {-1, 2, 51, INT_MAX, INT_MIN}) {
        EXPECT_EQ(GetVidPidFilterMask(index), 0) << index;
        EXPECT_EQ(GetVidPidFilterCompare(index), 0) << index;
    }
}

TEST_F(ListedFilter, FallsBackWithoutDeviceRowOrProduct) {
    zelTagVidPid.defaults[1] = {0x11, 0x22};
    zelTagVidPid.rows[0].filter[1] = {0x33, 0x44};
    EXPECT_EQ(GetVidPidFilterMask(1), 0x11) << "no device";
    iDevsFnd = 1;
    DevDat[0].iProduct = 1;
    EXPECT_EQ(GetVidPidFilterMask(1), 0x33);
    DevDat[0].iVidPidIdx = 51;
    EXPECT_EQ(GetVidPidFilterMask(1), 0x11);
    DevDat[0].iVidPidIdx = 0;
    DevDat[0].iProduct = 2;
    EXPECT_EQ(GetVidPidFilterCompare(1), 0x22);
}

// The name is kept off other transports, the filter values are not.
TEST_F(ListedFilter, StaysTheRowsOnOtherTransports) {
    connectTo(0x5A3E, 0x9D21);
    DevDat[0].iDevType = 1;
    EXPECT_EQ(GetVidPidFilterMask(1), 0x2000);
}
