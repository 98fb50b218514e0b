// SPDX-License-Identifier: MIT
// The exported calls that seal a file and check a seal.
#include "firmware/crc.h"
#include "tests/cfgfile/template_test.h"

#include <cstring>
#include <fstream>
#include <sys/resource.h>

using namespace zel::test;

namespace {

constexpr short kUnsupported = -7;

// The head of a template file and its trailer; the digits come from another program.
constexpr char kSealedHead[] = "/--- zelTag and OEM Reader Configuration Template File ---\n"
                               ":Library Version: 7.6.4 \n"
                               ":Device FW Version: 01.42 \n"
                               "/--- iEndOfHwgFile \n"
                               "iEndOfHwgFile = 7769F123";

class Integrity : public TemplateTest {
protected:
    Integrity() { SetUnsupportedProductErrorCode(kUnsupported); }
    ~Integrity() override { SetUnsupportedProductErrorCode(0); }

    static std::string sealed(const std::string& text) {
        writeText("sealed", text);
        EXPECT_EQ(CRC().generateAppendCRC("sealed"), 0);
        return textOf("sealed");
    }

    static bool holds(const char* name) { return zelTagAPI_checkFile(name, 0, nullptr) != 0; }

    // A reader with a record of another product, or none active, or none at all.
    template <class Operation> static void forEachUnserved(Operation operation) {
        connectRead();
        for (const unsigned product : {0U, 2U, 4U, 8U}) {
            record().iProduct = product;
            operation("product " + std::to_string(product));
        }
        record().iProduct = ZELTAGAPI_ZELTAG;
        for (const short index : {short{-1}, short{1}, short{127}}) {
            iActDev = index;
            operation("index " + std::to_string(index));
        }
        iActDev = 0;
        EXPECT_EQ(bus().takeTrace(), "");
    }
};

class SealedWrite : public Integrity {};
class SealedRead : public Integrity {};
class FileCheck : public Integrity {};
class FirmwareFile : public Integrity {};

} // namespace

TEST_F(SealedWrite, IsTheTemplateFileWithATrailerToTheByte) {
    connectFilledPlain();
    EXPECT_EQ(WriteDevCfgToSecureFile("out"), 1);
    EXPECT_EQ(textOf("out"), goldenFile("plain") + "/--- iEndOfHwgFile \niEndOfHwgFile = 3B9E8E4C");
    EXPECT_EQ(GetLastLibErr(), 0);
}

TEST_F(SealedWrite, SealsTheFilesOfSeveralConfigurationsAsAWhole) {
    connectFilledPlus();
    EXPECT_EQ(WriteDevCfgToSecureFile("out"), 1);
    EXPECT_EQ(textOf("out"),
              goldenFile("tagplus") + "/--- iEndOfHwgFile \niEndOfHwgFile = BC24A9B0");
}

TEST_F(SealedWrite, ReplacesASealedFile) {
    connectFilledPlain();
    EXPECT_EQ(WriteDevCfgToSecureFile("out"), 1);
    const std::string first = textOf("out");
    EXPECT_EQ(WriteDevCfgToSecureFile("out"), 1);
    EXPECT_EQ(textOf("out"), first);
}

TEST_F(SealedWrite, SealsTheHeadAloneOfAReaderThatDoesntAnswer) {
    connectRead();
    bus().failExchange(0, 1, 1000);
    EXPECT_EQ(WriteDevCfgToSecureFile("out"), 1);
    EXPECT_EQ(textOf("out"), kSealedHead);
    EXPECT_EQ(GetLastLibErr(), ZELTAGAPI_ERR_READ) << "the word is that of the reading";
    forgiveHaste();
}

TEST_F(SealedWrite, YieldsOneAndWritesNothingWithoutAProximityReader) {
    writeText("kept", "kept");
    forEachUnserved([](const std::string& what) {
        DevDat[0].lLastErr = DevDat[1].lLastErr = 0x5A5A;
        EXPECT_EQ(WriteDevCfgToSecureFile("out"), 1) << what;
        EXPECT_EQ(WriteDevCfgToSecureFile("kept"), 1) << what;
        EXPECT_EQ(WriteDevCfgToSecureFile(nullptr), 1) << what;
        EXPECT_EQ(DevDat[iActDev == 1 ? 1 : 0].lLastErr, 0) << what;
    });
    EXPECT_FALSE(std::filesystem::exists("out"));
    EXPECT_EQ(textOf("kept"), "kept");
}

TEST_F(SealedWrite, ClearsTheErrorWordFirst) {
    record().lLastErr = 0x5A5A;
    EXPECT_EQ(WriteDevCfgToSecureFile("out"), 1);
    EXPECT_EQ(record().lLastErr, 0) << "with no device";
    connectRead();
    record().lLastErr = 0x5A5A;
    EXPECT_EQ(WriteDevCfgToSecureFile("/"), kUnsupported);
    EXPECT_EQ(record().lLastErr, 0) << "with a file that can't be made";
}

