// SPDX-License-Identifier: MIT
// Reading a configuration by frames: the whole trace, and what a failure at each command leaves.
#include "family/tag/multi_config.h"
#include "family/tag/read_config.h"
#include "tests/family/tag/stream_test.h"

#include <algorithm>
#include <iterator>

using namespace zel::test;
using zel::sim::StreamFault;

namespace {

constexpr std::int64_t kReadFailed = 0x20000;
constexpr std::int64_t kNoTexts = 0x70000000; // the texts of the firmware don't travel on a stream

class StreamConfigurationRead : public StreamTest {
protected:
    static bool isFieldDataZero() {
        const auto& bytes = config().uSFD.bytes;
        return std::all_of(std::begin(bytes), std::end(bytes), [](auto byte) { return byte == 0; });
    }
};

std::string block(const std::string& number, const std::string& bytes) {
    return reading("01 " + number + " 00 08", "01 " + bytes + " 90 00");
}

std::string idsAndBlocks(const std::string& features) {
    return reading("04 00 00 04", "04 34 12 42 01 90 00") + block("00", "03 05 11 10 1A 00 28 01") +
           block("01", "00 10 14 28 01 01 00 " + features) +
           block("02", "00 00 00 00 00 00 00 00") + block("03", "00 00 00 00 00 00 00 00");
}

const std::string kPartNumber = partNumberCharacter("00", "41") + partNumberCharacter("01", "42") +
                                partNumberCharacter("02", "43");

} // namespace

TEST_F(StreamConfigurationRead, OfAPlainReaderProbesItTwiceThenAsksInOrder) {
    const auto stream = connectSimulated({.features = 0x21, .fieldPages = 2, .partNumber = "ABCD"});
    stream->reader().settings().luid = 0x1234;
    stream->reader().configuration(0).page[1] = {1, 2, 3, 4, 5, 6, 7, 8};
    EXPECT_EQ(ReadCfg(), 1);
    EXPECT_EQ(told(), reading("09 01 00 00", "6D 00") + reading("09 01 00 00", "6D 00") +
                          idsAndBlocks("21") +
                          reading("09 00 00 08", "09 24 00 00 02 00 00 00 00 90 00") +
                          reading("09 00 00 10",
                                  "09 24 00 00 02 00 00 00 00 01 02 03 04 05 06 07 08 90 00") +
                          kPartNumber);
    EXPECT_EQ(record().iTagPlusState, 1U);
    EXPECT_EQ(record().iLUID, 0x1234);
    EXPECT_EQ(record().iDID, 0x0142);
    EXPECT_EQ(record().lSN, 65535);
    EXPECT_EQ(config().sTimeParms.iIDHoldTO, 1000);
    EXPECT_EQ(config().uSFD.bytes[15], 8);
    EXPECT_STREQ(record().szPartNum, "ABC");
    EXPECT_STREQ(record().szFWFile, "");
    EXPECT_EQ(config().bCfgValid, 1U);
    EXPECT_EQ(GetLastLibErr(), kNoTexts);
}

TEST_F(StreamConfigurationRead, OfATagPlusReaderReadsEachConfigurationAndTheCardTypes) {
    const auto stream = connectSimulated({.tagPlusConfigurations = 2,
                                          .features = 0x40,
                                          .fieldPages = 1,
                                          .partNumber = "ABC",
                                          .cardTypes = {0x12F4}});
    stream->reader().settings().luid = 0x1234;
    stream->reader().configuration(1).cardType = 0x0105;
    stream->reader().configuration(1).cardPriority = true;
    EXPECT_EQ(SendGetTagPlus(), 1);
    told();
    const auto select = [](const std::string& number) {
        return reading("09 81 " + number + " 00", "09 81 00 00 00 00 00 00 90 00");
    };
    const std::string configuration =
        idsAndBlocks("40") + reading("0A 00 00 08", "0A 24 00 00 01 00 00 00 00 90 00") +
        reading("0A 00 00 08", "0A 24 00 00 01 00 00 00 00 90 00") + kPartNumber;
    EXPECT_EQ(ReadCfg(), 1);
    EXPECT_EQ(told(), select("01") + reading("09 01 00 00", "09 01 01 02 00 05 01 01 90 00") +
                          configuration + select("00") +
                          reading("09 01 00 00", "09 01 00 02 00 00 00 00 90 00") + configuration +
                          select("00") +
                          "> FA\n~ 50 ms\n> 09 04 00 00\n~ 10 ms\n"
                          "< 09 04 00 F4 12 00 00 00 00 00 00 90 00\n~ 2 ms\n");
    EXPECT_EQ(config(1).iCardType, 0x0105U);
    EXPECT_EQ(config(1).iCardPriority, 1U);
    EXPECT_EQ(config(0).bCfgValid + config(1).bCfgValid, 2U);
    EXPECT_EQ(record().CardTypeList[0], 0x1204);
    EXPECT_EQ(record().iActConfig, 0);
}

// All blocks that follow are asked of none, but each configuration is still selected.
TEST_F(StreamConfigurationRead, SelectsTheOtherConfigurationsAlsoAfterAFailure) {
    const auto stream = connectSimulated({.tagPlusConfigurations = 3});
    EXPECT_EQ(SendGetTagPlus(), 1);
    const int before = stream->commands();
    stream->fail(StreamFault::WrongStatus, 1, 3);
    EXPECT_EQ(ReadCfg(), 0);
    EXPECT_EQ(stream->commands() - before, 8) << "2: select, state, IDs, block 0; 1, 0, 0: select; "
                                                 "a page of card types";
    EXPECT_EQ(stream->reader().activeConfiguration(), 0U);
}

