// SPDX-License-Identifier: MIT
// Pages of separator and field data, and the key values, read and written.
#include "family/tag/field_data.h"

#include "tests/family/tag/config_test.h"

#include <algorithm>
#include <vector>

using namespace zel::test;
using Block = zel::sim::TagReader::Block;

namespace {

class FieldDataRead : public ConfigTest {
protected:
    // Number of the first page's exchange in the read of a plain reader.
    static constexpr int kFirstPage = 13;

    static int pagesAsked() {
        const std::string trace = bus().takeTrace();
        int pages = 0;
        for (std::size_t at = 0; (at = trace.find("> 85 ", at)) != std::string::npos; ++at)
            ++pages;
        return pages;
    }

    static bool hasFields() {
        return std::any_of(std::begin(config().uSFD.bytes), std::end(config().uSFD.bytes),
                           [](int byte) { return byte != 0; });
    }
};

class FieldDataWrite : public ConfigTest {};
class KeyWrite : public ConfigTest {};

const std::string kVolume = "> 8C 06 00 00 00 00 00 00  service: volume\n";
const std::string kNone = "< 00 00 00 00 00 00 00 00\n";

} // namespace

TEST_F(FieldDataRead, OfTheOldFormTakesTwelvePages) {
    const auto reader = connectReader();
    reader->configuration(0).page[11] = {1, 2, 3, 4, 5, 6, 7, 8};
    reader->configuration(0).page[12] = {9};
    ReadCfg();
    EXPECT_EQ(pagesAsked(), 12);
    EXPECT_EQ(config().uSFD.bytes[95], 8);
    EXPECT_EQ(config().uSFD.bytes[96], 0);
}

TEST_F(FieldDataRead, OfAStoreNeverWrittenStoresNothing) {
    const auto reader = connectReader();
    for (const std::uint8_t first : std::vector<std::uint8_t>{0, 255}) {
        reader->configuration(0).page[0] = {first, 1, 2, 3, 4, 5, 6, 7};
        EXPECT_EQ(ReadCfg(), 1);
        EXPECT_EQ(pagesAsked(), 1) << int{first};
        EXPECT_FALSE(hasFields()) << int{first};
    }
}

TEST_F(FieldDataRead, StopsAtEighteenPagesAndKeeps128Bytes) {
    const auto reader = connectReader();
    reader->configuration(0).page.fill({9, 9, 9, 9, 9, 9, 9, 9});
    reader->configuration(0).page[0] = {254, 0, 0, 200};
    ReadCfg();
    EXPECT_EQ(pagesAsked(), 18);
    EXPECT_EQ(config().uSFD.bytes[127], 9);
    EXPECT_EQ(config().sHashKeyData.key[0][0], 0) << "what stands behind it is left alone";
}

TEST_F(FieldDataRead, OfAHeaderWithoutPagesTakesTheHeader) {
    const auto reader = connectReader();
    reader->configuration(0).page[0] = {5, 1, 1, 0, 1, 1, 1, 1};
    ReadCfg();
    EXPECT_EQ(pagesAsked(), 1);
    EXPECT_EQ(config().uSFD.bytes[7], 1);
}

TEST_F(FieldDataRead, IsLeftOutWhereTheReaderHasNoneAndClearsTheRecord) {
    connectReader();
    record().bSepFldOK = 0;
    config().uSFD.bytes[5] = 7;
    EXPECT_EQ(ReadCfg(), 1);
    EXPECT_EQ(pagesAsked(), 0);
    EXPECT_FALSE(hasFields());
}

TEST_F(FieldDataRead, EndsTheReadWhenAPageCannotBeAskedFor) {
    connectReader();
    config().uSFD.bytes[5] = 7;
    failFor(kFirstPage + 2);
    EXPECT_EQ(ReadCfg(), 0);
    EXPECT_EQ(GetLastLibErr(), 0x20000);
    EXPECT_EQ(config().uSFD.bytes[5], 7);
    EXPECT_EQ(config().bCfgValid, 0U);
}

TEST_F(FieldDataRead, GoesOnWithZerosWhenAPageDoesNotCome) {
    const auto reader = connectReader();
    reader->configuration(0).page[1] = {1, 1};
    reader->configuration(0).page[2] = {2, 2};
    bus().failExchange(0, kFirstPage + 3);
    EXPECT_EQ(ReadCfg(), 1);
    EXPECT_EQ(pagesAsked(), 12);
    EXPECT_EQ(config().uSFD.bytes[8], 0);
    EXPECT_EQ(config().uSFD.bytes[16], 2);
}

TEST_F(FieldDataWrite, OfMoreThanTheRecordHoldsIsRefusedBeforeTheCommit) {
    connectRead();
    config().uSFD.bytes[0] = 5;
    config().uSFD.bytes[3] = 17;
    config().bDirtyTime = config().bDirtySepFld = 1;
    EXPECT_EQ(WriteCfg(), 0);
    EXPECT_EQ(bus().takeTrace(), "> 81 00 00 00 00 00 00 00  block 1\n"
                                 "> 00 10 14 28 01 01 00 00  block 1 data\n" +
                                     kVolume + kNone + "~ 1200 ms\n");
    EXPECT_EQ(marks(), 0x22U);
    EXPECT_EQ(GetLastLibErr(), 0);
}

