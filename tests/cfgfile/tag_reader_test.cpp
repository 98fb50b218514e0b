// SPDX-License-Identifier: MIT
// Template files read into readers: which files are taken, and what goes to the reader.
#include "tests/cfgfile/template_test.h"

#include <cstring>

using namespace zel::test;

namespace {

class TemplateReader : public TemplateTest {
protected:
    static int read(const std::string& text) {
        writeText("in", text);
        return ReadDevCfgFmFile("in");
    }

    // The result for a file whose title stands behind some bytes.
    static int readBehind(const std::string& bytes) {
        return read(bytes +
                    "--- zelTag and OEM Reader Configuration Template File ---\nbSndFac = 1");
    }
};

constexpr std::size_t kTitleWithin = 128;
constexpr std::size_t kTitleSize = sizeof kTitleLine - 3; // without its slash and its line end

const std::string kCommit = "> 90 00 00 00 00 00 00 00  commit\n";
const std::string kPause = "> 8C 06 00 00 00 00 00 00  service: volume\n"
                           "< 00 00 00 00 00 00 00 00\n"
                           "~ 1200 ms\n";

} // namespace

TEST_F(TemplateReader, RefusesWhatIsNoTemplateFile) {
    connectRead();
    for (const char* name : {"", "missing", "/", "."})
        EXPECT_EQ(ReadDevCfgFmFile(name), 0) << name;
    EXPECT_EQ(ReadDevCfgFmFile(nullptr), 0);
    for (const char* text : {"", "bSndFac = 1\n", "/--- zelTag and OEM Reader Configuration"})
        EXPECT_EQ(read(text), 0) << text;
    EXPECT_EQ(bus().takeTrace(), "");
    EXPECT_EQ(GetLastLibErr(), 0);
    EXPECT_EQ(config().sCfgFlags.bSndFac, 0);
}

TEST_F(TemplateReader, LooksForTheTitleInTheFirst128Bytes) {
    connectRead();
    EXPECT_EQ(readBehind(""), 1);
    EXPECT_EQ(readBehind(std::string(kTitleWithin - kTitleSize, 'x')), 1);
    EXPECT_EQ(readBehind(std::string(kTitleWithin - kTitleSize + 1, 'x')), 0);
    EXPECT_EQ(readBehind("\n\n:old\n" + std::string(3, '\0')), 1);
}

TEST_F(TemplateReader, WritesAndCommitsWhatDiffers) {
    connectRead();
    EXPECT_EQ(read(std::string(kTitleLine) + "bSndFac = 1\niBitStrmTO = 8\nbBeepID = 1\n"), 1);
    EXPECT_EQ(bus().takeTrace(), "> 80 00 00 00 00 00 00 00  block 0\n"
                                 "> 03 05 11 10 1A 00 28 09  block 0 data\n"
                                 "> 81 00 00 00 00 00 00 00  block 1\n"
                                 "> 00 02 14 28 01 01 00 00  block 1 data\n"
                                 "> 82 00 00 00 00 00 00 00  block 2\n"
                                 "> 00 10 00 00 00 00 00 00  block 2 data\n"
                                 "> 90 07 00 00 00 00 00 00  commit\n" +
                                     kPause);
}

TEST_F(TemplateReader, CommitsForAFileThatChangesNothing) {
    connectRead();
    EXPECT_EQ(read(kTitleLine), 1);
    EXPECT_EQ(bus().takeTrace(), kCommit + kPause);
}

TEST_F(TemplateReader, WritesFieldDataByAllItsPages) {
    connectRead();
    EXPECT_EQ(read(std::string(kTitleLine) + "BEGIN sFldSepData\n0C.00.77\nEND sFldSepData\n"), 1);
    EXPECT_EQ(writes(bus().takeTrace()), "PPPPPPPPPPPPC");
}