TEST_F(StreamConfigurationRead, ThatFailsAtTheIdsOrABlockEndsThere) {
    for (const auto fault :
         {StreamFault::Silence, StreamFault::WrongProcedureByte, StreamFault::WrongStatus})
        for (int n = 1; n <= 5; ++n) {
            const auto stream = connectSimulated();
            record().iTagPlusState = 1;
            record().lLastErr = 0x77;
            stream->fail(fault, 1, n - 1);
            EXPECT_EQ(ReadCfg(), 0) << n;
            EXPECT_EQ(GetLastLibErr(), n == 1 ? kReadFailed : 0) << n;
            EXPECT_EQ(lLastICSWErr, fault == StreamFault::Silence ? 0 : 0x6F00U) << n;
            EXPECT_EQ(stream->commands(), n);
            EXPECT_EQ(config().bCfgValid, 0U);
            takeLineAway();
        }
}

TEST_F(StreamConfigurationRead, ThatFailsAtTheFieldDataGoesOnWithoutIt) {
    for (const auto fault :
         {StreamFault::Silence, StreamFault::WrongProcedureByte, StreamFault::WrongStatus})
        for (int n = 6; n <= 7; ++n) {
            const auto stream = connectSimulated({.fieldPages = 2});
            record().iTagPlusState = 1;
            record().bSepFldOK = 1;
            std::fill(std::begin(config().uSFD.bytes), std::end(config().uSFD.bytes), 0xEE);
            stream->fail(fault, 1, n - 1);
            EXPECT_EQ(ReadCfg(), 1) << n;
            EXPECT_TRUE(isFieldDataZero()) << n;
            EXPECT_EQ(record().bSepFldOK, n == 6 ? 0U : 1U);
            EXPECT_EQ(stream->commands(), n == 6 ? 9 : 10) << "there are no pages to ask for";
            EXPECT_EQ(config().bCfgValid, 1U);
            takeLineAway();
        }
}

TEST_F(StreamConfigurationRead, ThatFailsAtThePartNumberDoesNotAskForItAgain) {
    for (const auto fault : {StreamFault::Silence, StreamFault::WrongProcedureByte})
        for (int n = 8; n <= 10; ++n) {
            const auto stream = connectSimulated({.partNumber = "ABC"});
            record().iTagPlusState = 1;
            record().bPartNumOK = 1;
            stream->fail(fault, 1, n - 1);
            EXPECT_EQ(ReadCfg(), 1) << n;
            EXPECT_EQ(record().bPartNumOK, 0U);
            EXPECT_EQ(stream->commands(), n);
            EXPECT_EQ(GetLastLibErr(), kNoTexts) << "without a word of its own";
            EXPECT_EQ(ReadCfg(), 1);
            EXPECT_EQ(stream->commands(), n + 7);
            takeLineAway();
        }
}

TEST_F(StreamConfigurationRead, LeavesFieldDataAloneThatCouldNotBeReadOnce) {
    const auto stream = connectSimulated({.fieldPages = 2});
    record().iTagPlusState = 1;
    record().bSepFldOK = 0;
    config().uSFD.bytes[5] = 0xEE;
    EXPECT_EQ(ReadCfg(), 1);
    EXPECT_EQ(stream->commands(), 8);
    EXPECT_TRUE(isFieldDataZero());
}

TEST_F(StreamConfigurationRead, TakesAtMost128BytesOfFieldData) {
    for (const std::uint8_t pages : {std::uint8_t{16}, std::uint8_t{17}, std::uint8_t{255}}) {
        const auto stream = connectSimulated({.fieldPages = pages});
        stream->reader().configuration(0).page[15] = {8, 7, 6, 5, 4, 3, 2, 1};
        record().iTagPlusState = 1;
        EXPECT_EQ(ReadCfg(), 1);
        EXPECT_NE(told().find("> 09 00 00 80\n"), std::string::npos) << unsigned{pages};
        EXPECT_EQ(config().uSFD.bytes[0], 0x24);
        EXPECT_EQ(config().uSFD.bytes[127], 1);
        takeLineAway();
    }
}

// The first byte doesn't count here, not even that of the old form.
TEST_F(StreamConfigurationRead, TakesTheNumberOfPagesFromTheFourthByte) {
    const auto stream = connectSimulated();
    stream->reader().configuration(0).page[0] = {12, 9, 9, 0, 9, 9, 9, 9};
    record().iTagPlusState = 1;
    EXPECT_EQ(ReadCfg(), 1);
    EXPECT_NE(told().find(reading("09 00 00 00", "09 90 00")), std::string::npos);
    EXPECT_TRUE(isFieldDataZero());
}

TEST_F(StreamConfigurationRead, HasNoBitForTheBootDevice) {
    const auto stream = connectSimulated();
    stream->reader().configuration(0).block[2][0] = 0x1F;
    config().sCfgFlags3.bNotBootDev = 1;
    EXPECT_EQ(ReadCfg(), 1);
    EXPECT_EQ(config().sCfgFlags3.bNotBootDev, 0);
    EXPECT_EQ(config().sLEDCtrl.iRedLEDState, 1);
}
