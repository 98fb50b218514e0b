// SPDX-License-Identifier: MIT
// What is asked of a reader, in which order, and what its record holds afterwards.
#include "tests/family/tag/config_test.h"

#include <algorithm>
#include <array>

using namespace zel::test;
using zel::sim::TagOptions;

namespace {

const TagOptions kTexts = {.partNumber = "N55", .firmwareVersion = "2.1", .fileName = "TAGFW210"};

class ConfigurationRead : public ConfigTest {
protected:
    // Position of an exchange among those of the read of a plain reader, all before it succeeding.
    static constexpr int kProbe = 1;
    static constexpr int kLuid = 3;
    static constexpr int kFirstPage = 13;
    static constexpr int kFileName = 37;
    static constexpr int kFullVersion = 53;
    static constexpr int kPartNumber = 59;
    static constexpr int kEnd = 65;
};

class FailingRead : public ConfigurationRead {};

} // namespace

TEST_F(ConfigurationRead, OfAPlainReaderAsksIdsBlocksFieldsAndTexts) {
    const auto reader = connectReader(kTexts);
    reader->settings().luid = 0x1234;
    EXPECT_EQ(ReadCfg(), 1);
    EXPECT_EQ(bus().takeTrace(), goldenTrace("read_plain"));
}

TEST_F(ConfigurationRead, FillsTheRecord) {
    const auto reader = connectReader(kTexts);
    reader->settings().luid = 0x1234;
    config().bDirtyIDFrmt1 = config().bDirtyIDFrmt2 = config().bDirtyTime = 1;
    config().bDirtyExt = config().bDirtySepFld = record().bLUIDDirty = 1;
    ReadCfg();
    EXPECT_EQ(GetLUID(), 0x1234);
    EXPECT_EQ(GetDID(), 0x0142);
    EXPECT_EQ(GetSN(), 65535);
    EXPECT_STREQ(GetFWFilename(), "TAGFW210");
    EXPECT_STREQ(GetFullFWVersion(), "2.1");
    EXPECT_STREQ(getPartNumberString(), "N55");
    EXPECT_EQ(config().bCfgValid, 1U);
    EXPECT_EQ(config().uSFD.bytes[0], 12);
    EXPECT_EQ(config().bDirtyIDFrmt1 | config().bDirtyIDFrmt2 | config().bDirtyTime |
                  config().bDirtyExt | config().bDirtySepFld | record().bLUIDDirty,
              0U);
    EXPECT_EQ(record().iTagPlusState, 0U);
}

TEST_F(ConfigurationRead, OfThreeConfigurationsGoesDownwardAndBackToTheActiveOne) {
    TagOptions options = kTexts;
    options.tagPlusConfigurations = 3;
    options.cardTypes = {0x1204, 0x34F7, 1, 2, 3};
    const auto reader = connectReader(options);
    reader->settings().luid = 0x1234;
    for (std::uint8_t n = 0; n < 3; ++n)
        reader->configuration(n).block[0][4] = static_cast<std::uint8_t>(26 + n);
    reader->configuration(2).cardType = 0x1204;
    reader->configuration(2).cardPriority = true;
    reader->configuration(0).cardType = 0x3407;
    reader->configuration(1).page[0] = {};
    reader->configuration(0).page[0] = {0x24, 0, 0, 2, 0x61};
    reader->configuration(0).page[1] = {0x62};
    reader->activate(1);
    SendGetTagPlus();
    bus().takeTrace();
    EXPECT_EQ(ReadCfg(), 1);
    EXPECT_EQ(bus().takeTrace(), goldenTrace("read_three_configurations"));
    EXPECT_EQ(reader->activeConfiguration(), 1U);
    EXPECT_EQ(GetActConfig(), 1);
    for (int n = 0; n < 3; ++n)
        EXPECT_EQ(config(n).sIDBitCnts.iTotalBitCnt, 26 + n) << n;
    EXPECT_EQ(config(2).iCardType, 0x1204);
    EXPECT_EQ(config(2).iCardPriority, 1);
    EXPECT_EQ(config(0).iCardType, 0x3407);
    const unsigned short types[] = {0x1204, 0x3407, 1, 2, 3, 0};
    EXPECT_TRUE(std::equal(std::begin(types), std::end(types), record().CardTypeList));
}

