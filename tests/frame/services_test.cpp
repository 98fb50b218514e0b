// SPDX-License-Identifier: MIT
// The exported single operations: which devices they serve, and what they yield where none does.
#include "tests/support/library_test.h"

#include <cstring>

using namespace zel::test;
using zel::sim::TagOptions;

namespace {

class Services : public LibraryTest {
protected:
    ~Services() override { SetUnsupportedProductErrorCode(0); }
};

class UnservedServices : public Services {
protected:
    UnservedServices() { SetUnsupportedProductErrorCode(-7); }

    // Operations that any active device is asked for.
    static void expectNoDevice() {
        EXPECT_EQ(SetBeeperVolume(1), -7);
        EXPECT_EQ(GetBeeperVolume(), -1);
        EXPECT_EQ(SetBTLEConfiguration(1), -7);
        EXPECT_EQ(GetBTLEConfiguration(), -1);
        EXPECT_EQ(IsBTLEPresent(), -1);
        EXPECT_EQ(ReadBaudRate(), -1);
        EXPECT_EQ(WriteBaudRate(1), -7);
        EXPECT_EQ(GetFullFWVersion(), nullptr);
        EXPECT_EQ(GetFWFilename(), nullptr);
        EXPECT_EQ(getPartNumberString(), nullptr);
        EXPECT_EQ(getPartNumberString_char(0), 0);
        unsigned char data[4] = {};
        EXPECT_EQ(WriteSEKeyRefrence(data, 4, 1), 0);
        EXPECT_EQ(WriteEV1FileRefrence(data, 4), 0);
    }

    // Operations that proximity readers alone serve.
    static void expectNoReader() {
        EXPECT_EQ(GetFirmwareVersion(1, 0), static_cast<unsigned>(-7));
        EXPECT_EQ(getESN(), nullptr);
        EXPECT_EQ(GetEnhanceSecurityFlag(), -7);
        EXPECT_EQ(SetAZERTYShiftLock(1), -7);
        EXPECT_EQ(GetAZERTYShiftLock(), -7);
        EXPECT_EQ(SetExtendedPrecisionMath(1), -7);
        EXPECT_EQ(GetExtendedPrecisionMath(), -7);
        EXPECT_EQ(Set64BytesInPackets(1) | SetEasyReadMode(1) | SetPrependCSN(1), 0);
        EXPECT_EQ(Get64BytesInPackets() | GetEasyReadMode() | GetPrependCSN(), 0);
        SetEnhanceSecurityFlag(1);
        EXPECT_EQ(DevDat[0].Cfg[0].uSFD.bytes[126], 0);
        EXPECT_EQ(DevDat[0].Cfg[0].bDirtySepFld | DevDat[0].Cfg[0].bDirtyExt, 0U);
    }
};

} // namespace

TEST_F(UnservedServices, AreRefusedWithNoDevice) {
    expectNoDevice();
    expectNoReader();
    EXPECT_EQ(BeepNow(1, 0), 0) << "not the unsupported value";
    EXPECT_EQ(bus().takeTrace(), "");
}

TEST_F(UnservedServices, AreRefusedForAnotherProduct) {
    connectReader();
    for (const unsigned product : {0U, 3U, 4U}) {
        SCOPED_TRACE(product);
        DevDat[0].iProduct = product;
        expectNoReader();
        EXPECT_EQ(BeepNow(1, 0), -7);
    }
    EXPECT_EQ(bus().takeTrace(), "");
}

TEST_F(Services, BeepIsOneQuery) {
    connectReader();
    EXPECT_EQ(BeepNow(2, 1), 1);
    EXPECT_EQ(bus().takeTrace(), "> 8C 03 82 00 00 00 00 00  service: beep 130\n"
                                 "< 00 00 00 00 00 00 00 00\n");
}

