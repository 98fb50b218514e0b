// SPDX-License-Identifier: MIT
// What of a configuration goes to the reader, in which order, and what a failure leaves.
#include "tests/family/tag/config_test.h"

#include <algorithm>
#include <numeric>

using namespace zel::test;
using zel::sim::TagOptions;

namespace {

class ConfigurationWrite : public ConfigTest {
protected:
    static void fillBlocks01() {
        tsTagCfg& filled = config();
        record().iLUID = 0x1234;
        filled.sIDBitCnts = {20, 2, 16, 37, 0, 0, 0, 0};
        filled.sIDDispParms = {0x2D, 0x28, 6, 4, 1, 0, 0, 0};
        filled.sCfgFlags = {1, 0, 7, 0, 0, 0, 0, 1};
        filled.sTimeParms = {64, 12749, 2000, 4, 11, 0xC0, 0, 0x42};
    }

    static void fillBlocks23() {
        tsTagCfg& filled = config();
        filled.sLEDCtrl.iRedLEDState = 2;
        filled.sBprRlyCtrl.iRelayState = 1;
        filled.sCfgFlags3.bNotBootDev = 1;
        filled.sCfgFlags2.bUseLeadChrs = filled.sCfgFlags2.bDspHex = filled.sCfgFlags2.bRevBytes =
            1;
        filled.sIDDispParms2 = {2, 'a', 'b', 'c', 'A', 'B', 0, 0};
        filled.sIDDispParms3 = {3, 'x', 'y', 'z', 0, 0, 0, 0};
        const std::uint16_t words[] = {0, 0, 0x11, 0x22, 0x33, 0x40, 0x06};
        std::copy(std::begin(words), std::end(words), filled.ExtBlock);
        filled.ExtendedPrecisionMath = 1;
    }

    static void fillStores() {
        tsTagCfg& filled = config();
        const std::uint8_t fields[] = {0x24, 0, 0, 2, 'a', 'b', 'c', 'd', 1, 2, 3, 4, 5, 6, 7, 8};
        std::copy(std::begin(fields), std::end(fields), filled.uSFD.bytes);
        std::iota(std::begin(filled.sHashKeyData.key[0]), std::end(filled.sHashKeyData.key[0]),
                  std::uint8_t{0xA0});
        std::iota(std::begin(filled.sHashKeyData.key[1]), std::end(filled.sHashKeyData.key[1]),
                  std::uint8_t{0xB0});
        filled.iCardType = 0x1204;
        filled.iCardPriority = 1;
    }

    static void fillEverything() {
        fillBlocks01();
        fillBlocks23();
        fillStores();
        markAll();
    }
};

class FailingWrite : public ConfigurationWrite {};

const std::string kCommit0 = "> 90 00 00 00 00 00 00 00  commit\n";
const std::string kVolume = "> 8C 06 00 00 00 00 00 00  service: volume\n";
const std::string kNone = "< 00 00 00 00 00 00 00 00\n";

} // namespace

TEST_F(ConfigurationWrite, OfEverythingGoesInTheReadersOrder) {
    const auto reader = connectPlus({.tagPlusConfigurations = 1, .volume = 2});
    fillEverything();
    EXPECT_EQ(WriteCfg(), 1);
    EXPECT_EQ(bus().takeTrace(), goldenTrace("write_everything"));
    EXPECT_EQ(marks(), 0U);
    EXPECT_EQ(GetLastLibErr(), 0);
    EXPECT_EQ(reader->committed().luid, 0x1234);
    EXPECT_EQ(reader->violations(), 0) << reader->lastViolation();
}

TEST_F(ConfigurationWrite, OfNothingStillCommitsAndPauses) {
    connectRead();
    EXPECT_EQ(WriteCfg(), 1);
    EXPECT_EQ(bus().takeTrace(), kCommit0 + kVolume + kNone + "~ 1200 ms\n");
}

TEST_F(ConfigurationWrite, PausesShortlyForAReaderThatTellsItsVolume) {
    connectRead({.volume = 0});
    EXPECT_EQ(WriteCfg(), 1);
    EXPECT_EQ(bus().takeTrace(), kCommit0 + kVolume + "< 8C 06 00 00 00 00 00 00\n" + "~ 20 ms\n");
}

TEST_F(ConfigurationWrite, PausesShortlyForTwoOrFourConfigurations) {
    const int pauses[] = {1200, 20, 1200, 20, 1200};
    for (int count = 1; count <= 5; ++count) {
        unplugAll();
        connectPlus({.tagPlusConfigurations = count});
        EXPECT_EQ(zeltag_WriteCfgOneConfig(), 1);
        EXPECT_TRUE(bus().takeTrace().ends_with(kVolume + kNone + "~ " +
                                                std::to_string(pauses[count - 1]) + " ms\n"))
            << count;
    }
}

