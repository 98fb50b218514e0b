// SPDX-License-Identifier: MIT
// The single operations of a reader: beep, volume, radio, texts, numbers and options.
#include "tests/family/tag/config_test.h"

#include <cstring>

using namespace zel::test;
using zel::sim::TagOptions;
using Block = zel::sim::TagReader::Block;

namespace {

class Beep : public ConfigTest {};
class Volume : public ConfigTest {};
class Radio : public ConfigTest {};
class ReaderText : public ConfigTest {};
class SerialNumber : public ConfigTest {};
class FirmwareVersion : public ConfigTest {};
class ReaderOption : public ConfigTest {};
class LineSpeed : public ConfigTest {};

} // namespace

TEST_F(Beep, HasOneToFiveShortOnesOrOneOrTwoLongOnes) {
    const auto reader = connectReader();
    const struct {
        unsigned char code;
        short isLong;
        int sent;
    } rows[] = {{0, 0, 1},    {1, 0, 1},    {5, 0, 5},     {9, 0, 5},   {255, 0, 5},
                {0, 1, 0x81}, {1, 1, 0x81}, {2, -1, 0x82}, {9, 1, 0x82}};
    for (const auto& row : rows) {
        EXPECT_EQ(BeepNow(row.code, row.isLong), 1);
        EXPECT_EQ(reader->lastBeep(), row.sent) << int{row.code} << " long " << row.isLong;
    }
}

TEST_F(Beep, IsOneQuery) {
    connectReader();
    record().lLastErr = 0x55;
    EXPECT_EQ(BeepNow(9, 1), 1);
    EXPECT_EQ(bus().takeTrace(), "> 8C 03 82 00 00 00 00 00  service: beep 130\n"
                                 "< 00 00 00 00 00 00 00 00\n");
    EXPECT_EQ(GetLastLibErr(), 0);
}

TEST_F(Beep, OfCode0EndsTheKeystrokeModeOfTheKindThatHasOne) {
    setFilterRow(0, 0x6B2D, 0x9D25);
    std::strcpy(zelTagVidPid.rows[0].vendorName, "6B2D:9D25 Norvanex KQ7");
    const auto reader = plugReader({0x6B2D, 0x9D25, "kq7"});
    connect();
    EXPECT_EQ(isKQ7Reader(), 1);
    EXPECT_EQ(BeepNow(0, 0), 1);
    EXPECT_EQ(reader->lastBeep(), 0);
    BeepNow(9, 0);
    unlockKeystrokeModeOfKQ7();
    EXPECT_EQ(reader->lastBeep(), 0);
}

TEST_F(Beep, ThatFailsTellsSo) {
    connectReader();
    for (const int exchange : {1, 2}) {
        SCOPED_TRACE(exchange);
        failFor(exchange);
        EXPECT_EQ(BeepNow(1, 0), 0);
        EXPECT_EQ(GetLastLibErr(), 0x1000000);
        bus().failExchange(0, 1, 0);
    }
}

TEST_F(Volume, IsSetAndTold) {
    connectReader({.volume = 3});
    EXPECT_EQ(GetBeeperVolume(), 3);
    EXPECT_EQ(bus().takeTrace(), "> 8C 06 00 00 00 00 00 00  service: volume\n"
                                 "< 8C 06 03 00 00 00 00 00\n");
    EXPECT_EQ(SetBeeperVolume(0), 1);
    EXPECT_EQ(bus().takeTrace(), "> 8C 86 00 00 00 00 00 00  service: set volume 0\n"
                                 "< 8C 86 00 00 00 00 00 00\n");
    EXPECT_EQ(GetBeeperVolume(), 0);
}

TEST_F(Volume, IsUnknownToAReaderThatAnswersZeros) {
    connectReader();
    EXPECT_EQ(GetBeeperVolume(), -1);
    EXPECT_EQ(SetBeeperVolume(3), 0);
    EXPECT_EQ(GetLastLibErr(), 0);
}

TEST_F(Volume, IsKnownByAnyByteOfTheReply) {
    const auto reader = connectReader();
    reader->replyWith({0x8C, 0x06}, {0, 0, 0, 0, 0, 0, 0, 1});
    reader->replyWith({0x8C, 0x86}, {0, 0, 0, 0, 0, 0, 0, 1});
    EXPECT_EQ(GetBeeperVolume(), 0);
    EXPECT_EQ(SetBeeperVolume(3), 1);
}

TEST_F(Volume, ThatFailsTellsSo) {
    EXPECT_EQ(GetBeeperVolume(), -1) << "no device";
    connectReader({.volume = 3});
    for (const int exchange : {1, 2}) {
        SCOPED_TRACE(exchange);
        failFor(exchange);
        EXPECT_EQ(GetBeeperVolume(), -1);
        EXPECT_EQ(GetLastLibErr(), 0x1000000);
        failFor(exchange);
        EXPECT_EQ(SetBeeperVolume(1), 0);
        EXPECT_EQ(GetLastLibErr(), 0x1000000);
        bus().failExchange(0, 1, 0);
    }
}