TEST_F(Services, KeystrokeUnlockBeepsWithZeroOnItsReaderOnly) {
    const auto reader = connectReader();
    unlockKeystrokeModeOfKQ7();
    EXPECT_EQ(reader->lastBeep(), 1);
    DevDat[0].iVidPidIdx = 0;
    std::strcpy(zelTagVidPid.rows[0].vendorName, "6B2D:9D25 Norvanex KQ7");
    EXPECT_EQ(isKQ7Reader(), 1);
    unlockKeystrokeModeOfKQ7();
    EXPECT_EQ(reader->lastBeep(), 0);
    std::strcat(zelTagVidPid.rows[0].vendorName, "x");
    EXPECT_EQ(isKQ7Reader(), 0) << "the whole name counts";
}

TEST_F(Services, VolumeAndRadioReachTheReader) {
    const auto reader = connectReader({.volume = 3, .radio = 1});
    EXPECT_EQ(GetBeeperVolume(), 3);
    EXPECT_EQ(SetBeeperVolume(2), 1);
    EXPECT_EQ(reader->options().volume, 2);
    EXPECT_EQ(IsBTLEPresent(), 1);
    EXPECT_EQ(SetBTLEConfiguration(2), 1);
    EXPECT_EQ(GetBTLEConfiguration(), 2);
}

TEST_F(Services, LineSpeedIsNoMatterOfAUsbReader) {
    connectReader();
    EXPECT_EQ(ReadBaudRate(), -1);
    EXPECT_EQ(WriteBaudRate(1), 0);
    EXPECT_EQ(bus().takeTrace(), "");
}

TEST_F(Services, LineSpeedOfTheNextSerialConnectIsStoredWithoutATest) {
    const unsigned before = defaultbaudrate;
    SetBaudRate(12345);
    EXPECT_EQ(defaultbaudrate, 12345U);
    SetBaudRate(before);
}

TEST_F(Services, TextsAreThoseOfTheRecord) {
    connectReader({.partNumber = "ZT5", .firmwareVersion = "764", .fileName = "LARK7604"});
    EXPECT_STREQ(GetFWFilename(), "");
    EXPECT_EQ(ReadCfg(), 1);
    bus().takeTrace();
    EXPECT_STREQ(GetFWFilename(), "LARK7604");
    EXPECT_STREQ(GetFullFWVersion(), "764");
    EXPECT_STREQ(getPartNumberString(), "ZT5");
    EXPECT_EQ(bus().takeTrace(), "");
}

TEST_F(Services, PartNumberComesCharacterByCharacterFromACopyTakenAtIndexZero) {
    connectReader();
    std::strcpy(DevDat[0].szPartNum, "ZT5");
    EXPECT_EQ(getPartNumberString_char(0), 'Z');
    std::strcpy(DevDat[0].szPartNum, "other");
    EXPECT_EQ(getPartNumberString_char(1), 'T');
    for (const short index : std::initializer_list<short>{3, 4, 32767, -1, -32768})
        EXPECT_EQ(getPartNumberString_char(index), 0) << index;
    EXPECT_EQ(getPartNumberString_char(0), 'o');
}

TEST_F(Services, SerialNumberNeedsFeatureReports) {
    TagOptions options{.volume = 1};
    options.serialNumber[0] = 0xA1;
    options.serialNumber[31] = 0xB2;
    connectReader(options);
    const unsigned char* const number = getESN();
    ASSERT_NE(number, nullptr);
    EXPECT_EQ(number[0], 0xA1);
    EXPECT_EQ(number[31], 0xB2);
    DevDat[0].iDevType = 1;
    EXPECT_EQ(getESN(), nullptr);
    DevDat[0].iDevType = 0;
}

TEST_F(Services, NameOfTheHidServiceIsFixed) {
    const char* name = nullptr;
    EXPECT_EQ(GetHIDGuid(&name), 1);
    EXPECT_STREQ(name, "linux");
    EXPECT_EQ(GetHIDGuid(nullptr), 1);
}
