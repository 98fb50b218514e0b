// SPDX-License-Identifier: MIT
// Writing a configuration by frames, and the return to factory defaults.
#include "family/tag/multi_config.h"
#include "family/tag/read_config.h"
#include "family/tag/write_config.h"
#include "tests/family/tag/config_marks.h"
#include "tests/family/tag/stream_test.h"

#include <algorithm>
#include <iterator>
#include <numeric>

using namespace zel::test;
using zel::sim::StreamFault;

namespace {

const std::string kVolume = reading("0C 06 00 00", "0C 02");
const std::string kNoVolume = reading("0C 06 00 00", "6D 00");
const std::string kNoType = reading("81 04 00 08", "6D 00");
const std::string kDone = "~ 5 ms\n< 90 00\n";

class StreamConfigurationWrite : public StreamTest {
protected:
    static void fillBlocks() {
        tsTagCfg& filled = config();
        filled.sIDBitCnts = {20, 2, 16, 37, 0, 0, 0, 0};
        filled.sIDDispParms = {0x2D, 0x28, 6, 4, 1, 0, 0, 0};
        filled.sCfgFlags = {1, 0, 7, 0, 0, 0, 0, 1};
        filled.sTimeParms = {64, 12749, 2000, 4, 11, 0xC0, 0, 0x42};
        filled.sLEDCtrl.iRedLEDState = filled.sBprRlyCtrl.iRelayState = 1;
        filled.sCfgFlags3.bNotBootDev = filled.sCfgFlags2.bUseLeadChrs = 1;
        filled.sIDDispParms2 = {2, 'a', 'b', 'c', 'A', 'B', 0, 0};
        filled.sIDDispParms3 = {3, 'x', 'y', 'z', 0, 0, 0, 0};
        const std::uint16_t words[] = {0, 0, 0x11, 0x22, 0x33, 0x40, 0x06};
        std::copy(std::begin(words), std::end(words), filled.ExtBlock);
        filled.ExtendedPrecisionMath = 1;
    }

    static void fillStores() {
        record().iLUID = 0x1234;
        tsTagCfg& filled = config();
        const std::uint8_t fields[] = {0x24, 0, 0, 2, 'a', 'b', 'c', 'd', 1, 2, 3, 4, 5, 6, 7, 8};
        std::copy(std::begin(fields), std::end(fields), filled.uSFD.bytes);
        auto& keys = filled.sHashKeyData.key;
        std::iota(std::begin(keys[0]), std::end(keys[0]), std::uint8_t{0xA0});
        std::iota(std::begin(keys[1]), std::end(keys[1]), std::uint8_t{0xB0});
        filled.iCardType = 0x1204;
        filled.iCardPriority = 1;
    }

    // A reader of one configuration, with everything of it to be written.
    std::shared_ptr<zel::sim::TagStream> connectMarked() {
        auto stream = connectSimulated({.tagPlusConfigurations = 1, .volume = std::uint8_t{2}});
        fillBlocks();
        fillStores();
        markAll();
        record().bSepFldOK = 1;
        return stream;
    }
};

std::string block(const std::string& number, const std::string& bytes) {
    return writing("81 " + number + " 00 08", bytes);
}

} // namespace

TEST_F(StreamConfigurationWrite, OfEverythingGoesInTheReadersOrder) {
    const auto stream = connectMarked();
    EXPECT_EQ(WriteCfg(), 1);
    EXPECT_EQ(told(),
              writing("06 00 00 02", "34 12") + block("00", "04 06 2F 10 25 2D 28 85") +
                  block("01", "00 10 FE 28 01 02 42 C0") + block("02", "15 01 41 42 12 61 62 78") +
                  block("03", "05 00 11 22 33 42 04 01") +
                  writing("8A 00 00 10", "24 00 00 02 61 62 63 64 01 02 03 04 05 06 07 08") +
                  writing("8A 00 01 10", "A0 A1 A2 A3 A4 A5 A6 A7 A8 A9 AA AB AC AD AE AF") +
                  writing("8A 00 11 10", "B0 B1 B2 B3 B4 B5 B6 B7 B8 B9 BA BB BC BD BE BF") +
                  block("04", "00 04 12 01 00 00 00 00") + "> FA 02 AF 00 00\n" + kDone + kVolume +
                  "~ 20 ms\n");
    EXPECT_EQ(marks(), 0U);
    EXPECT_EQ(GetLastLibErr(), 0);
    EXPECT_EQ(stream->reader().committed().luid, 0x1234);
    EXPECT_EQ(stream->reader().configuration(0).key[1][1][7], 0xBF);
}

