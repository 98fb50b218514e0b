// SPDX-License-Identifier: MIT
// The exported calls on key blobs: which device they serve, and the check of a file in front.
#include "tests/support/crc32.h"
#include "tests/support/library_test.h"
#include "tests/support/temporary_folder.h"

#include <cstring>
#include <fstream>

using namespace zel::test;
using zel::sim::TagBlob;

namespace {

constexpr std::int64_t kIntegrityFailed = 0x91000000;
constexpr std::int64_t kBefore = 0x55;

const std::string kSection = "[Blob1]\r\nhdr=10 01 04 00\r\ndata=01 02 03 04\r\n";
const std::string kBroken = "[Blob2]\r\nhrd=10 01 04 00\r\n";

std::string sealed(const std::string& text) {
    return text + "[EOF]\r\niEndOfIniFile=" + crcDigits(text) + "\r\n";
}

class SecureBlocks : public LibraryTest {
protected:
    void connectPlus() {
        reader_ = connectReader({.tagPlusConfigurations = 2});
        DevDat[0].lLastErr = kBefore;
    }

    static int load(const std::string& text) {
        std::ofstream("keys.ini", std::ios::binary) << text;
        return LoadIniFile("keys.ini");
    }

    void expectNothingDone() {
        EXPECT_EQ(WriteSecureData(blob_, 8), 0);
        EXPECT_EQ(ReadSecureData(blob_, output_), 0);
        EXPECT_EQ(DevDat[0].lLastErr, kBefore);
        EXPECT_EQ(load(sealed(kSection)), 0);
        EXPECT_EQ(DevDat[0].lLastErr, 0) << "the file is good";
        EXPECT_EQ(bus().takeTrace(), "");
        DevDat[0].lLastErr = kBefore;
    }

    TemporaryFolder folder_;
    std::shared_ptr<zel::sim::TagReader> reader_;
    unsigned char blob_[8] = {0x10, 1, 4, 0, 1, 2, 3, 4};
    unsigned char output_[4] = {};
};

const TagBlob kHeld{0x10, 1, 4, {1, 2, 3, 4}, true};

} // namespace

TEST_F(SecureBlocks, AreWrittenAndReadBack) {
    connectPlus();
    EXPECT_EQ(WriteSecureData(blob_, 8), 1);
    EXPECT_EQ(reader_->blobs(), std::vector<TagBlob>{kHeld});
    unsigned char header[4] = {0x10, 1, 4, 0};
    EXPECT_EQ(ReadSecureData(header, output_), 1);
    EXPECT_EQ(std::memcmp(output_, blob_ + 4, 4), 0);
    EXPECT_EQ(GetLastLibErr(), 0);
}

TEST_F(SecureBlocks, NeedAnActiveDevice) {
    DevDat[0].iProduct = ZELTAGAPI_ZELTAG;
    DevDat[0].lLastErr = kBefore;
    expectNothingDone();
}

TEST_F(SecureBlocks, NeedAnIndexInTheTable) {
    connectPlus();
    for (const short index : std::initializer_list<short>{1, -1, 127}) {
        iActDev = index;
        EXPECT_EQ(WriteSecureData(blob_, 8), 0) << index;
        EXPECT_EQ(ReadSecureData(blob_, output_), 0) << index;
        EXPECT_EQ(load(sealed(kSection)), 0) << index;
    }
    EXPECT_EQ(bus().takeTrace(), "");
    iActDev = 0;
}

TEST_F(SecureBlocks, NeedAProximityReader) {
    connectPlus();
    for (const unsigned product : {0U, 2U, 4U, 8U}) {
        SCOPED_TRACE(product);
        DevDat[0].iProduct = product;
        expectNothingDone();
    }
}

TEST_F(SecureBlocks, RefuseNullPointers) {
    connectPlus();
    EXPECT_EQ(WriteSecureData(nullptr, 8), 0);
    EXPECT_EQ(ReadSecureData(nullptr, output_), 0);
    EXPECT_EQ(ReadSecureData(blob_, nullptr), 0);
    EXPECT_EQ(GetLastLibErr(), kBefore);
    EXPECT_EQ(LoadIniFile(nullptr), 0);
    EXPECT_EQ(GetLastLibErr(), kIntegrityFailed) << "as a file that is absent";
    EXPECT_EQ(bus().takeTrace(), "");
}

TEST_F(SecureBlocks, OfAFileAreWritten) {
    connectPlus();
    EXPECT_EQ(load(sealed(kSection)), 1);
    EXPECT_EQ(reader_->blobs(), std::vector<TagBlob>{kHeld});
    EXPECT_EQ(GetLastLibErr(), 0);
}

TEST_F(SecureBlocks, OfTheExampleFileAreWritten) {
    connectPlus();
    EXPECT_EQ(LoadIniFile(ZEL_EXAMPLES "keys.ini"), 1);
    EXPECT_EQ(
        reader_->blobs(),
        (std::vector<TagBlob>{{0x10, 1, 8, {0xA0, 0xA1, 0xA2, 0xA3, 0xA4, 0xA5, 0xA6, 0xA7}, true},
                              {0x10, 2, 5, {0x5A, 0x65, 0x6C, 0x54, 0x61, 0, 0, 0}, true}}));
}

TEST_F(SecureBlocks, OfAFileThatWasChangedAreNotSent) {
    connectPlus();
    std::string text = sealed(kSection);
    text.replace(text.find("01 02 03"), 2, "09");
    EXPECT_EQ(load(text), 0);
    EXPECT_EQ(GetLastLibErr(), kIntegrityFailed);
    EXPECT_EQ(LoadIniFile("absent.ini"), 0);
    EXPECT_EQ(GetLastLibErr(), kIntegrityFailed);
    EXPECT_EQ(bus().takeTrace(), "");
}

TEST_F(SecureBlocks, OfAFileThatWasChangedTellSoWithoutADeviceToo) {
    DevDat[0].lLastErr = kBefore;
    EXPECT_EQ(load(kSection), 0);
    EXPECT_EQ(DevDat[0].lLastErr, kIntegrityFailed);
}

TEST_F(SecureBlocks, OfAFileWithoutOneAreNone) {
    connectPlus();
    EXPECT_EQ(load("[EOF]\r\niEndOfIniFile=0\r\n"), 0);
    EXPECT_EQ(GetLastLibErr(), 0);
    EXPECT_EQ(bus().takeTrace(), "");
}

TEST_F(SecureBlocks, OfAFileEndAtASectionOfAnotherFormWithoutAnErrorWord) {
    connectPlus();
    EXPECT_EQ(load(sealed(kSection + kBroken + kSection)), 0);
    EXPECT_EQ(reader_->blobs(), std::vector<TagBlob>{kHeld});
    EXPECT_EQ(GetLastLibErr(), 0);
}

TEST_F(SecureBlocks, OfAPlainReaderAreRefusedByTheReader) {
    connectReader();
    EXPECT_EQ(WriteSecureData(blob_, 8), 0);
    EXPECT_EQ(ReadSecureData(blob_, output_), 0);
    EXPECT_EQ(GetLastLibErr(), 0);
}