TEST_F(Radio, IsAbsentWithoutAnError) {
    connectReader();
    record().lLastErr = 0x55;
    EXPECT_EQ(GetBTLEConfiguration(), -1);
    EXPECT_EQ(GetLastLibErr(), 0);
    EXPECT_EQ(IsBTLEPresent(), 0);
    EXPECT_EQ(GetLastLibErr(), 0);
    EXPECT_EQ(SetBTLEConfiguration(2), 1) << "the reply's content doesn't matter";
}

TEST_F(Radio, IsSetAndTold) {
    connectReader({.radio = 0});
    EXPECT_EQ(SetBTLEConfiguration(3), 1);
    EXPECT_EQ(bus().takeTrace(), "> 8C 87 03 00 00 00 00 00  service: set radio 3\n"
                                 "< 8C 87 03 00 00 00 00 00\n");
    EXPECT_EQ(GetBTLEConfiguration(), 3);
    EXPECT_EQ(IsBTLEPresent(), 1);
    EXPECT_EQ(bus().takeTrace(), "> 8C 07 00 00 00 00 00 00  service: radio\n"
                                 "< 8C 07 83 00 00 00 00 00\n"
                                 "> 8C 07 00 00 00 00 00 00  service: radio\n"
                                 "< 8C 07 83 00 00 00 00 00\n");
}

TEST_F(Radio, IsToldByTwoBits) {
    const auto reader = connectReader();
    reader->replyWith({0x8C, 0x07}, {0, 0, 0xFE});
    EXPECT_EQ(GetBTLEConfiguration(), 2);
    reader->replyWith({0x8C, 0x07}, {0, 0, 0x7F});
    EXPECT_EQ(GetBTLEConfiguration(), -1);
}

TEST_F(Radio, ThatFailsTellsSo) {
    EXPECT_EQ(GetBTLEConfiguration(), -1) << "no device";
    EXPECT_EQ(IsBTLEPresent(), -1) << "no device";
    connectReader({.radio = 1});
    for (const int exchange : {1, 2}) {
        SCOPED_TRACE(exchange);
        failFor(exchange);
        EXPECT_EQ(SetBTLEConfiguration(1), 0);
        EXPECT_EQ(GetLastLibErr(), 0x20000000);
        failFor(exchange);
        EXPECT_EQ(GetBTLEConfiguration(), -1);
        EXPECT_EQ(GetLastLibErr(), 0x40000000);
        failFor(exchange);
        EXPECT_EQ(IsBTLEPresent(), 0);
        EXPECT_EQ(GetLastLibErr(), 0x40000000);
        bus().failExchange(0, 1, 0);
    }
}

TEST_F(ReaderText, IsAskedForCharacterByCharacter) {
    connectReader({.partNumber = "N55X", .firmwareVersion = "2.10", .fileName = "TAGFW210X"});
    EXPECT_STREQ(zeltag_GetFWFilename(), "TAGFW210");
    EXPECT_STREQ(zeltag_GetFullFWVersion(), "2.1");
    EXPECT_STREQ(zeltag_getPartNumberString(), "N55");
    EXPECT_EQ(bus().exchanges(0), 2 * (8 + 3 + 3));
}

TEST_F(ReaderText, ThatFailsIsNullAndTheRestIsNotAskedFor) {
    connectReader({.partNumber = "N55", .firmwareVersion = "2.1", .fileName = "TAGFW210"});
    record().lLastErr = 0x55;
    bus().failExchange(0, 4);
    EXPECT_EQ(zeltag_GetFWFilename(), nullptr);
    EXPECT_EQ(GetLastLibErr(), 0x50000000);
    bus().failExchange(0, 4);
    EXPECT_EQ(zeltag_GetFullFWVersion(), nullptr);
    EXPECT_EQ(GetLastLibErr(), 0x70000000);
    record().lLastErr = 0x1;
    bus().failExchange(0, 4);
    EXPECT_EQ(zeltag_getPartNumberString(), nullptr);
    EXPECT_EQ(GetLastLibErr(), 0x20001) << "the word before is kept";
    EXPECT_EQ(bus().exchanges(0), 3 * 4);
}

TEST_F(ReaderText, IsNullWithAnIndexOutsideTheTable) {
    connectReader();
    for (const short index : {short{-1}, short{128}}) {
        iActDev = index;
        EXPECT_EQ(zeltag_GetFWFilename(), nullptr);
        EXPECT_EQ(zeltag_GetFullFWVersion(), nullptr);
        EXPECT_EQ(zeltag_getPartNumberString(), nullptr);
    }
    EXPECT_EQ(bus().exchanges(0), 0U);
}

