// SPDX-License-Identifier: MIT
// Connecting and disconnecting lines through the active device.
#include "tests/family/band/stripe_reader.h"
#include "tests/family/line_scan.h"

using namespace zel::test;

namespace {

class ActiveLine : public LineScan {
protected:
    ActiveLine() { SetUnsupportedProductErrorCode(-7); }

    static void attachStripe(int port) {
        lines().attach(path(port), std::make_shared<StripeLine>());
    }
};

} // namespace

TEST_F(ActiveLine, ConnectsThroughItsFamily) {
    EXPECT_EQ(comConnect(), -7);
    EXPECT_EQ(comConnectPort(1), -7);
    EXPECT_EQ(ComDisconnect(), -7);
    DevDat[0].iProduct = 4;
    iDevsFnd = 1;
    EXPECT_EQ(comConnect(), -7);
    EXPECT_EQ(comConnectPort(1), -7);
    EXPECT_EQ(ComDisconnect(), -7);
    EXPECT_EQ(lines().opens(), 0);
}

TEST_F(ActiveLine, OfAProximityReaderScansForMoreOfThem) {
    attachTag(1);
    attachStripe(2);
    SetConnectProduct(ZELTAGAPI_ZELTAG);
    ComConnect(nullptr);
    EXPECT_EQ(comConnect(), 0) << "as many as before";
    EXPECT_EQ(GetDevCnt(), 1);
    EXPECT_EQ(GetActDev(), 1) << "the record for a reader on line 2, which isn't in the table";
    EXPECT_EQ(comConnect(), -7);
    SetActDev(0);
    EXPECT_EQ(comConnectPort(3), 0) << "the table isn't empty";
    EXPECT_EQ(lLastCnctErr, 0U);
    attachTag(3);
    EXPECT_EQ(comConnect(), 1);
    EXPECT_EQ(GetDevCnt(), 2);
    EXPECT_EQ(told().find("\\r\\r"), std::string::npos);
}

TEST_F(ActiveLine, OfAStripeReaderScansForMoreOfThem) {
    attachStripe(1);
    SetConnectProduct(ZELTAGAPI_ZELBAND);
    ComConnect(nullptr);
    told();
    attachStripe(2);
    EXPECT_EQ(comConnect(), 1);
    EXPECT_EQ(GetDevCnt(), 2);
    EXPECT_EQ(comConnect(), 0);
    EXPECT_EQ(comConnectPort(3), 0);
    EXPECT_EQ(told().find("> FA"), std::string::npos);
}

TEST_F(ActiveLine, IsClosedAlone) {
    attachTag(1);
    attachTag(2);
    ComConnect(nullptr);
    SetActDev(1);
    told();
    EXPECT_EQ(ComDisconnect(), 1);
    EXPECT_EQ(told(), "close /dev/ttySIM2\n");
    EXPECT_EQ(GetDevCnt(), 2);
    EXPECT_EQ(GetActDev(), 1);
    EXPECT_EQ(ReadCfg(), 0);
    SetActDev(0);
    EXPECT_EQ(ReadCfg(), 1);
}