TEST_F(ConfigurationRead, OfANewMultiConfigurationReaderReadsTheActiveOneAlone) {
    const auto reader = connectReader({.tagPlusConfigurations = 3});
    reader->activate(2);
    EXPECT_EQ(ReadCfg(), 1);
    EXPECT_EQ(record().iTagPlusState, 2U);
    EXPECT_EQ(config(2).bCfgValid, 1U);
    EXPECT_EQ(config(0).bCfgValid | config(1).bCfgValid, 0U);
}

TEST_F(ConfigurationRead, AfterAFailedProbeReadsWithoutAskingAgain) {
    connectReader();
    record().iTagPlusState = 1;
    EXPECT_EQ(ReadCfg(), 1);
    EXPECT_EQ(bus().takeTrace().substr(0, 31), "> 8A 00 00 00 00 00 00 00  LUID");
}

TEST_F(ConfigurationRead, AddsTheParityAboveItsNibble) {
    const auto reader = connectReader();
    reader->configuration(0).block[0][2] = 0x3F;
    reader->configuration(0).block[1][7] = 0x80;
    reader->configuration(0).block[3] = {2, 0};
    ReadCfg();
    EXPECT_EQ(config().sIDBitCnts.iLeadParityBitCnt, 17);
    EXPECT_EQ(config().sIDBitCnts.iTrailParityBitCnt, 3);
}

TEST_F(ConfigurationRead, RepairsTooMuchParityAndLeavesTheErrorWordAlone) {
    const auto reader = connectReader();
    reader->configuration(0).block[0][2] = 0x3F;
    reader->configuration(0).block[3] = {2, 0};
    EXPECT_EQ(ReadCfg(), 1);
    EXPECT_EQ(config().sIDBitCnts.iLeadParityBitCnt, 15);
    EXPECT_EQ(GetLastLibErr(), 0);
}

TEST_F(ConfigurationRead, SharesThreeCharactersBetweenLeadsAndTrails) {
    const auto reader = connectReader();
    reader->configuration(0).block[2] = {0, 0, 0, 0, 0x21, 'a', 'b', 'c'};
    ReadCfg();
    EXPECT_EQ(config().sIDDispParms2.iLeadChrCnt, 1);
    EXPECT_EQ(config().sIDDispParms2.iLeadChr0, 'a');
    EXPECT_EQ(config().sIDDispParms2.iLeadChr1, 0);
    EXPECT_EQ(config().sIDDispParms3.iTrailChrCnt, 2);
    EXPECT_EQ(config().sIDDispParms3.iTrailChr0, 'b');
    EXPECT_EQ(config().sIDDispParms3.iTrailChr1, 'c');
    EXPECT_EQ(config().sIDDispParms3.iTrailChr2, 0);
}

TEST_F(ConfigurationRead, GivesTheTrailsWhatTheLeadsLeaveWhateverTheirCountSays) {
    const auto reader = connectReader();
    reader->configuration(0).block[2] = {0, 0, 0, 0, 0x11, 'a', 'b', 'c'};
    ReadCfg();
    EXPECT_EQ(config().sIDDispParms3.iTrailChrCnt, 1);
    EXPECT_EQ(config().sIDDispParms3.iTrailChr0, 'b');
    EXPECT_EQ(config().sIDDispParms3.iTrailChr1, 'c');
}

TEST_F(ConfigurationRead, KeepsTheTrailCountThatTheReaderGave) {
    const auto reader = connectReader();
    reader->configuration(0).block[2] = {0, 0, 0, 0, 0x33, 'a', 'b', 'c'};
    ReadCfg();
    EXPECT_EQ(config().sIDDispParms2.iLeadChr2, 'c');
    EXPECT_EQ(config().sIDDispParms3.iTrailChrCnt, 3);
    EXPECT_EQ(config().sIDDispParms3.iTrailChr0, 0);
}