TEST_F(ConfigurationWrite, OfThreeConfigurationsGoesDownwardAndBackToTheActiveOne) {
    const auto reader = connectPlus({.tagPlusConfigurations = 3});
    reader->configuration(2).cardType = 0x1204;
    reader->configuration(2).cardPriority = true;
    reader->configuration(0).cardType = 0x3407;
    ReadCfg();
    config(1).bDirtyTime = 1;
    bus().takeTrace();
    EXPECT_EQ(WriteCfg(), 1);
    EXPECT_EQ(bus().takeTrace(), goldenTrace("write_three_configurations"));
    EXPECT_EQ(GetActConfig(), 0);
    EXPECT_EQ(reader->violations(), 0) << reader->lastViolation();
}

TEST_F(ConfigurationWrite, ThatCannotSelectOneWritesNoFurtherOnes) {
    const auto reader = connectPlus({.tagPlusConfigurations = 3});
    reader->replyWith({0x89, 0x81, 1}, {});
    ReadCfg();
    bus().takeTrace();
    EXPECT_EQ(WriteCfg(), 0);
    const std::string trace = bus().takeTrace();
    EXPECT_TRUE(trace.ends_with("~ 1200 ms\n"
                                "> 89 81 01 00 00 00 00 00  multi: select 1\n" +
                                kNone +
                                "> 89 81 00 00 00 00 00 00  multi: select 0\n"
                                "< 89 81 00 00 00 00 00 00\n"
                                "> 89 81 00 00 00 00 00 00  multi: select 0\n"
                                "< 89 81 00 00 00 00 00 00\n"))
        << trace;
}

TEST_F(ConfigurationWrite, OfLongParityTakesBlock3AlongAndBackAgain) {
    const auto reader = connectRead({.features = 0x80});
    sIDBitCnts counts = config().sIDBitCnts;
    counts.iLeadParityBitCnt = 20;
    EXPECT_EQ(SetIDBitCnts(&counts), 1);
    EXPECT_EQ(config().bDirtyExt, 0U);
    EXPECT_EQ(zeltag_write_cfg(), 1);
    EXPECT_EQ(bus().takeTrace(), "> 80 00 00 00 00 00 00 00  block 0\n"
                                 "> 03 05 1F 10 1A 00 28 01  block 0 data\n"
                                 "> 83 00 00 00 00 00 00 00  block 3\n"
                                 "> 05 00 00 00 00 00 00 00  block 3 data\n"
                                 "> 90 09 00 00 00 00 00 00  commit\n");
    wait();
    counts.iLeadParityBitCnt = 15;
    SetIDBitCnts(&counts);
    EXPECT_EQ(zeltag_write_cfg(), 1);
    EXPECT_EQ(bus().takeTrace(), "> 80 00 00 00 00 00 00 00  block 0\n"
                                 "> 03 05 1F 10 1A 00 28 01  block 0 data\n"
                                 "> 83 00 00 00 00 00 00 00  block 3\n"
                                 "> 00 00 00 00 00 00 00 00  block 3 data\n"
                                 "> 90 09 00 00 00 00 00 00  commit\n");
    EXPECT_EQ(reader->violations(), 0) << reader->lastViolation();
}

TEST_F(ConfigurationWrite, CutsTheLengthsToSevenBits) {
    connectRead();
    config().sIDDispParms.iFACDispLen = 0xFF;
    config().sIDDispParms.iIDDispLen = 0x81;
    config().sIDBitCnts.iIDBitCnt = 200;
    config().sIDBitCnts.iTotalBitCnt = 200;
    config().bDirtyIDFrmt1 = 1;
    zeltag_write_cfg();
    EXPECT_EQ(bus().takeTrace(), "> 80 00 00 00 00 00 00 00  block 0\n"
                                 "> 7F 01 11 48 C8 00 28 01  block 0 data\n"
                                 "> 90 01 00 00 00 00 00 00  commit\n");
}

TEST_F(ConfigurationWrite, CutsTimesToTheReadersUnits) {
    connectRead();
    config().sTimeParms.iIDHoldTO = 12749;
    config().bDirtyTime = 1;
    WriteCfg();
    ReadCfg();
    EXPECT_EQ(config().sTimeParms.iIDHoldTO, 12700);
}

TEST_F(ConfigurationWrite, OfOptionsThatNoReaderSeesRepeatsBlock3) {
    const auto reader = connectRead();
    reader->configuration(0).block[3] = {0, 0, 1, 2, 3, 4, 5, 6};
    ReadCfg();
    bus().takeTrace();
    Set64BytesInPackets(1);
    SetEasyReadMode(1);
    SetPrependCSN(1);
    zeltag_write_cfg();
    EXPECT_EQ(bus().takeTrace(), "> 83 00 00 00 00 00 00 00  block 3\n"
                                 "> 00 00 01 02 03 04 05 00  block 3 data\n"
                                 "> 90 08 00 00 00 00 00 00  commit\n");
}

