// SPDX-License-Identifier: MIT
#include "frame/state/state.h"
#include "tests/support/library_test.h"

#include <algorithm>
#include <iterator>
#include <string>
#include <tuple>
#include <vector>

using namespace zel::test;

namespace {

class StartUp : public LibraryTest {};
class ShutDown : public LibraryTest {};

const std::uint8_t* bytesOf(const tsDevDat& record) {
    return reinterpret_cast<const std::uint8_t*>(&record);
}

// What a start sets beside the table.
auto globals() {
    return std::tuple{iActDev,
                      iDevsFnd,
                      iCnctDevType,
                      tcpipUSBmode,
                      useACPMode,
                      lLastICSWErr,
                      iComPortMin,
                      iComPortMax,
                      iVirtualComPortMin,
                      iVirtualComPortMax,
                      zel::unsupportedValue(),
                      zel::connectProducts(),
                      std::string(LinuxDevPath[1]),
                      std::string(LinuxDevPath[16])};
}

// As the program found them, before any test.
const std::vector<tsDevDat> loadedTable(std::begin(DevDat), std::end(DevDat));
const auto loadedGlobals = globals();

bool areEqual(const tsDevDat& a, const tsDevDat& b) {
    return std::equal(bytesOf(a), bytesOf(a) + sizeof a, bytesOf(b));
}

} // namespace

// The table comes so from the library's file, and no step of the loading writes it.
TEST_F(StartUp, OfALoadedLibraryHasMadeTheTableAsACallDoes) {
    std::fill(std::begin(DevDat), std::end(DevDat), tsDevDat{});
    _APIinit();
    EXPECT_TRUE(std::equal(std::begin(DevDat), std::end(DevDat), loadedTable.begin(), areEqual));
}

TEST_F(StartUp, OfALoadedLibraryHasSetTheGlobalsAsACallDoes) {
    _APIinit();
    EXPECT_EQ(globals(), loadedGlobals);
}

TEST_F(StartUp, LeavesEachRecordZeroButForItsDefaults) {
    _APIinit();
    tsDevDat expected = {};
    expected.hDev = reinterpret_cast<void*>(-1);
    expected.bSepFldOK = expected.bPartNumOK = 1;
    for (int config = 0; config < 10; ++config)
        expected.Cfg[config].uSFD.bytes[0] = 12;
    expected.Band.iActTrack = 2;
    expected.Band.iActLength = 32;
    expected.Band.iActTerm = 255;
    for (const tsDevDat& record : DevDat)
        EXPECT_TRUE(areEqual(record, expected)) << &record - DevDat;
}

TEST_F(StartUp, PresetsTheFieldDataOfTenOfElevenConfigurations) {
    _APIinit();
    EXPECT_EQ(DevDat[126].Cfg[9].uSFD.bytes[0], 12);
    EXPECT_EQ(DevDat[126].Cfg[10].uSFD.bytes[0], 0);
}

TEST_F(StartUp, SetsTheDefaultsOfTheGlobals) {
    iActDev = 3;
    iDevsFnd = 3;
    iCnctDevType = 1;
    tcpipUSBmode = true;
    useACPMode = 1;
    lLastICSWErr = 0x9000;
    iComPortMin = iComPortMax = iVirtualComPortMin = iVirtualComPortMax = 5;
    SetUnsupportedProductErrorCode(-7);
    zel::setConnectProducts(2);
    _APIinit();
    EXPECT_EQ(iActDev, 0);
    EXPECT_EQ(iDevsFnd, 0);
    EXPECT_EQ(iCnctDevType, 65535);
    EXPECT_FALSE(tcpipUSBmode);
    EXPECT_EQ(useACPMode, 0);
    EXPECT_EQ(lLastICSWErr, 0U);
    EXPECT_EQ(iComPortMin, 1);
    EXPECT_EQ(iComPortMax, 8);
    EXPECT_EQ(iVirtualComPortMin, 1);
    EXPECT_EQ(iVirtualComPortMax, 256);
    EXPECT_EQ(GetUnsupportedProductErrorCode(), 0);
    EXPECT_EQ(zel::connectProducts(), 0xFFFFFFFFU);
}

TEST_F(StartUp, ClearsThePathsOfPorts1To16) {
    LinuxDevPath[0][0] = LinuxDevPath[1][0] = LinuxDevPath[16][128] = 'x';
    _APIinit();
    EXPECT_EQ(LinuxDevPath[0][0], 'x');
    EXPECT_EQ(LinuxDevPath[1][0], '\0');
    EXPECT_EQ(LinuxDevPath[16][128], '\0');
    LinuxDevPath[0][0] = '\0';
}

TEST_F(StartUp, KeepsWhatNoStepNames) {
    cbIndex = 4;
    baudrate = 19200;
    lLastCnctErr = 0x10000;
    _APIinit();
    EXPECT_EQ(cbIndex, 4);
    EXPECT_EQ(baudrate, 19200U);
    EXPECT_EQ(lLastCnctErr, 0x10000U);
    baudrate = 9600;
    lLastCnctErr = 0;
}

TEST_F(StartUp, AgainClosesNothing) {
    connectReader();
    void* const handle = DevDat[0].hDev;
    _APIinit();
    EXPECT_EQ(bus().takeTrace(), "");
    EXPECT_EQ(GetDevCnt(), 0);
    DevDat[0].hDev = handle; // lets the fixture close it
}

TEST_F(StartUp, LeavesTheFirstRecordForFirmwareErrors) { EXPECT_EQ(pDevDat, &DevDat[0]); }

TEST_F(StartUp, LeavesTheExportedTextsUsable) {
    EXPECT_EQ(space, " ");
    EXPECT_EQ(errorString, "");
}

TEST_F(StartUp, MakesTheLockRecursive) {
    ASSERT_EQ(pthread_mutex_trylock(&zelLock), 0);
    EXPECT_EQ(pthread_mutex_trylock(&zelLock), 0);
    pthread_mutex_unlock(&zelLock);
    pthread_mutex_unlock(&zelLock);
}

TEST_F(ShutDown, ClosesTheDevicesAndDestroysTheLock) {
    connectReader();
    EXPECT_EQ(_APIfini(), 0);
    EXPECT_EQ(bus().takeTrace(), "close reader\n");
    EXPECT_EQ(GetDevCnt(), 0);
    _APIinit();
}

TEST_F(ShutDown, LeavesNothingToScanWith) {
    plugReader();
    _APIfini();
    EXPECT_EQ(connect(), 0);
    _APIinit();
    EXPECT_EQ(connect(), 1);
}