TEST_F(ConfigurationRead, ShowsTheLongestTimes) {
    const auto reader = connectReader();
    reader->configuration(0).block[1] = {0xEE, 255, 255, 255, 255, 255, 0, 0};
    ReadCfg();
    EXPECT_EQ(config().sTimeParms.iBitStrmTO, 1020);
    EXPECT_EQ(config().sTimeParms.iIDHoldTO, 12750);
    EXPECT_EQ(config().sTimeParms.iIDLockOutTm, 12750);
    EXPECT_EQ(config().sTimeParms.iUSBKeyPrsTm, 1020);
    EXPECT_EQ(config().sTimeParms.iUSBKeyRlsTm, 1020);
}

TEST_F(ConfigurationRead, TakesTheOutputFormatOnlyFromAReaderThatHasIt) {
    const auto reader = connectReader();
    reader->configuration(0).block[3][7] = 5;
    config().sIDDispParms.iExOutputFormat = 9;
    ReadCfg();
    EXPECT_EQ(config().sIDDispParms.iExOutputFormat, 9);
    reader->configuration(0).block[1][7] = 0x40;
    ReadCfg();
    EXPECT_EQ(config().sIDDispParms.iExOutputFormat, 5);
}

TEST_F(ConfigurationRead, EndsWhatIsVolatile) {
    connectReader();
    config().sLEDCtrl.bVolatile = config().sBprRlyCtrl.bVolatile = 1;
    ReadCfg();
    EXPECT_EQ(config().sLEDCtrl.bVolatile, 0);
    EXPECT_EQ(config().sBprRlyCtrl.bVolatile, 0);
}

TEST_F(ConfigurationRead, NotesTheSecurityFlagOfTheFirstConfiguration) {
    const auto reader = connectReader({.fieldPages = 16});
    reader->configuration(0).page[15][6] = 0x80;
    ReadCfg();
    EXPECT_TRUE(enhanceSecurityFlagCurrFWState);
    reader->configuration(0).page[15][6] = 0x7F;
    ReadCfg();
    EXPECT_FALSE(enhanceSecurityFlagCurrFWState);
}

TEST_F(FailingRead, OfIdsOrABlockEndsItAndKeepsWhetherTheRecordIsValid) {
    connectReader();
    for (int exchange = kLuid; exchange < kFirstPage; ++exchange)
        for (const unsigned valid : {0U, 1U}) {
            config().bCfgValid = valid;
            record().lLastErr = 0x55;
            failFor(exchange);
            EXPECT_EQ(ReadCfg(), 0) << exchange;
            EXPECT_EQ(GetLastLibErr(), 0x20000) << exchange;
            EXPECT_EQ(config().bCfgValid, valid) << exchange;
            bus().failExchange(0, 1, 0);
        }
}

TEST_F(FailingRead, KeepsWhatCameBefore) {
    const auto reader = connectReader();
    reader->settings().luid = 0x1234;
    config().sTimeParms.iIDHoldTO = 77;
    failFor(kLuid + 4);
    EXPECT_EQ(ReadCfg(), 0);
    EXPECT_EQ(GetLUID(), 0x1234);
    EXPECT_EQ(config().sIDBitCnts.iTotalBitCnt, 26);
    EXPECT_EQ(config().sTimeParms.iIDHoldTO, 77);
}

TEST_F(FailingRead, OfATextIsNoFailureAndTheRestOfItIsNotAskedFor) {
    connectReader(kTexts);
    ReadCfg();
    const struct {
        int exchange;
        std::int64_t error;
        int exchanges;
        std::array<const char*, 3> texts;
    } rows[] = {
        // Asking for the next text clears the word of the one before.
        {kFileName + 3, 0, 52, {"", "2.1", "N55"}},
        {kFullVersion + 3, 0x70000000, 62, {"TAGFW210", "", "N55"}},
        {kPartNumber + 1, 0x20000, 60, {"TAGFW210", "2.1", "N55"}},
    };
    for (const auto& row : rows) {
        record().bPartNumOK = 1;
        const int before = bus().exchanges(0);
        bus().failExchange(0, row.exchange);
        EXPECT_EQ(ReadCfg(), 1) << row.exchange;
        EXPECT_EQ(GetLastLibErr(), row.error) << row.exchange;
        EXPECT_EQ(bus().exchanges(0) - before, row.exchanges);
        EXPECT_STREQ(record().szFWFile, row.texts[0]) << row.exchange;
        EXPECT_STREQ(record().szFullFWVer, row.texts[1]) << row.exchange;
        EXPECT_STREQ(record().szPartNum, row.texts[2]) << row.exchange;
    }
    EXPECT_EQ(record().bPartNumOK, 0U);
}

