// SPDX-License-Identifier: MIT
// Devices that arrive by name, for each family.
#include "family/band/band.h"
#include "family/echo/echo.h"
#include "family/tag/tag.h"
#include "tests/transport/device_table.h"

#include <array>
#include <cctype>

using namespace zel;
using namespace zel::test;

namespace {

class Arrival : public DeviceTable {};
class SensorArrival : public DeviceTable {};

using Add = int (*)(const char*);
struct Family {
    Add add;
    std::string name;
};
const Family kFamilies[] = {
    {zeltag_ChkAddArrival, R"(\\?\HID#Vid_5a3e&Pid_9d23)"},
    {zelband_ChkAddArrival, R"(\\?\HID#Vid_5a3e&Pid_9d23)"},
    {zelecho_ChkAddArrival, R"(\\?\HID#Vid_8e4a&Pid_9d2a)"},
};

template <class Convert> std::string turned(std::string text, Convert convert) {
    for (char& character : text)
        character = static_cast<char>(convert(static_cast<unsigned char>(character)));
    return text;
}

} // namespace

TEST_F(Arrival, OfANameThatIsThePrefixInAnyCaseIsAdded) {
    int count = 0;
    for (const auto& [add, name] : kFamilies) {
        EXPECT_EQ(add(name.c_str()), 1) << name;
        EXPECT_EQ(add(turned(name, toupper).c_str()), 1) << name;
        EXPECT_EQ(add(turned(name, tolower).c_str()), 1) << name;
        count += 3;
        EXPECT_EQ(iDevsFnd, count);
    }
}

TEST_F(Arrival, OfANameThatGoesOnOrEndsEarlierIsRefused) {
    lLastCnctErr = 0x77;
    iActDev = 3;
    for (const auto& [add, name] : kFamilies) {
        for (const std::string& other :
             {name + "&", name + "0", name.substr(0, name.size() - 1), name.substr(1), "/" + name,
              std::string(), name + std::string(512 - name.size(), 'x')})
            EXPECT_EQ(add(other.c_str()), 0) << other;
        EXPECT_EQ(add(nullptr), 0);
    }
    EXPECT_EQ(iDevsFnd, 0);
    EXPECT_EQ(lLastCnctErr, 0x77U);
    EXPECT_EQ(iActDev, 3);
}

TEST_F(Arrival, OfAMagneticStripeReaderHasTheNameOfAProximityReader) {
    EXPECT_EQ(zelband_ChkAddArrival(R"(\\?\HID#Vid_5a3e&Pid_9d2b)"), 0);
    EXPECT_EQ(zelband_ChkAddArrival(kTagName), 1);
}

// The name has no end within its memory: reading on would be caught.
TEST_F(Arrival, ReadsNoFurtherThan512Characters) {
    const std::vector<char> endless(512, 'n');
    for (const Family& family : kFamilies)
        EXPECT_EQ(family.add(endless.data()), 0) << &family - kFamilies;
}

TEST_F(Arrival, HasTheHandleZeroItsNameAndNothingElse) {
    std::memset(&DevDat[0], 0x42, sizeof DevDat[0]);
    DevDat[0].hDev = noHandle();
    EXPECT_EQ(zeltag_ChkAddArrival(kTagName), 1);
    tsDevDat expected;
    std::memset(&expected, 0, sizeof expected);
    std::strcpy(expected.szDevName, kTagName);
    EXPECT_EQ(std::memcmp(&DevDat[0], &expected, sizeof expected), 0);
    EXPECT_EQ(list(), std::string(kTagName) + "0");
    DevDat[0].pPort = nullptr;
}

TEST_F(Arrival, StandsBehindTheOthersAndActivatesTheFirst) {
    connectReaders({"a", "b"});
    iActDev = 1;
    EXPECT_EQ(zelband_ChkAddArrival(kTagName), 1);
    EXPECT_EQ(list(), std::string("a b ") + kTagName + "0");
    EXPECT_EQ(iActDev, 0);
    EXPECT_EQ(bus().takeTrace(), "");
}

TEST_F(Arrival, FitsOnceMoreInto126RecordsAndNotInto127) {
    fill();
    iDevsFnd = 126;
    EXPECT_EQ(zeltag_ChkAddArrival(kTagName), 1);
    iActDev = 9;
    lLastCnctErr = 0;
    EXPECT_EQ(zeltag_ChkAddArrival(kTagName), 0);
    EXPECT_EQ(iDevsFnd, 127);
    EXPECT_EQ(iActDev, 0);
    EXPECT_EQ(lLastCnctErr, 0U);
}

TEST_F(Arrival, AtThePlaceOfACopyLeavesItsHandleToTheOtherRecord) {
    connectReaders({"a", "b"});
    removeDevice("a");
    EXPECT_EQ(zeltag_ChkAddArrival(kTagName), 1);
    EXPECT_EQ(list(), std::string("b ") + kTagName + "0");
    EXPECT_EQ(bus().takeTrace(), "close a\n");
}

TEST_F(Arrival, AtThePlaceOfTheLastRecordThatHoldsAHandleClosesIt) {
    connectReaders({"a"});
    iDevsFnd = 0;
    EXPECT_EQ(zeltag_ChkAddArrival(kTagName), 1);
    EXPECT_EQ(bus().takeTrace(), "close a\n");
}

TEST_F(SensorArrival, GoesToRecordZeroAndAddsAnEmptyOne) {
    connectReaders({"a", "b"});
    DevDat[0].iDevType = 1;
    DevDat[0].iDID = 7;
    DevDat[0].iLUID = 9;
    EXPECT_EQ(zelecho_ChkAddArrival(kEchoName), 1);
    EXPECT_EQ(list(), std::string(kEchoName) + "0 b 0");
    EXPECT_EQ(DevDat[0].iDevType, 0);
    EXPECT_EQ(DevDat[0].iDID, 0);
    EXPECT_EQ(DevDat[0].iLUID, 9) << "nothing else of record 0 changes";
    EXPECT_EQ(DevDat[0].iProduct, 1U);
    EXPECT_EQ(DevDat[2].iProduct, 0U);
}

TEST_F(SensorArrival, ClosesTheHandleOfRecordZeroOnce) {
    connectReaders({"a", "b"});
    zelecho_ChkAddArrival(kEchoName);
    EXPECT_EQ(bus().takeTrace(), "close a\n");
    zelecho_ChkAddArrival(kEchoName);
    EXPECT_EQ(bus().takeTrace(), "");
    USBDisconnect();
    EXPECT_EQ(bus().takeTrace(), "close b\n");
}

TEST_F(SensorArrival, OverACopyClosesTheHandleWhenTheNewRecordTakesTheLastOne) {
    connectReaders({"a", "b"});
    removeDevice("a");
    bus().takeTrace();
    EXPECT_EQ(zelecho_ChkAddArrival(kEchoName), 1) << "records 0 and 1 held b";
    EXPECT_EQ(bus().takeTrace(), "close b\n");
}

TEST_F(SensorArrival, IntoAFullTableStillFillsRecordZero) {
    fill();
    EXPECT_EQ(zelecho_ChkAddArrival(kEchoName), 0);
    EXPECT_STREQ(DevDat[0].szDevName, kEchoName);
}

TEST_F(SensorArrival, LetsASerialDeviceCountAsHeld) {
    addSerial("line");
    EXPECT_EQ(zelecho_ChkAddArrival(kEchoName), 1);
    EXPECT_EQ(list(), std::string(kEchoName) + "0 0");
    EXPECT_NE(DevDat[0].pPort, nullptr);
}