TEST_F(StreamConfigurationWrite, OfNothingTriesTheCardTypeTwiceCommitsAndPauses) {
    connectSimulated();
    EXPECT_EQ(WriteCfg(), 1);
    EXPECT_EQ(told(), kNoType + kNoType + "> FA 02 00 00 00\n" + kDone + kNoVolume + "~ 1200 ms\n");
}

TEST_F(StreamConfigurationWrite, SendsFieldDataByAnotherInstructionToAReaderWithoutTheFeature) {
    connectSimulated();
    const std::uint8_t fields[] = {0x24, 0, 0, 1, 5, 6, 7, 8};
    std::copy(std::begin(fields), std::end(fields), config().uSFD.bytes);
    config().sHashKeyData.key[0][0] = 1;
    config().bDirtySepFld = 1;
    EXPECT_EQ(zeltag_write_cfg(), 1);
    EXPECT_EQ(told(), "> FA\n~ 50 ms\n> 0A 00 00 08\n~ 5 ms\n< \"\\n\"\n"
                      "> 24 00 00 01 05 06 07 08\n~ 5 ms\n< 90 00\n" +
                          kNoType + kNoType + "> FA 02 20 00 00\n" + kDone)
        << "and no key";
}

TEST_F(StreamConfigurationWrite, SendsKeysThatBeginWithZeroOnlyUnderTheSecurityFlag) {
    const auto stream = connectSimulated({.features = 0x40, .fieldPages = 1});
    config().sTimeParms.ExFeatures01 = 0x40;
    config().uSFD.bytes[3] = 1;
    config().sHashKeyData.key[1][0] = 9;
    config().bDirtySepFld = 1;
    EXPECT_EQ(zeltag_write_cfg(), 1);
    std::string trace = told();
    EXPECT_EQ(trace.find("> 8A 00 01 10"), std::string::npos);
    EXPECT_NE(trace.find("> 8A 00 11 10"), std::string::npos);
    enhanceSecurityFlagCurrFWState = true;
    config().sHashKeyData.key[1][0] = 0;
    config().bDirtySepFld = 1;
    EXPECT_EQ(zeltag_write_cfg(), 1);
    trace = told();
    EXPECT_NE(trace.find("> 8A 00 01 10"), std::string::npos);
    EXPECT_NE(trace.find("> 8A 00 11 10"), std::string::npos);
}

TEST_F(StreamConfigurationWrite, RefusesFieldDataBeyondTheRecordBeforeItsCommit) {
    const auto stream = connectMarked();
    config().uSFD.bytes[0] = 5;
    config().uSFD.bytes[3] = 17;
    EXPECT_EQ(zeltag_write_cfg(), 0);
    EXPECT_EQ(stream->commands(), 5) << "the LUID and four blocks";
    EXPECT_EQ(marks(), 0xAFU);
    EXPECT_EQ(GetLastLibErr(), 0);
}

TEST_F(StreamConfigurationWrite, SendsAllOfTheRecordWhereFieldDataCouldNotBeReadOnce) {
    for (const std::uint8_t pages : {std::uint8_t{16}, std::uint8_t{17}, std::uint8_t{255}}) {
        const auto stream = connectSimulated();
        record().bSepFldOK = 0;
        config().bDirtySepFld = 1;
        config().uSFD.bytes[0] = 5;
        config().uSFD.bytes[3] = pages;
        config().uSFD.bytes[127] = 0xEE;
        EXPECT_EQ(zeltag_write_cfg(), 1);
        EXPECT_NE(told().find("> 0A 00 00 80\n"), std::string::npos) << unsigned{pages};
        EXPECT_EQ(stream->reader().configuration(0).page[15][7], 0xEE);
        takeLineAway();
    }
}

// The volume is not asked for here: it would clear what the failure told.
TEST_F(StreamConfigurationWrite, ThatFailsBeforeTheStoresOrAtTheCommitKeepsItsMarks) {
    for (const auto fault :
         {StreamFault::Silence, StreamFault::WrongProcedureByte, StreamFault::WrongStatus})
        for (const int n : {1, 2, 3, 4, 5, 10}) {
            const auto stream = connectMarked();
            record().lLastErr = 0x77;
            stream->fail(fault, 1, n - 1);
            EXPECT_EQ(zeltag_write_cfg(), 0) << n;
            EXPECT_EQ(stream->commands(), n);
            EXPECT_EQ(marks(), 0xAFU) << n;
            EXPECT_EQ(GetLastLibErr(), 0) << "told by the status word alone";
            EXPECT_EQ(lLastICSWErr, fault == StreamFault::Silence ? 0 : 0x6F00U) << n;
            EXPECT_EQ(record().bSepFldOK, 1U);
            takeLineAway();
        }
}