// The LED's record goes out with the relay as it still is.
TEST_F(TemplateReader, SendsVolatileOutputsAtOnceAndInTheirOrder) {
    connectRead();
    EXPECT_EQ(read(std::string(kTitleLine) + "bVolatile_BRC = 1\niRelayState = 1\n"
                                             "bVolatile_LC = 1\niRedLEDState = 1\n"),
              1);
    EXPECT_EQ(bus().takeTrace(), "> 82 00 00 00 00 00 00 00  block 2\n"
                                 "> 01 00 00 00 00 00 00 00  block 2 data\n"
                                 "> 82 00 00 00 00 00 00 00  block 2\n"
                                 "> 05 00 00 00 00 00 00 00  block 2 data\n" +
                                     kCommit + kPause);
}

TEST_F(TemplateReader, FailsWithTheWrite) {
    connectRead();
    failFor(1);
    EXPECT_EQ(read(std::string(kTitleLine) + "bSndFac = 1\n"), 0);
    EXPECT_EQ(config().sCfgFlags.bSndFac, 1) << "it waits for the next write";
}

// A header that claims more pages than the record holds stops each write.
TEST_F(TemplateReader, FailsForFieldDataThatClaimTooManyPages) {
    connectRead({.fieldPages = 16});
    EXPECT_EQ(read(std::string(kTitleLine) + "BEGIN sFldSepData\n24.00.00.11\n"), 0);
    EXPECT_EQ(writes(bus().takeTrace()), "");
}

TEST_F(TemplateReader, TakesTheFirstConfigurationOfAFileOfSeveral) {
    connectRead();
    const std::uint16_t type = config().iCardType;
    EXPECT_EQ(read(goldenFile("tagplus")), 1);
    EXPECT_EQ(config().AZERTYShiftLock, 1U);
    EXPECT_EQ(config().sTimeParms.iIDHoldTO, 1000) << "not that of the third one";
    EXPECT_EQ(config().iCardType, type);
    EXPECT_EQ(config(1).bCfgValid, 0U);
}

TEST_F(TemplateReader, RestoresAPlainReader) {
    const auto reader = connectFilledPlain();
    EXPECT_EQ(WriteDevCfgToFile("first"), 1);
    const auto filled = reader->settings().configuration;
    reader->settings() = zel::sim::TagReader::factorySettings();
    ReadCfg();
    EXPECT_EQ(ReadDevCfgFmFile("first"), 1);
    EXPECT_EQ(reader->configuration(0).block, filled[0].block);
    EXPECT_EQ(reader->configuration(0).page, filled[0].page);
    EXPECT_EQ(WriteDevCfgToFile("second"), 1);
    EXPECT_EQ(textOf("second"), goldenFile("plain"));
}

// A reader of the same kind: its field data have the same first bytes.
TEST_F(TemplateReader, RestoresAReaderOfThreeConfigurations) {
    const auto reader = connectFilledPlus();
    EXPECT_EQ(WriteDevCfgToFile("first"), 1);
    const auto filled = reader->settings().configuration;
    reader->settings() = zel::sim::TagReader::factorySettings({.features = 0xC0});
    reader->configuration(0).page[0] = {0x24};
    reader->configuration(2).page[0] = {0x20};
    ReadCfg();
    SetActConfig(1);
    EXPECT_EQ(ReadDevCfgFmFile("first"), 1);
    EXPECT_EQ(GetActConfig(), 1);
    for (std::size_t n = 0; n < 3; ++n) {
        EXPECT_EQ(reader->configuration(n).block, filled[n].block) << n;
        EXPECT_EQ(reader->configuration(n).cardType, filled[n].cardType) << n;
        EXPECT_EQ(reader->configuration(n).cardPriority, filled[n].cardPriority) << n;
    }
    EXPECT_EQ(reader->configuration(0).page, filled[0].page);
}

// Such a row shows a byte that the next one shows again.
TEST_F(TemplateReader, ShiftsFieldDataThatHaveARowOfWidth0) {
    connectRead({.fieldPages = 16});
    config().uSFD = {{0x20, 0, 0, 0, 0, 5, 6}};
    const std::string body = writtenBy(WriteFCfgBody);
    EXPECT_EQ(read(kTitleLine + body), 1);
    const uSFD shifted = {{0x20, 0x20, 0, 0, 0, 0, 5, 6}};
    EXPECT_EQ(std::memcmp(&config().uSFD, &shifted, sizeof shifted), 0);
}