TEST_F(SealedWrite, YieldsTheUnsupportedValueForAFileThatCantBeMade) {
    connectRead();
    for (const char* const name : {"", "/", "missing/out", static_cast<const char*>(nullptr)})
        EXPECT_EQ(WriteDevCfgToSecureFile(name), kUnsupported) << name;
    EXPECT_EQ(GetLastLibErr(), 0);
    EXPECT_EQ(bus().takeTrace(), "");
}

TEST_F(SealedWrite, LeavesAFileThatHoldsWhicheverExchangeFails) {
    int n = 0;
    for (bool reached = true; reached;) {
        SCOPED_TRACE("exchange " + std::to_string(++n));
        unplugAll();
        connectFilledPlain();
        const int before = bus().exchanges(0);
        const auto files = openDescriptors();
        failFor(n);
        EXPECT_EQ(WriteDevCfgToSecureFile("out"), 1);
        EXPECT_TRUE(holds("out"));
        EXPECT_EQ(openDescriptors(), files);
        reached = bus().exchanges(0) - before >= n;
        forgiveHaste();
    }
    EXPECT_GT(n, 20);
}

TEST_F(SealedRead, AppliesAFileThatHolds) {
    connectRead();
    writeText("in", sealed(std::string(kTitleLine) + "bSndFac = 1\n"));
    record().lLastErr = 0x5A5A;
    EXPECT_EQ(ReadDevCfgFromSecureFile("in"), 1);
    EXPECT_EQ(config().sCfgFlags.bSndFac, 1);
    EXPECT_EQ(writes(bus().takeTrace()), "BC");
    EXPECT_EQ(GetLastLibErr(), 0);
}

TEST_F(SealedRead, TakesBackWhatWasWritten) {
    connectFilledPlain();
    EXPECT_EQ(WriteDevCfgToSecureFile("file"), 1);
    unplugAll();
    connectRead();
    EXPECT_EQ(ReadDevCfgFromSecureFile("file"), 1);
    EXPECT_EQ(WriteDevCfgToSecureFile("again"), 1);
    EXPECT_EQ(textOf("again"), textOf("file"));
}

TEST_F(SealedRead, RefusesAFileThatDoesntHoldAndTouchesNoDevice) {
    connectRead();
    const std::string good = sealed(std::string(kTitleLine) + "bSndFac = 1\n");
    writeText("changed", "x" + good);
    writeText("cut", good.substr(0, good.size() - 1));
    writeText("bare", std::string(kTitleLine) + "bSndFac = 1\n");
    writeText("empty", "");
    for (const char* const name :
         {"changed", "cut", "bare", "empty", "missing", ".", static_cast<const char*>(nullptr)}) {
        record().lLastErr = 0x5A5A;
        EXPECT_EQ(ReadDevCfgFromSecureFile(name), 0);
        EXPECT_EQ(GetLastLibErr(), ZELTAGAPI_ERR_INTEGRITY);
        EXPECT_EQ(record().lLastErr, std::int64_t{0x91000000}) << "without a sign";
    }
    EXPECT_EQ(config().sCfgFlags.bSndFac, 0);
    EXPECT_EQ(bus().takeTrace(), "");
}

TEST_F(SealedRead, ChecksTheFileBeforeTheDevice) {
    writeText("changed", std::string("x") + kSealedHead);
    forEachUnserved([](const std::string& what) {
        DevDat[0].lLastErr = DevDat[1].lLastErr = 0x5A5A;
        EXPECT_EQ(ReadDevCfgFromSecureFile("changed"), 0) << what;
        EXPECT_EQ(DevDat[iActDev == 1 ? 1 : 0].lLastErr, ZELTAGAPI_ERR_INTEGRITY) << what;
    });
}

TEST_F(SealedRead, YieldsOneAndLoadsNothingWithoutAProximityReader) {
    writeText("in", sealed(std::string(kTitleLine) + "bSndFac = 1\n"));
    EXPECT_EQ(ReadDevCfgFromSecureFile("in"), 1) << "with no device";
    forEachUnserved([](const std::string& what) {
        EXPECT_EQ(ReadDevCfgFromSecureFile("in"), 1) << what;
        EXPECT_EQ(config().sCfgFlags.bSndFac, 0) << what;
    });
}

TEST_F(SealedRead, YieldsTheUnsupportedValueForASealedFileOfAnotherForm) {
    connectRead();
    writeText("in", sealed("no title\n"));
    record().lLastErr = 0x5A5A;
    EXPECT_EQ(ReadDevCfgFromSecureFile("in"), kUnsupported);
    EXPECT_EQ(GetLastLibErr(), 0) << "the trailer holds";
}

TEST_F(SealedRead, YieldsTheUnsupportedValueWhicheverExchangeFails) {
    writeText("in", sealed(goldenFile("plain")));
    int n = 0;
    for (bool reached = true; reached;) {
        SCOPED_TRACE("exchange " + std::to_string(++n));
        unplugAll();
        connectRead();
        const int before = bus().exchanges(0);
        const auto files = openDescriptors();
        failFor(n);
        const int result = ReadDevCfgFromSecureFile("in");
        EXPECT_EQ(result, marks() == 0 ? 1 : kUnsupported);
        EXPECT_EQ(openDescriptors(), files);
        reached = bus().exchanges(0) - before >= n;
        forgiveHaste();
    }
    EXPECT_GT(n, 20);
}