TEST_F(FailingRead, OfThePartNumberIsNotRepeatedByTheNextRead) {
    connectReader(kTexts);
    record().bPartNumOK = 0;
    const int before = bus().exchanges(0);
    EXPECT_EQ(ReadCfg(), 1);
    EXPECT_EQ(bus().exchanges(0) - before, kPartNumber - 1);
}

TEST_F(FailingRead, SelectsTheOthersButReadsNoMore) {
    connectPlus({.tagPlusConfigurations = 3});
    failFor(7); // the LUID, behind select, query and card type of configuration 2
    EXPECT_EQ(ReadCfg(), 0);
    const std::string trace = bus().takeTrace();
    const std::size_t rest = trace.rfind("! not sent\n~ 80 ms\n") + 19;
    EXPECT_EQ(trace.substr(rest), "> 89 81 01 00 00 00 00 00  multi: select 1\n"
                                  "< 89 81 00 00 00 00 00 00\n"
                                  "> 89 81 00 00 00 00 00 00  multi: select 0\n"
                                  "< 89 81 00 00 00 00 00 00\n"
                                  "> 89 81 00 00 00 00 00 00  multi: select 0\n"
                                  "< 89 81 00 00 00 00 00 00\n"
                                  "> 89 04 00 00 00 00 00 00  multi: card types page 0\n"
                                  "< 00 00 00 00 00 00 00 00\n");
    EXPECT_EQ(config(2).bCfgValid | config(1).bCfgValid | config(0).bCfgValid, 0U);
}

TEST_F(FailingRead, AtAnyExchangeOfAPlainReaderIsGoodAgainWithTheNext) {
    traceNothing();
    const auto reader = connectReader(kTexts);
    for (const int tries : {1, kSendTries})
        for (int exchange = kProbe; exchange <= kEnd; ++exchange) {
            bus().failExchange(0, exchange, tries);
            EXPECT_EQ(ReadCfg() & ~1, 0) << exchange;
            bus().failExchange(0, 1, 0);
            record().bPartNumOK = 1;
            EXPECT_EQ(ReadCfg(), 1) << exchange;
            EXPECT_STREQ(record().szPartNum, "N55") << exchange;
        }
    EXPECT_EQ(reader->violations(), 0) << reader->lastViolation();
}

TEST_F(FailingRead, AtAnyExchangeOfAMultiConfigurationReaderIsGoodAgainWithTheNext) {
    traceNothing();
    const auto reader = connectPlus({.tagPlusConfigurations = 3, .cardTypes = {1, 2, 3, 4, 5}});
    const int before = bus().exchanges(0);
    ReadCfg();
    const int all = bus().exchanges(0) - before;
    for (const int tries : {1, kSendTries})
        for (int exchange = 1; exchange <= all; ++exchange) {
            bus().failExchange(0, exchange, tries);
            EXPECT_EQ(ReadCfg() & ~1, 0) << exchange;
            bus().failExchange(0, 1, 0);
            EXPECT_EQ(ReadCfg(), 1) << exchange;
            record().iTagPlusState = 0;
            EXPECT_EQ(SendGetTagPlus(), 1) << exchange;
            EXPECT_EQ(ReadCfg(), 1) << exchange;
            EXPECT_EQ(GetMaxConfig(), 2) << exchange;
        }
    EXPECT_EQ(reader->violations(), 0) << reader->lastViolation();
}

TEST_F(ConfigurationRead, WithoutADeviceIsNothing) { EXPECT_EQ(ReadCfg(), 0); }