TEST_F(ReaderText, IsThatOfTheRecordAndNothingIsSent) {
    EXPECT_EQ(GetFWFilename(), nullptr);
    EXPECT_EQ(GetFullFWVersion(), nullptr);
    EXPECT_EQ(getPartNumberString(), nullptr);
    EXPECT_EQ(getPartNumberString_char(0), 0);
    connectReader();
    record().iProduct = 2;
    EXPECT_EQ(GetFWFilename(), record().szFWFile);
    EXPECT_EQ(GetFullFWVersion(), record().szFullFWVer);
    EXPECT_EQ(getPartNumberString(), record().szPartNum);
    EXPECT_EQ(bus().takeTrace(), "");
}

TEST_F(ReaderText, ByCharactersIsCopiedAtIndex0) {
    connectReader();
    std::strcpy(record().szPartNum, "N5\xB5");
    EXPECT_EQ(getPartNumberString_char(0), 'N');
    std::strcpy(record().szPartNum, "other");
    EXPECT_EQ(getPartNumberString_char(1), '5');
    EXPECT_EQ(getPartNumberString_char(2), 0xB5);
    EXPECT_EQ(getPartNumberString_char(3), 0);
    EXPECT_EQ(getPartNumberString_char(4), 0);
    EXPECT_EQ(getPartNumberString_char(-1), 0);
    EXPECT_EQ(getPartNumberString_char(32767), 0);
    EXPECT_EQ(getPartNumberString_char(0), 'o');
}

TEST_F(SerialNumber, IsFourPagesOfAReaderThatWritesFast) {
    TagOptions options = {.volume = 1};
    for (unsigned i = 0; i < 32; ++i)
        options.serialNumber[i] = static_cast<std::uint8_t>(0x40 + i);
    connectReader(options);
    const unsigned char* const number = getESN();
    ASSERT_NE(number, nullptr);
    EXPECT_EQ(std::memcmp(number, options.serialNumber.data(), 32), 0);
    EXPECT_EQ(bus().takeTrace(), "> 8C 06 00 00 00 00 00 00  service: volume\n"
                                 "< 8C 06 01 00 00 00 00 00\n"
                                 "> 8C 05 00 00 00 00 00 00  service: serial number page 0\n"
                                 "< 40 41 42 43 44 45 46 47\n"
                                 "> 8C 05 01 00 00 00 00 00  service: serial number page 1\n"
                                 "< 48 49 4A 4B 4C 4D 4E 4F\n"
                                 "> 8C 05 02 00 00 00 00 00  service: serial number page 2\n"
                                 "< 50 51 52 53 54 55 56 57\n"
                                 "> 8C 05 03 00 00 00 00 00  service: serial number page 3\n"
                                 "< 58 59 5A 5B 5C 5D 5E 5F\n");
}

TEST_F(SerialNumber, IsNotAskedOfAReaderThatWritesSlowly) {
    EXPECT_EQ(getESN(), nullptr) << "no device";
    connectReader();
    EXPECT_EQ(getESN(), nullptr);
    EXPECT_EQ(bus().takeTrace(), "> 8C 06 00 00 00 00 00 00  service: volume\n"
                                 "< 00 00 00 00 00 00 00 00\n");
}

TEST_F(SerialNumber, IsNotAskedOverAByteStream) {
    connectReader({.volume = 1});
    record().iDevType = 1;
    EXPECT_EQ(getESN(), nullptr);
    EXPECT_EQ(bus().takeTrace(), "");
}

TEST_F(SerialNumber, ThatFailsTellsSo) {
    connectReader({.volume = 1});
    for (int exchange = 3; exchange <= 10; ++exchange) {
        failFor(exchange);
        EXPECT_EQ(getESN(), nullptr) << exchange;
        EXPECT_EQ(GetLastLibErr(), 0x1000000);
        bus().failExchange(0, 1, 0);
    }
}

TEST_F(FirmwareVersion, IsAskedForMostSignificantByteFirstAndKept) {
    TagOptions options = {.tagPlusConfigurations = 3};
    options.versions[2][4] = 0x12345678;
    connectPlus(options);
    EXPECT_EQ(zeltag_SendGetFirmwareVersion(2, 4), 0x12345678U);
    EXPECT_EQ(bus().takeTrace(), "> 89 03 02 04 00 00 00 00  multi: version of unit 2 slot 4\n"
                                 "< 89 03 02 04 12 34 56 78\n");
    EXPECT_EQ(GetFirmwareVersion(2, 4), 0x12345678U);
    EXPECT_EQ(bus().takeTrace(), "");
}

