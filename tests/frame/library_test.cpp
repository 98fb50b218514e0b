// SPDX-License-Identifier: MIT
#include "frame/calls/library.h"

#include "tests/support/library_test.h"

#include <cstdlib>

using namespace zel::test;

namespace {
class LibraryFacts : public LibraryTest {};
class UnservedCalls : public LibraryTest {};
class Marker : public LibraryTest {
protected:
    Marker() { unsetenv("ZELTAGAPI_LOGGING"); }
    ~Marker() override { unsetenv("ZELTAGAPI_LOGGING"); }
    static void mark() {}
};
} // namespace

TEST_F(LibraryFacts, VersionIs764) {
    short major = 0, minor = 0, build = 0;
    EXPECT_EQ(GetLibVersion(&major, &minor, &build), 1);
    EXPECT_EQ(major, 7);
    EXPECT_EQ(minor, 6);
    EXPECT_EQ(build, 4);
}

TEST_F(LibraryFacts, VersionTakesNullForEachPart) {
    EXPECT_EQ(GetLibVersion(nullptr, nullptr, nullptr), 1);
}

TEST_F(LibraryFacts, VersionComesInPartsToo) {
    EXPECT_EQ(getLibraryVersion_Major(), 7);
    EXPECT_EQ(getLibraryVersion_Minor(), 6);
    EXPECT_EQ(getLibraryVersion_Build(), 4);
    EXPECT_STREQ(getLibraryVersion_Beta(), "");
}

TEST_F(LibraryFacts, CallsThatDoNothingSendNothing) {
    initialize();
    Debug();
    _DPrintf("%d %s", 1, "text");
    DebugDump();
    EXPECT_EQ(bus().takeTrace(), "");
}

TEST_F(Marker, IsNotStoredWithoutLogging) {
    EXPECT_EQ(SetMarkerFunction(mark), nullptr);
    EXPECT_EQ(zel::markerFunction(), nullptr);
}

TEST_F(Marker, IsStoredAndReturnedWithLogging) {
    setenv("ZELTAGAPI_LOGGING", "", 1);
    EXPECT_EQ(SetMarkerFunction(mark), &mark);
    EXPECT_EQ(zel::markerFunction(), &mark);
    EXPECT_EQ(SetMarkerFunction(nullptr), nullptr);
    EXPECT_EQ(zel::markerFunction(), nullptr);
}

TEST_F(Marker, AsksTheEnvironmentAfreshEachTime) {
    EXPECT_FALSE(isLoggingEnabled());
    setenv("ZELTAGAPI_LOGGING", "0", 1);
    EXPECT_TRUE(isLoggingEnabled());
}

TEST_F(UnservedCalls, YieldZeroWithNoDeviceAtStart) {
    EXPECT_EQ(GetDevCnt(), 0);
    EXPECT_EQ(GetLastLibErr(), 0);
    EXPECT_EQ(ReadCfg(), 0);
    EXPECT_EQ(WriteCfg(), 0);
    EXPECT_EQ(GetFlags2(nullptr), 0);
}

TEST_F(UnservedCalls, YieldTheChosenValueWithNoDevice) {
    EXPECT_EQ(SetUnsupportedProductErrorCode(-7), -7);
    unsigned char buffer[32] = {};
    char name[512] = {};
    EXPECT_EQ(GetLastLibErr(), -7);
    EXPECT_EQ(GetFlags2(nullptr), -7);
    EXPECT_EQ(GetActiveID(buffer, 8), -7);
    EXPECT_EQ(GetActiveID32(buffer, 32), -7);
    EXPECT_EQ(getActiveID(8), -7);
    EXPECT_EQ(getActiveID32(32), -7);
    EXPECT_EQ(getActiveID_byte(0), -7);
    EXPECT_EQ(GetDevName(name), -7);
    EXPECT_EQ(bus().takeTrace(), "");
}

TEST_F(UnservedCalls, ReadAndWriteOfTheConfigurationYieldZeroWhateverTheChosenValue) {
    SetUnsupportedProductErrorCode(-7);
    EXPECT_EQ(ReadCfg(), 0);
    EXPECT_EQ(WriteCfg(), 0);
}

TEST_F(UnservedCalls, YieldTheChosenValueForAnotherProduct) {
    SetUnsupportedProductErrorCode(-7);
    connectReader();
    unsigned char buffer[32] = {};
    for (const unsigned product : {0U, 3U, 8U}) {
        DevDat[0].iProduct = product;
        EXPECT_EQ(GetActiveID(buffer, 8), -7) << product;
        EXPECT_EQ(GetActiveID32(buffer, 32), -7) << product;
        EXPECT_EQ(getActiveID(8), -7) << product;
        EXPECT_EQ(getActiveID32(8), -7) << product;
        EXPECT_EQ(getActiveID_byte(0), -7) << product;
        EXPECT_EQ(ReadCfg(), -7) << product;
        EXPECT_EQ(WriteCfg(), -7) << product;
        EXPECT_EQ(GetFlags2(nullptr), -7) << product;
    }
    EXPECT_EQ(bus().takeTrace(), "");
}

TEST_F(UnservedCalls, LeaveTheLastIdentifierAlone) {
    connectReader();
    activeIDBuf[0] = 0x55;
    DevDat[0].iProduct = 3;
    unsigned char buffer[32] = {};
    GetActiveID(buffer, 8);
    EXPECT_EQ(activeIDBuf[0], 0x55);
}

TEST_F(UnservedCalls, KeepOnlySixteenBitsOfTheChosenValue) {
    EXPECT_EQ(SetUnsupportedProductErrorCode(0x12348001), -32767);
    EXPECT_EQ(GetUnsupportedProductErrorCode(), -32767);
    EXPECT_EQ(GetLastLibErr(), -32767);
}

TEST_F(UnservedCalls, ComeFromAnIndexOutsideTheTableInUse) {
    SetUnsupportedProductErrorCode(-7);
    connectReader();
    for (const short index : std::initializer_list<short>{-1, 1, 126, 127, 32767}) {
        iActDev = index;
        EXPECT_EQ(GetLastLibErr(), -7) << index;
    }
    iDevsFnd = 200;
    iActDev = 150;
    EXPECT_EQ(GetLastLibErr(), -7);
    iActDev = 0;
}

TEST_F(LibraryFacts, ErrorWordIsSixtyFourBitsWide) {
    connectReader();
    DevDat[0].lLastErr = 0x81000000;
    EXPECT_EQ(GetLastLibErr(), 0x81000000LL);
}
