// SPDX-License-Identifier: MIT
// Walks the exported calls: what each yields with no device, with a device of each product, with
// one of an unknown product, and with a reader that answers.
#include "tests/frame/family_rows_band.h"
#include "tests/frame/family_rows_echo.h"
#include "tests/frame/family_rows_frame.h"
#include "tests/frame/family_rows_tag.h"
#include "tests/frame/family_table.h"
#include "tests/support/library_test.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <iterator>
#include <set>
#include <span>
#include <sstream>
#include <vector>

using namespace zel::test;

namespace {

using Names = std::set<std::string>;

std::vector<Row> allRows() {
    std::vector<Row> rows;
    const std::span<const Row> groups[] = {
        kLibraryRows, kConnectRows,   kIdentityRows,  kHotPlugRows,       kFilterRows,
        kLineRows,    kNetworkRows,   kFileRows,      kConfigurationRows, kRecordRows,
        kCardRows,    kServiceRows,   kModeRows,      kFirmwareRows,      kMultiRows,
        kBlobRows,    kBandTrackRows, kBandFieldRows, kBandOtherRows,     kSensorRows};
    for (const auto group : groups)
        rows.insert(rows.end(), group.begin(), group.end());
    return rows;
}

std::string nameOf(const Row& row) {
    const std::string call = row.call;
    return call.substr(0, call.find('('));
}

Names namesOfRows() {
    Names names;
    for (const Row& row : allRows())
        names.insert(nameOf(row));
    return names;
}

// The functions that a header of the folder frame/ declares.
Names declaredIn(const std::string& header) {
    std::stringstream text;
    text << std::ifstream(ZEL_FRAME + header).rdbuf();
    const std::string source = text.str();
    const std::string mark = "ZELTAGAPI_EXPORT";
    Names names;
    for (auto at = source.find(mark); at != source.npos; at = source.find(mark, at + 1)) {
        const auto end = source.find('(', at);
        const auto begin = source.find_last_of(" *\n", end) + 1;
        names.insert(source.substr(begin, end - begin));
    }
    return names;
}

// The state that each row starts from, but for the active device: a library as loaded, an empty
// bus, empty texts of the filter list.
void startAfresh() {
    USBDisconnect();
    zel::sim::usbBus().clear();
    zel::sim::usbBus().startTrace();
    _APIinit();
    iCnctDevType = 0;
    cbIndex = 0;
    defaultbaudrate = 9600;
    zelTagVidPid = {};
    setVirtualMicroseconds(kTick * 1000);
}

// What record 0 and the shared buffers hold, whichever device is active.
void fill() {
    tsDevDat& record = DevDat[0];
    record.lLastErr = kErrorWord;
    record.iDID = kDid;
    record.iFWVer = kBandVersion;
    record.iLUID = kLuid;
    record.lSN = 65535;
    record.iVidPidIdx = -1;
    std::strcpy(record.szDevName, "reader");
    std::strcpy(record.szPartNum, "P");
    tsTagCfg& config = record.Cfg[0];
    config.AZERTYShiftLock = 1;
    config.ExtendedPrecisionMath = 2;
    config.b64BytesInPackets = 3;
    config.bEasyReadMode = 4;
    config.bPrependCSN = 5;
    config.uSFD.bytes[126] = 0x80;
    activeIDBuf[0] = kIdByte;
    QueuedID.id[0] = kQueuedByte;
    activeCardDataBuf[0] = kCardByte;
    zelTagVidPid.defaults[1] = {kFilter, kFilter};
    listIndex = 0;
}

Names without(const Names& names, const Names& others) {
    Names rest;
    std::set_difference(names.begin(), names.end(), others.begin(), others.end(),
                        std::inserter(rest, rest.end()));
    return rest;
}

class FamilyTable : public LibraryTest {
protected:
    FamilyTable() {
        unsetenv("ZELTAGAPI_LOGGING");
        for (const auto put : {chkAddArrival_char, chkDelRemoval_char, writeDevCfgToFile_char,
                               readDevCfgFmFile_char})
            put(0, 0); // an empty text
    }
    ~FamilyTable() override {
        startAfresh();
        QueuedID = {};
        std::memset(activeCardDataBuf, 0, sizeof activeCardDataBuf);
    }

    // Runs each row with the unsupported value 0 and with -7.
    static void walk(Expected Row::*column, void (*arrange)()) {
        for (const short unsupported : std::initializer_list<short>{0, -7})
            for (const Row& row : allRows()) {
                startAfresh();
                arrange();
                fill();
                SetUnsupportedProductErrorCode(unsupported);
                expectRow(row, row.*column, unsupported);
            }
    }

    // A record that reaches no device: it holds no handle.
    template <std::uint32_t Product> static void activate() {
        iDevsFnd = 1;
        DevDat[0].iProduct = Product;
    }

    static void connectSimulatedReader() {
        zel::sim::TagOptions options{
            .tagPlusConfigurations = 2, .volume = kVolume, .radio = kRadio};
        options.cardTypes = {kCardType};
        options.versions[0][0] = kVersion;
        const auto reader = plugReader({0x5A3E, 0x9D23, "reader"}, options);
        reader->settings().luid = kLuid;
        reader->configuration(0).cardType = kCardType;
        reader->configuration(0).cardPriority = true;
        reader->present(zel::sim::card26(26, 3512));
        EXPECT_EQ(USBConnect(nullptr), 1);
        EXPECT_EQ(ReadCfg(), 1);
    }

private:
    static void expectRow(const Row& row, const Expected& expected, short unsupported) {
        SCOPED_TRACE(std::string(row.call) + " with " + std::to_string(unsupported));
        bus().takeTrace();
        takePausedMicroseconds();
        setVirtualMicroseconds(kTick * 1000);
        EXPECT_EQ(row.run(), expected.with(unsupported));
        if (!expected.isRefusal())
            return;
        EXPECT_EQ(DevDat[0].lLastErr, kErrorWord) << "it sets an error word of its own";
        EXPECT_EQ(bus().takeTrace(), "");
        EXPECT_EQ(takePausedMicroseconds(), 0U);
    }
};

} // namespace

TEST_F(FamilyTable, HasARowForEachDeclaredFunction) {
    Names declared;
    for (const char* header : {"zelTagAPI.h", "zelTagBand.h", "zelTagCards.h", "zelTagEcho.h",
                               "zelTagFirmware.h", "zelTagLines.h", "zelTagNetwork.h",
                               "zelTagServices.h", "zelTagSettings.h", "zelTagTemplates.h"})
        declared.merge(declaredIn(header));
    EXPECT_EQ(without(declared, namesOfRows()), Names{}) << "no row";
    EXPECT_EQ(without(namesOfRows(), declared), Names{}) << "no function";
}

TEST_F(FamilyTable, HoldsWithNoActiveDevice) {
    walk(&Row::none, [] {});
}

TEST_F(FamilyTable, HoldsForAProximityReaderThatIsGone) {
    walk(&Row::tag, activate<ZELTAGAPI_ZELTAG>);
}

TEST_F(FamilyTable, HoldsForAMagneticStripeReader) {
    walk(&Row::band, activate<ZELTAGAPI_ZELBAND>);
}

TEST_F(FamilyTable, HoldsForAPresenceSensor) { walk(&Row::echo, activate<ZELTAGAPI_ZELECHO>); }

TEST_F(FamilyTable, HoldsForAnUnknownProduct) { walk(&Row::other, activate<8>); }

TEST_F(FamilyTable, HoldsForAReaderThatAnswers) { walk(&Row::reader, connectSimulatedReader); }
