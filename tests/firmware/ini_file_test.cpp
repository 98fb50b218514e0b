// SPDX-License-Identifier: MIT
// The lines of an INI file of key blobs, and the run that writes them.
#include "firmware/ini_file.h"
#include "firmware/key_blobs.h"
#include "tests/support/library_test.h"
#include "tests/support/temporary_folder.h"

#include <fstream>
#include <random>
#include <regex>

using namespace zel::test;
using namespace zel::firmware;
using zel::sim::TagBlob;

namespace {

using Bytes = std::vector<unsigned char>;

struct Parsed {
    int result;
    Bytes bytes;
    bool operator==(const Parsed&) const = default;
};

void write(const std::string& text) { std::ofstream("keys.ini", std::ios::binary) << text; }

struct OpenFile {
    explicit OpenFile(const std::string& text) {
        write(text);
        file = std::fopen("keys.ini", "rb");
    }
    ~OpenFile() { std::fclose(file); }
    std::FILE* file;
};

class IniFile : public ::testing::Test {
protected:
    static Parsed parseLine(const std::string& text, const char* key) {
        const OpenFile open(text);
        Bytes bytes;
        const int result = parseBlobHeaderAndData(open.file, bytes, key);
        return {result, bytes};
    }

    // Of a section whose head has been read.
    static Parsed parseSection(std::string head, const std::string& text) {
        const OpenFile open(text);
        Bytes bytes;
        const int result = parseBlob(open.file, head.data(), bytes);
        return {result, bytes};
    }

    static Bytes parseText(std::string text) {
        Bytes bytes;
        parseStringToBuffer(text.data(), bytes);
        return bytes;
    }

    TemporaryFolder folder_;
};

const std::string kEnd = "[EOF]\r\niEndOfIniFile=0\r\n";

std::string section(const std::string& header, const std::string& data) {
    return "[Blob1]\r\nhdr=" + header + "\r\ndata=" + data + "\r\n";
}

class IniRun : public LibraryTest {
protected:
    IniRun() { reader_ = connectReader({.tagPlusConfigurations = 2}); }

    static int run(const std::string& text) {
        write(text);
        return writeSecure().loadIniConfiguration("keys.ini");
    }

    TemporaryFolder folder_;
    std::shared_ptr<zel::sim::TagReader> reader_;
};

const TagBlob kFirst{0x10, 1, 4, {1, 2, 3, 4}, true};
const TagBlob kSecond{0x11, 2, 1, {0xAB, 0, 0, 0}, true};
const std::string kFirstSection = section("10 01 04 00", "01 02 03 04");
const std::string kSecondSection = section("11 02 01 00", "AB");

} // namespace

TEST_F(IniFile, SectionHeadMayHaveNoDigitsOrMany) {
    EXPECT_TRUE(isBlobHead("[Blob]\r\n"));
    EXPECT_TRUE(isBlobHead("[Blob7]\r\n"));
    EXPECT_TRUE(isBlobHead("[Blob0123456789012345678901234567890]\r\n"));
}

TEST_F(IniFile, SectionHeadOfAnyOtherFormIsNone) {
    for (const char* line :
         {"", "[Blob", "[Blob]", "[Blob]\n", "[Blob]\r", "[Blob1]\n", " [Blob]\r\n", "[blob]\r\n",
          "[Blob 1]\r\n", "[Blob-1]\r\n", "[Blob1] \r\n", "[Blob1]\r\n\n", "[Blob1]]\r\n",
          "[BlobA]\r\n", "[EOF]\r\n", "\r\n"})
        EXPECT_FALSE(isBlobHead(line)) << line;
}