TEST_F(FieldDataWrite, OfMoreThanTheRecordHoldsIsRefusedAlsoWhenItIsNotMarked) {
    connectRead();
    config().uSFD.bytes[0] = 5;
    config().uSFD.bytes[3] = 17;
    EXPECT_EQ(zeltag_write_cfg(), 0);
    EXPECT_EQ(bus().takeTrace(), "");
}

TEST_F(FieldDataWrite, OfSixteenPagesIsTheMost) {
    connectRead();
    config().uSFD.bytes[0] = 5;
    config().uSFD.bytes[3] = 16;
    EXPECT_EQ(zeltag_write_cfg(), 1);
}

TEST_F(FieldDataWrite, OfTheOldFormIsTwelvePagesWhateverItsFourthByteSays) {
    connectRead();
    config().uSFD.bytes[3] = 200;
    config().bDirtySepFld = 1;
    const int before = bus().exchanges(0);
    EXPECT_EQ(zeltag_write_cfg(), 1);
    EXPECT_EQ(bus().exchanges(0) - before, 2 * 12 + 1);
}

TEST_F(FieldDataWrite, PastTheRecordGoesOutAsZeros) {
    connectRead();
    record().bSepFldOK = 0;
    config().uSFD.bytes[0] = 5;
    config().uSFD.bytes[3] = 255;
    config().sHashKeyData.key[0][0] = 0x77;
    config().bDirtySepFld = 1;
    EXPECT_EQ(zeltag_write_cfg(), 1);
    const std::string trace = bus().takeTrace();
    EXPECT_NE(trace.find("> 85 10 00 10 00 00 00 00  page 16 of fields\n"
                         "> 00 00 00 00 00 00 00 00  page 16 of fields data\n"),
              std::string::npos);
    EXPECT_NE(trace.find("page 254 of fields data\n> 90 20 00"), std::string::npos);
}

TEST_F(FieldDataWrite, GoesOnAfterAPageThatFailsAndSucceeds) {
    const struct {
        int exchange;
        unsigned partNumber;
    } rows[] = {{1, 1U}, {2, 0U}};
    connectRead({.fieldPages = 2});
    for (const auto& row : rows) {
        wait();
        record().bSepFldOK = record().bPartNumOK = 1;
        config().bDirtySepFld = 1;
        failFor(row.exchange);
        EXPECT_EQ(zeltag_write_cfg(), 1);
        EXPECT_EQ(GetLastLibErr(), 0x40000);
        EXPECT_EQ(record().bSepFldOK, 0U);
        EXPECT_EQ(record().bPartNumOK, row.partNumber) << row.exchange;
        EXPECT_TRUE(bus().takeTrace().ends_with("> 85 01 00 10 00 00 00 00  page 1 of fields\n"
                                                "> 00 00 00 00 00 00 00 00  page 1 of fields data\n"
                                                "> 90 20 00 00 00 00 00 00  commit\n"));
        EXPECT_EQ(marks(), 0U);
    }
}

TEST_F(KeyWrite, SendsTheKeysThatDoNotStartWithZero) {
    const auto reader = connectRead({.features = 0x40});
    config().sHashKeyData.key[0][1] = 1;
    config().sHashKeyData.key[1][0] = 2;
    config().bDirtySepFld = 1;
    zeltag_write_cfg();
    EXPECT_EQ(reader->configuration(0).key[0][0], (Block{}));
    EXPECT_EQ(reader->configuration(0).key[1][0], (Block{2}));
}

TEST_F(KeyWrite, SendsBothWhereTheReadFoundTheSecurityFlag) {
    const auto reader = connectRead({.features = 0x40});
    reader->configuration(0).key[1][1] = {9};
    config().sHashKeyData.key[0][1] = 1;
    config().bDirtySepFld = 1;
    enhanceSecurityFlagCurrFWState = true;
    zeltag_write_cfg();
    EXPECT_EQ(reader->configuration(0).key[0][0], (Block{0, 1}));
    EXPECT_EQ(reader->configuration(0).key[1][1], (Block{}));
}

TEST_F(KeyWrite, IsLeftOutForAReaderWithoutTheFeature) {
    connectRead({.features = 0x80});
    config().sHashKeyData.key[0][0] = 1;
    config().bDirtySepFld = 1;
    enhanceSecurityFlagCurrFWState = true;
    zeltag_write_cfg();
    EXPECT_EQ(bus().takeTrace().find("key"), std::string::npos);
}

TEST_F(KeyWrite, ThatFailsGoesOnWithItsSecondPage) {
    connectRead({.features = 0x40});
    const struct {
        int exchange;
        unsigned partNumber;
    } rows[] = {{1, 1U}, {2, 0U}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.exchange);
        record().bSepFldOK = record().bPartNumOK = 1;
        record().lLastErr = 0;
        failFor(row.exchange);
        WriteHashKeyBlock(&config(), 0, 17);
        EXPECT_EQ(GetLastLibErr(), 0x40000);
        EXPECT_EQ(record().bSepFldOK, 0U);
        EXPECT_EQ(record().bPartNumOK, row.partNumber);
        EXPECT_TRUE(bus().takeTrace().ends_with("> 85 01 11 00 00 00 00 00  key 2 page 1\n"
                                                "> 00 00 00 00 00 00 00 00  key 2 page 1 data\n"));
    }
}