TEST_F(FirmwareFile, IsCheckedWithoutADeviceAndWithoutAnErrorWord) {
    writeText("good", ":1\nF03557F8");
    writeText("changed", ":2\nF03557F8");
    record().lLastErr = 0x5A5A;
    EXPECT_EQ(CheckTamperedFirmwareFile("good"), 1);
    EXPECT_EQ(CheckTamperedFirmwareFile("changed"), 0);
    EXPECT_EQ(CheckTamperedFirmwareFile("missing"), 0);
    EXPECT_EQ(CheckTamperedFirmwareFile(nullptr), 0);
    EXPECT_EQ(record().lLastErr, 0x5A5A);
    EXPECT_EQ(bus().takeTrace(), "");
}

TEST_F(FirmwareFile, StaysByteForByteWhenItIsToBeSealed) {
    writeText("file", ":1\n");
    GenerateSecureFirmwareFile("file");
    GenerateSecureFirmwareFile("missing");
    GenerateSecureFirmwareFile(nullptr);
    EXPECT_EQ(textOf("file"), ":1\n");
    EXPECT_FALSE(std::filesystem::exists("missing"));
}

TEST_F(FileCheck, TellsFaultLineAndBothChecksums) {
    writeText("file", ":2\nF03557F8");
    zelFileCheck check;
    std::memset(&check, 0xFF, sizeof check);
    EXPECT_EQ(zelTagAPI_checkFile("file", ZELTAGAPI_FILE_FIRMWARE, &check), 0);
    EXPECT_EQ(check.fault, ZELTAGAPI_FAULT_CHECKSUM);
    EXPECT_EQ(check.line, 2);
    EXPECT_STREQ(check.told, "F03557F8");
    EXPECT_STREQ(check.computed, "DB18043B");
}

TEST_F(FileCheck, TellsWhatHolds) {
    writeText("file", kSealedHead);
    zelFileCheck check{};
    EXPECT_EQ(zelTagAPI_checkFile("file", ZELTAGAPI_FILE_TEMPLATE, &check), 1);
    EXPECT_EQ(check.fault, ZELTAGAPI_FAULT_NONE);
    EXPECT_EQ(check.line, 5);
    EXPECT_STREQ(check.told, "7769F123");
    EXPECT_STREQ(check.computed, "7769F123");
}

TEST_F(FileCheck, TellsAFileThatCantBeOpened) {
    for (const char* const name : {"missing", ".", static_cast<const char*>(nullptr)})
        for (const int kind : {0, 1, 2, -1}) {
            SCOPED_TRACE(::testing::Message() << "kind " << kind << ' ' << name);
            zelFileCheck check;
            std::memset(&check, 0xFF, sizeof check);
            EXPECT_EQ(zelTagAPI_checkFile(name, kind, &check), 0);
            EXPECT_EQ(check.fault, ZELTAGAPI_FAULT_OPEN);
            EXPECT_EQ(check.line, 0);
            EXPECT_STREQ(check.told, "");
            EXPECT_STREQ(check.computed, "");
        }
    EXPECT_EQ(zelTagAPI_checkFile("missing", 0, nullptr), 0);
}

// The address sanitizer's own memory doesn't fit such a limit.
#if defined(__linux__) && !defined(__SANITIZE_ADDRESS__)
#if defined(__has_feature)
#if __has_feature(address_sanitizer)
#define ZEL_NO_MEMORY_LIMIT
#endif
#endif
#else
#define ZEL_NO_MEMORY_LIMIT
#endif

#ifndef ZEL_NO_MEMORY_LIMIT
namespace {

// Leaves so many bytes of memory to be had.
void limitMemory(rlim_t spare) {
    rlim_t pages = 0;
    std::ifstream("/proc/self/statm") >> pages;
    const rlim_t size = pages * static_cast<rlim_t>(sysconf(_SC_PAGESIZE)) + spare;
    const rlimit limit{size, size};
    setrlimit(RLIMIT_AS, &limit);
}

[[noreturn]] void checkEndlessFile() {
    limitMemory(rlim_t{24} << 20);
    const int isRead = ReadDevCfgFromSecureFile("/dev/urandom");
    const int isChecked = zelTagAPI_checkFile("/dev/urandom", ZELTAGAPI_FILE_KEYS, nullptr);
    const bool isTold = DevDat[0].lLastErr == ZELTAGAPI_ERR_INTEGRITY;
    std::_Exit(isRead == 0 && isChecked == 0 && isTold ? 0 : 1);
}

} // namespace

TEST_F(FileCheck, FailsForATextThatDoesntFitTheMemory) {
    EXPECT_EXIT(checkEndlessFile(), ::testing::ExitedWithCode(0), "");
}
#endif