// The alphabet makes heads likely; \xFF stands for bytes that a signed char holds below 0.
TEST_F(IniFile, SectionHeadIsWhatItsPatternSays) {
    const std::regex pattern("(^\\[Blob)[0-9]*(\\]\r\n$)");
    const std::string alphabet = "[Blob]\r\n019 :/\xFF";
    std::mt19937 random(5);
    int heads = 0;
    for (int n = 0; n < 20'000; ++n) {
        std::string line = "[Blob" + std::to_string(random() % 1000) + "]\r\n";
        for (unsigned change = random() % 4; change > 0; --change) {
            const char letter = alphabet[random() % alphabet.size()];
            const std::size_t at = random() % line.size();
            if (random() % 2 == 0)
                line[at] = letter;
            else
                line.insert(at, 1, letter);
        }
        const bool expected = std::regex_search(line, pattern);
        ASSERT_EQ(isBlobHead(line.c_str()), expected) << line;
        heads += expected;
    }
    EXPECT_GT(heads, 1'000);
    EXPECT_LT(heads, 19'000);
}

TEST_F(IniFile, BytesAreHexadecimalNumbersWithBlanksBetween) {
    EXPECT_EQ(parseText("10 07 05 00\r\n"), (Bytes{0x10, 7, 5, 0}));
    EXPECT_EQ(parseText("a AB ff"), (Bytes{0x0A, 0xAB, 0xFF}));
    EXPECT_EQ(parseText("  1   2"), (Bytes{1, 2})) << "a row of blanks counts as one";
    EXPECT_EQ(parseText(""), Bytes{});
}

TEST_F(IniFile, BlankInFrontOfTheLineEndIsAByteOfZero) {
    EXPECT_EQ(parseText("01 02 \r\n"), (Bytes{1, 2, 0}));
    EXPECT_EQ(parseText("\r\n"), Bytes{0});
}

TEST_F(IniFile, WordThatIsLineFeedAloneEndsTheBytes) {
    EXPECT_EQ(parseText("01 02 \n"), (Bytes{1, 2}));
    EXPECT_EQ(parseText("01 \n 02"), Bytes{1});
}

TEST_F(IniFile, NumbersKeepTheirLowEightBits) {
    EXPECT_EQ(parseText("1FF 100 12345 0x41 -1 +7"), (Bytes{0xFF, 0, 0x45, 0x41, 0xFF, 7}));
    EXPECT_EQ(parseText("FFFFFFFFFFFFFFFFFFFFFF -FFFFFFFFFFFFFFFFFFFFFF"), (Bytes{0xFF, 0}))
        << "the largest and the smallest number";
}

TEST_F(IniFile, WordThatIsNoNumberIsAByteOfZero) {
    EXPECT_EQ(parseText("xy 0x 1z \t2 ,3"), (Bytes{0, 0, 1, 2, 0}));
}

TEST_F(IniFile, LineNeedsItsKeyExactly) {
    EXPECT_EQ(parseLine("hdr=01 02\r\n", "hdr"), (Parsed{1, {1, 2}}));
    for (const char* line : {"HDR=01\r\n", "hdr =01\r\n", " hdr=01\r\n", "hd=01\r\n", "hdrs=01\r\n",
                             "=01\r\n", "=hdr=01\r\n", "data=01\r\n", "hdr\r\n", "hdr", "\r\n"})
        EXPECT_EQ(parseLine(line, "hdr"), (Parsed{0, {}})) << line;
}

TEST_F(IniFile, LineIsNotThereAtTheEndOfTheFile) {
    EXPECT_EQ(parseLine("", "hdr"), (Parsed{0, {}}));
}

TEST_F(IniFile, SecondEqualsSignEndsTheBytes) {
    EXPECT_EQ(parseLine("hdr=01 02=03\r\n", "hdr"), (Parsed{1, {1, 2}}));
    EXPECT_EQ(parseLine("hdr==03\r\n", "hdr"), (Parsed{1, {}}));
    EXPECT_EQ(parseLine("hdr=", "hdr"), (Parsed{1, {}}));
}

TEST_F(IniFile, ZeroByteEndsTheLine) {
    EXPECT_EQ(parseLine(std::string("hdr=01\0 02\r\n", 12), "hdr"), (Parsed{1, {1}}));
    EXPECT_EQ(parseLine(std::string("\0hdr=01\r\n", 9), "hdr"), (Parsed{0, {}}));
}

TEST_F(IniFile, LineHas127BytesAndWhatIsLongerGoesOnAsTheNext) {
    const std::string longest = "data=" + std::string(118, '0') + "12\r\n";
    ASSERT_EQ(longest.size(), 127U);
    EXPECT_EQ(parseLine(longest, "data"), (Parsed{1, {0x12}}));
    EXPECT_EQ(parseSection("[Blob]\r\n", "hdr=" + std::string(123, '0') + "data=07\r\n"),
              (Parsed{1, {0, 7}}));
}

TEST_F(IniFile, SectionIsItsHeaderAndItsDataOneBehindTheOther) {
    EXPECT_EQ(parseSection("[Blob1]\r\n", "hdr=10 07 05 00\r\ndata=01 02\r\n"),
              (Parsed{1, {0x10, 7, 5, 0, 1, 2}}));
}

TEST_F(IniFile, SectionOfAnotherFormEndsAtWhatIsWrong) {
    EXPECT_EQ(parseSection("[Blob1]\n", "hdr=01\r\ndata=02\r\n"), (Parsed{0, {}}));
    EXPECT_EQ(parseSection("[Blob1]\r\n", "data=02\r\nhdr=01\r\n"), (Parsed{0, {}}));
    EXPECT_EQ(parseSection("[Blob1]\r\n", "hdr=01\r\nhdr=02\r\n"), (Parsed{0, {1}}));
    EXPECT_EQ(parseSection("[Blob1]\r\n", "hdr=01\r\n"), (Parsed{0, {1}}));
}

TEST_F(IniFile, NoLineHasMoreBytesThanTheRoomThatIsKeptForASection) {
    std::string most;
    for (int n = 0; n < 64; ++n)
        most += "1 ";
    const Parsed parsed = parseSection(
        "[Blob]\r\n", "hdr=" + most.substr(0, 121) + "\r\ndata=" + most.substr(0, 120) + "\r\n");
    EXPECT_EQ(parsed.result, 1);
    EXPECT_LE(parsed.bytes.size(), kMostIniBytes);
    EXPECT_GT(parsed.bytes.size(), 120U);
}

TEST_F(IniRun, WritesEachBlobWithItsPauseAndItsCommit) {
    EXPECT_EQ(run(kFirstSection + kSecondSection + kEnd), 1);
    EXPECT_EQ(bus().takeTrace(), "> 89 90 00 00 10 01 04 00  multi: write blob\n"
                                 "< 89 90 00 00 00 00 00 00\n"
                                 "> 89 90 00 01 01 02 03 04  multi: write blob chunk 1\n"
                                 "< 89 90 00 01 00 00 00 00\n"
                                 "> 89 90 00 FF 00 00 00 00  multi: save blob\n"
                                 "< 89 90 00 FF 00 00 00 00\n"
                                 "~ 500 ms\n"
                                 "> 90 00 00 00 00 00 00 00  commit\n"
                                 "> 89 90 00 00 11 02 01 00  multi: write blob\n"
                                 "< 89 90 00 00 00 00 00 00\n"
                                 "> 89 90 00 01 AB 00 00 00  multi: write blob chunk 1\n"
                                 "< 89 90 00 01 00 00 00 00\n"
                                 "> 89 90 00 FF 00 00 00 00  multi: save blob\n"
                                 "< 89 90 00 FF 00 00 00 00\n"
                                 "~ 500 ms\n"
                                 "> 90 00 00 00 00 00 00 00  commit\n");
    EXPECT_EQ(reader_->blobs(), (std::vector<TagBlob>{kFirst, kSecond}));
}

TEST_F(IniRun, EndsWithTheFileToo) { EXPECT_EQ(run(kFirstSection), 1); }

TEST_F(IniRun, OfNoBlobIsZeroAndSendsNothing) {
    EXPECT_EQ(run(kEnd), 0);
    EXPECT_EQ(run(""), 0);
    EXPECT_EQ(writeSecure().loadIniConfiguration("absent.ini"), 0);
    EXPECT_EQ(writeSecure().loadIniConfiguration("."), 0) << "a folder";
    EXPECT_EQ(bus().takeTrace(), "");
}

TEST_F(IniRun, WritesNothingBehindTheEndMark) {
    EXPECT_EQ(run(kFirstSection + "[EOF]\r\n" + kSecondSection), 1);
    EXPECT_EQ(reader_->blobs(), std::vector<TagBlob>{kFirst});
}

TEST_F(IniRun, StopsAtASectionOfAnotherFormAndLeavesWhatWasWritten) {
    EXPECT_EQ(run(kFirstSection + "[Blob2]\n" + kSecondSection + kEnd), 0);
    EXPECT_EQ(reader_->blobs(), std::vector<TagBlob>{kFirst});
}

TEST_F(IniRun, TakesAnEndMarkWithAnotherLineEndForASection) {
    EXPECT_EQ(run(kFirstSection + "[EOF]\n"), 0);
}

TEST_F(IniRun, HasTheResultOfTheLastBlob) {
    const std::string bad = section("10 03 04 00", "01 02 03");
    EXPECT_EQ(run(bad + kSecondSection + kEnd), 1) << "a failed blob doesn't stop the run";
    EXPECT_EQ(run(kFirstSection + bad + kEnd), 0);
    EXPECT_EQ(reader_->blobs(), (std::vector<TagBlob>{kSecond, kFirst}));
}

TEST_F(IniRun, BlobWithABlankInFrontOfItsLineEndIsOneByteTooLong) {
    EXPECT_EQ(run(section("10 01 04 00", "01 02 03 04 ") + kEnd), 0);
    EXPECT_EQ(bus().takeTrace(), "");
}

TEST_F(IniRun, HeaderOfAnotherLengthShiftsTheLengthByte) {
    EXPECT_EQ(run(section("10 01 04", "01 02 03 04") + kEnd), 0);
    EXPECT_EQ(run(section("10 01 04 00 00", "01 02 03 04") + kEnd), 0);
    EXPECT_EQ(bus().takeTrace(), "");
    EXPECT_EQ(run(section("10 01", "01 00 AB") + kEnd), 1) << "the sum is right all the same";
}

TEST_F(IniRun, LongerLineThanTheBufferFails) {
    std::string data = "00";
    for (int n = 1; n < 41; ++n)
        data += " 00";
    EXPECT_EQ(run(section("10 01 28 00", data.substr(3)) + kEnd), 1) << "40 bytes";
    EXPECT_EQ(run(section("10 01 29 00", data) + kEnd), 0) << "41 bytes";
}

TEST_F(IniRun, FailsAtEachStepOfItsOnlyBlobAndLeaksNothing) {
    for (int exchange = 1; exchange <= 7; ++exchange) {
        bus().failExchange(0, exchange, exchange % 2 == 1 ? 6 : 1);
        EXPECT_EQ(run(kFirstSection + kEnd), exchange == 2 ? 1 : 0) << exchange;
        bus().failExchange(0, 1, 0);
        reader_->powerUp();
    }
}