TEST_F(StreamConfigurationWrite, ThatFailsAtAStoreGoesOnWithoutFieldDataFromThen) {
    for (const auto fault :
         {StreamFault::Silence, StreamFault::WrongProcedureByte, StreamFault::WrongStatus})
        for (int n = 6; n <= 8; ++n) {
            const auto stream = connectMarked();
            record().bPartNumOK = 1;
            stream->fail(fault, 1, n - 1);
            EXPECT_EQ(zeltag_write_cfg(), 1) << n;
            EXPECT_EQ(stream->commands(), 10);
            EXPECT_EQ(record().bSepFldOK, 0U);
            EXPECT_EQ(record().bPartNumOK, 1U);
            EXPECT_EQ(marks(), 0U);
            EXPECT_EQ(GetLastLibErr(), 0);
            takeLineAway();
        }
}

TEST_F(StreamConfigurationWrite, TriesTheCardTypeAgainWithoutAPause) {
    const auto stream = connectMarked();
    stream->fail(StreamFault::WrongStatus, 1, 8);
    EXPECT_EQ(zeltag_write_cfg(), 1);
    EXPECT_EQ(stream->commands(), 11);
    EXPECT_EQ(stream->reader().configuration(0).cardType, 0x1204);
}

TEST_F(StreamConfigurationWrite, PausesAlsoBehindAFailureAndAsksForTheVolumeFirst) {
    const auto stream = connectSimulated({.volume = std::uint8_t{2}});
    record().bLUIDDirty = 1;
    stream->refuse(0x6F, 0x00);
    EXPECT_EQ(WriteCfg(), 0);
    EXPECT_EQ(told(), reading("06 00 00 02", "6F 00") + kVolume + "~ 20 ms\n");
    EXPECT_EQ(lLastICSWErr, 0U) << "of the volume query";
}

TEST_F(StreamConfigurationWrite, OfAVolatileOutputIsBlock2AtOnce) {
    connectSimulated();
    sLEDCtrl leds = {};
    leds.bVolatile = leds.iGrnLEDState = 1;
    EXPECT_EQ(SetLEDCtrl(&leds), 1);
    EXPECT_EQ(told(), block("02", "02 00 00 00 00 00 00 00"));
    EXPECT_EQ(marks(), 0U);
}

TEST_F(StreamConfigurationWrite, GoesThroughAllConfigurationsFromTheHighest) {
    const auto stream = connectSimulated({.tagPlusConfigurations = 2});
    EXPECT_EQ(SendGetTagPlus(), 1);
    told();
    const auto select = [](const std::string& number) {
        return reading("09 81 " + number + " 00", "09 81 00 00 00 00 00 00 90 00");
    };
    const std::string type = block("04", "00 00 00 00 00 00 00 00");
    const std::string configuration =
        type + type + "> FA 02 00 00 00\n" + kDone + kNoVolume + "~ 20 ms\n";
    EXPECT_EQ(WriteCfg(), 1);
    EXPECT_EQ(told(), select("01") + configuration + select("00") + configuration + select("00"));
}

TEST_F(StreamConfigurationWrite, ReturnsToFactoryDefaultsAndReadsThemBack) {
    const auto stream = connectSimulated();
    record().iTagPlusState = 1;
    stream->reader().configuration(0).block[0][0] = 9;
    EXPECT_EQ(ResetFactoryDflts(), 1);
    const std::string begin = "> FA 03 00 00 00\n" + kDone + "~ 1200 ms\n" +
                              reading("04 00 00 04", "04 00 00 42 01 90 00");
    EXPECT_EQ(told().substr(0, begin.size()), begin);
    EXPECT_EQ(config().sIDDispParms.iFACDispLen, 3);
}

TEST_F(StreamConfigurationWrite, EndsAReturnToFactoryDefaultsThatIsRefused) {
    const auto stream = connectSimulated();
    for (const auto fault : {StreamFault::Silence, StreamFault::WrongStatus}) {
        const std::string answer =
            fault == StreamFault::Silence ? "~ 5 ms x 100\n" : "~ 5 ms\n< 6F 00\n";
        stream->fail(fault);
        EXPECT_EQ(ResetFactoryDflts(), 0);
        EXPECT_EQ(told(), "> FA 03 00 00 00\n" + answer);
        EXPECT_EQ(GetLastLibErr(), 0);
    }
}