TEST_F(FirmwareVersion, IsKeptAtUnitModulo3AndSlotModulo5) {
    const auto reader = connectPlus({.tagPlusConfigurations = 3});
    reader->replyWith({0x89, 3, 4, 7}, {0x89, 3, 4, 7, 0, 0, 0, 9});
    EXPECT_EQ(zeltag_SendGetFirmwareVersion(4, 7), 9U);
    EXPECT_EQ(GetFirmwareVersion(1, 2), 9U);
}

TEST_F(FirmwareVersion, IsZeroWithoutAnEcho) {
    const auto reader = connectPlus({.tagPlusConfigurations = 3});
    record().FWVerTbl[0][0] = 5;
    reader->replyWith({0x89, 3}, {0x89, 3, 0, 1, 0, 0, 0, 9});
    EXPECT_EQ(zeltag_SendGetFirmwareVersion(0, 0), 0U);
    EXPECT_EQ(GetFirmwareVersion(0, 0), 0U);
    EXPECT_EQ(GetLastLibErr(), 0);
}

TEST_F(FirmwareVersion, TellsAReplyThatDoesNotCome) {
    connectPlus({.tagPlusConfigurations = 3});
    bus().failExchange(0, 2);
    EXPECT_EQ(zeltag_SendGetFirmwareVersion(0, 0), 0U);
    EXPECT_EQ(GetLastLibErr(), 0x1000000);
}

TEST_F(FirmwareVersion, IsZeroOutsideTheTableAndOnAPlainReader) {
    connectPlus({.tagPlusConfigurations = 3});
    for (auto& unit : record().FWVerTbl)
        for (auto& slot : unit)
            slot = 6;
    EXPECT_EQ(GetFirmwareVersion(2, 4), 6U);
    EXPECT_EQ(GetFirmwareVersion(3, 0) | GetFirmwareVersion(0, 5), 0U);
    EXPECT_EQ(GetFirmwareVersion(-1, 0) | GetFirmwareVersion(0, -1), 0U);
    record().iTagPlusState = 0;
    EXPECT_EQ(GetFirmwareVersion(0, 0), 0U);
    EXPECT_EQ(zeltag_SendGetFirmwareVersion(0, 0), 0U);
    EXPECT_EQ(bus().takeTrace(), "");
}

TEST_F(ReaderOption, OfSecurityIsThatOfTheFirstConfiguration) {
    connectPlus({.tagPlusConfigurations = 3});
    SetActConfig(2);
    SetEnhanceSecurityFlag(5);
    EXPECT_EQ(config(0).uSFD.bytes[126], 128);
    EXPECT_EQ(config(0).bDirtySepFld, 1U);
    EXPECT_EQ(config(2).bDirtySepFld, 0U);
    EXPECT_EQ(GetEnhanceSecurityFlag(), 128);
    SetActConfig(0);
    EXPECT_EQ(GetEnhanceSecurityFlag(), 128);
    config(0).uSFD.bytes[126] = 0xFF;
    EXPECT_EQ(GetEnhanceSecurityFlag(), 128);
    SetEnhanceSecurityFlag(0);
    EXPECT_EQ(config(0).uSFD.bytes[126], 0) << "the whole byte is set";
    EXPECT_EQ(GetEnhanceSecurityFlag(), 0);
}

TEST_F(ReaderOption, IsKeptInTheActiveConfigurationAndMarksBlock3) {
    connectPlus({.tagPlusConfigurations = 3});
    SetActConfig(1);
    const struct {
        int (*set)(short);
        int (*get)();
    } rows[] = {{SetAZERTYShiftLock, GetAZERTYShiftLock},
                {SetExtendedPrecisionMath, GetExtendedPrecisionMath},
                {Set64BytesInPackets, Get64BytesInPackets},
                {SetEasyReadMode, GetEasyReadMode},
                {SetPrependCSN, GetPrependCSN}};
    for (const auto& row : rows) {
        SCOPED_TRACE(&row - rows);
        config(1).bDirtyExt = 0;
        EXPECT_EQ(row.set(7), 1);
        EXPECT_EQ(row.get(), 7);
        EXPECT_EQ(config(1).bDirtyExt, 1U);
        SetActConfig(0);
        EXPECT_EQ(row.get(), 0);
        SetActConfig(1);
    }
    EXPECT_EQ(config(0).bDirtyExt, 0U);
    EXPECT_EQ(bus().takeTrace(), "");
}

TEST_F(LineSpeed, IsUnknownOverFeatureReportsAndNothingIsSent) {
    connectReader();
    EXPECT_EQ(ReadBaudRate(), -1);
    EXPECT_EQ(WriteBaudRate(1), 0);
    EXPECT_EQ(bus().takeTrace(), "");
}