TEST_F(FailingWrite, OfABlockEndsItBeforeTheCommitAndKeepsTheMarks) {
    connectRead();
    // LUID, blocks 0 to 3: a command and its data each.
    for (int exchange = 1; exchange <= 10; ++exchange) {
        markAll();
        failFor(exchange);
        EXPECT_EQ(zeltag_write_cfg(), 0) << exchange;
        EXPECT_EQ(GetLastLibErr(), 0x40000) << exchange;
        EXPECT_EQ(marks(), 0xAFU) << exchange;
        EXPECT_EQ(bus().takeTrace().find("commit"), std::string::npos) << exchange;
    }
}

TEST_F(FailingWrite, OfTheCommitKeepsTheMarks) {
    connectRead();
    markAll();
    failFor(2 * (5 + 12) + 1);
    EXPECT_EQ(zeltag_write_cfg(), 0);
    EXPECT_EQ(GetLastLibErr(), 0x40000);
    EXPECT_EQ(marks(), 0xAFU);
    EXPECT_TRUE(bus().takeTrace().ends_with(refused("> 90 AF 00 00 00 00 00 00  commit")));
}

TEST_F(FailingWrite, OfTheCardTypeIsNoFailure) {
    connectPlus({.tagPlusConfigurations = 1});
    failFor(1);
    EXPECT_EQ(zeltag_write_cfg(), 1);
    EXPECT_EQ(GetLastLibErr(), 0x40000);
    EXPECT_EQ(bus().takeTrace(), refused("> 84 00 00 00 00 00 00 00  card type") + kCommit0);
}

TEST_F(FailingWrite, LosesItsErrorWordToTheVolumeQueryAndPausesAllTheSame) {
    connectRead();
    config().bDirtyTime = 1;
    failFor(1);
    EXPECT_EQ(WriteCfg(), 0);
    EXPECT_EQ(GetLastLibErr(), 0);
    EXPECT_EQ(bus().takeTrace(),
              refused("> 81 00 00 00 00 00 00 00  block 1") + kVolume + kNone + "~ 1200 ms\n");
}

TEST_F(FailingWrite, AtAnyExchangeIsGoodAgainWithTheNext) {
    const TagOptions kinds[] = {{.features = 0xC0, .fieldPages = 3},
                                {.tagPlusConfigurations = 3, .volume = 1, .features = 0xC0}};
    for (const TagOptions& kind : kinds) {
        unplugAll();
        const auto reader = connectReader(kind);
        SendGetTagPlus();
        ReadCfg();
        for (const int tries : {1, kSendTries})
            for (int exchange = 1, all = 1; exchange <= all; ++exchange) {
                record().iTagPlusState = 0;
                SendGetTagPlus();
                record().bSepFldOK = 1;
                fillBlocks01();
                markAll();
                const int before = bus().exchanges(0);
                bus().failExchange(0, exchange, tries);
                EXPECT_EQ(WriteCfg() & ~1, 0) << exchange;
                all = std::max(all, bus().exchanges(0) - before);
                bus().failExchange(0, 1, 0);
                record().bSepFldOK = 1;
                EXPECT_EQ(WriteCfg(), 1) << exchange;
                EXPECT_EQ(reader->committed().luid, 0x1234);
            }
        EXPECT_EQ(reader->violations(), 0) << reader->lastViolation();
    }
}

TEST_F(ConfigurationWrite, OfBlock2AloneNeedsNoCommit) {
    connectRead();
    config().sLEDCtrl.iGrnLEDState = 1;
    EXPECT_EQ(WrtIDFrmtParms2(&config()), 1);
    EXPECT_EQ(bus().takeTrace(), "> 82 00 00 00 00 00 00 00  block 2\n"
                                 "> 02 00 00 00 00 00 00 00  block 2 data\n");
}

TEST_F(ConfigurationWrite, OfFactoryDefaultsPausesAndReadsBack) {
    const auto reader = connectRead();
    reader->configuration(0).block[1][2] = 1;
    EXPECT_EQ(ResetFactoryDflts(), 1);
    EXPECT_TRUE(bus().takeTrace().starts_with("> A0 00 00 00 00 00 00 00  factory defaults\n"
                                              "~ 1200 ms\n"
                                              "> 89 01 00 00 00 00 00 00  multi: query\n"));
    EXPECT_EQ(config().sTimeParms.iIDHoldTO, 1000);
    EXPECT_EQ(reader->violations(), 0) << reader->lastViolation();
}

TEST_F(FailingWrite, OfFactoryDefaultsReadsNothing) {
    connectRead();
    failFor(1);
    EXPECT_EQ(ResetFactoryDflts(), 0);
    EXPECT_EQ(GetLastLibErr(), 0x80000);
    EXPECT_EQ(bus().takeTrace(), refused("> A0 00 00 00 00 00 00 00  factory defaults"));
}

TEST_F(ConfigurationWrite, WithoutADeviceIsNothing) { EXPECT_EQ(WriteCfg(), 0); }
