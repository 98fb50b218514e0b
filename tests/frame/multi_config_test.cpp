// SPDX-License-Identifier: MIT
// The exported calls on several configurations and on the list of card types.
#include "tests/family/tag/tag_record.h"

#include <algorithm>

using namespace zel::test;

namespace {

// A multi-configuration reader with configurations 0 to 2.
class ConfigIndex : public TagRecordTest {
protected:
    ConfigIndex() {
        device().iTagPlusState = 2;
        device().iMaxConfig = 2;
        device().iActConfig = 1;
        device().Cfg[0].iCardType = 0x1111;
        device().Cfg[1].iCardType = 0x7B05;
        device().Cfg[1].iCardPriority = 1;
    }
};

class CardTypeSetting : public ConfigIndex {};
class ListedCardType : public TagRecordTest {};

void expectNoMultiConfigReader() {
    const tsDevDat before = DevDat[0];
    EXPECT_EQ(GetMaxConfig(), 0);
    EXPECT_EQ(GetActConfig(), 0);
    EXPECT_EQ(SetActConfig(0), 0);
    EXPECT_EQ(GetCardType(), -1);
    EXPECT_EQ(GetCardPriority(), -1);
    EXPECT_EQ(SetCardTypePriority(5, 1), 0);
    EXPECT_TRUE(isSame(DevDat[0], before));
}

} // namespace

TEST_F(ConfigIndex, IsThatOfTheRecord) {
    EXPECT_EQ(GetMaxConfig(), 2);
    EXPECT_EQ(GetActConfig(), 1);
}

TEST_F(ConfigIndex, MovesInTheLibraryAlone) {
    for (const short config : std::initializer_list<short>{0, 2, 1}) {
        EXPECT_EQ(SetActConfig(config), 1);
        EXPECT_EQ(GetActConfig(), config);
    }
    EXPECT_EQ(bus().takeTrace(), "");
}

TEST_F(ConfigIndex, BeyondTheHighestIsRefused) {
    for (const short config : std::initializer_list<short>{3, 10, 255, -1, 0x103}) {
        EXPECT_EQ(SetActConfig(config), 0) << config;
        EXPECT_EQ(GetActConfig(), 1) << config;
    }
}

TEST_F(ConfigIndex, CountsItsLowByteOnly) {
    EXPECT_EQ(SetActConfig(0x102), 1);
    EXPECT_EQ(GetActConfig(), 2);
    EXPECT_EQ(SetActConfig(-256), 1);
    EXPECT_EQ(GetActConfig(), 0);
}

TEST_F(ConfigIndex, OfAReaderOfAnotherKindIsZero) {
    for (const std::uint32_t state : {0U, 1U, 3U}) {
        SCOPED_TRACE(state);
        device().iTagPlusState = state;
        expectNoMultiConfigReader();
    }
}

TEST_F(ConfigIndex, OfAnotherProductIsZeroWhateverTheUnsupportedValue) {
    SetUnsupportedProductErrorCode(-7);
    for (const std::uint32_t product : {0U, 2U, 4U}) {
        SCOPED_TRACE(product);
        device().iProduct = product;
        expectNoMultiConfigReader();
    }
}

TEST_F(ConfigIndex, OutsideTheTableIsZero) {
    SetUnsupportedProductErrorCode(-7);
    for (const std::int16_t active : std::initializer_list<std::int16_t>{1, -1, 127}) {
        SCOPED_TRACE(active);
        iActDev = active;
        expectNoMultiConfigReader();
    }
    iActDev = iDevsFnd = 0;
    expectNoMultiConfigReader();
}

TEST_F(CardTypeSetting, IsThatOfTheActiveConfiguration) {
    EXPECT_EQ(GetCardType(), 0x7B05);
    EXPECT_EQ(GetCardPriority(), 1);
    SetActConfig(0);
    EXPECT_EQ(GetCardType(), 0x1111);
    EXPECT_EQ(GetCardPriority(), 0);
}

TEST_F(CardTypeSetting, GoesToTheActiveConfiguration) {
    const tsTagCfg other = device().Cfg[0];
    EXPECT_EQ(SetCardTypePriority(0x1234, 256), 1);
    EXPECT_EQ(config().iCardType, other.iCardType);
    EXPECT_EQ(device().Cfg[1].iCardType, 0x1234);
    EXPECT_EQ(device().Cfg[1].iCardPriority, 1) << "any value but 0 is 1";
    EXPECT_EQ(SetCardTypePriority(0x00F0, 0), 1);
    EXPECT_EQ(device().Cfg[1].iCardType, 0x00F0) << "stored whole";
    EXPECT_EQ(device().Cfg[1].iCardPriority, 0);
    EXPECT_TRUE(isSame(device().Cfg[0], other));
    EXPECT_EQ(dirtyFlags(device().Cfg[1]), "");
}

TEST_F(ListedCardType, IsZeroAnywhere) {
    device().CardTypeList[0] = 0x0501;
    for (const std::uint16_t none : std::initializer_list<std::uint16_t>{0, 0xF0, 0x10, 0x80}) {
        EXPECT_EQ(IsCardTypeInList(none), 1) << none;
        device().iProduct = 2;
        EXPECT_EQ(IsCardTypeInList(none), 1) << none;
        iDevsFnd = 0;
        EXPECT_EQ(IsCardTypeInList(none), 1) << none;
        iDevsFnd = 1;
        device().iProduct = 1;
    }
}

TEST_F(ListedCardType, IsNothingElseWithoutAProximityReader) {
    SetUnsupportedProductErrorCode(-7);
    device().iProduct = 2;
    EXPECT_EQ(IsCardTypeInList(0x1234), 0);
    device().iProduct = 1;
    iDevsFnd = 0;
    EXPECT_EQ(IsCardTypeInList(0x1234), 0);
}

TEST_F(ListedCardType, IsAnyWhileTheListIsEmpty) {
    device().CardTypeList[1] = 0x0501;
    EXPECT_EQ(IsCardTypeInList(0x1234), 1);
    EXPECT_EQ(IsCardTypeInList(0xFFFF), 1);
}

TEST_F(ListedCardType, LeavesBitsFourToSevenOut) {
    device().CardTypeList[0] = 0x0501;
    EXPECT_EQ(IsCardTypeInList(0x1234), 0);
    device().CardTypeList[1] = 0x1204;
    EXPECT_EQ(IsCardTypeInList(0x1234), 1);
    EXPECT_EQ(IsCardTypeInList(0x12F4), 1);
    EXPECT_EQ(IsCardTypeInList(0x1205), 0);
    EXPECT_EQ(IsCardTypeInList(0x1304), 0);
}

TEST_F(ListedCardType, IsComparedWithWholeEntries) {
    device().CardTypeList[0] = 0x1234;
    EXPECT_EQ(IsCardTypeInList(0x1234), 0);
}

TEST_F(ListedCardType, IsFoundBehindAZero) {
    device().CardTypeList[0] = 0x0501;
    device().CardTypeList[2] = 0x1204;
    EXPECT_EQ(IsCardTypeInList(0x1204), 1);
    device().CardTypeList[2] = 0;
    device().CardTypeList[1024] = 0x1204;
    EXPECT_EQ(IsCardTypeInList(0x1204), 1);
}

TEST_F(ListedCardType, IsNotTiedToAMultiConfigurationReader) {
    device().CardTypeList[0] = 0x0501;
    for (const std::uint32_t state : {0U, 1U, 2U}) {
        device().iTagPlusState = state;
        EXPECT_EQ(IsCardTypeInList(0x0501), 1) << state;
        EXPECT_EQ(IsCardTypeInList(0x0502), 0) << state;
    }
}

TEST_F(ListedCardType, IsLookedForInTheWordBehindTheList) {
    std::fill(std::begin(device().CardTypeList), std::end(device().CardTypeList), 0x0501);
    device().IPAddr[0] = 0x04;
    device().IPAddr[1] = 0x12;
    device().IPAddr[2] = 0x07;
    EXPECT_EQ(IsCardTypeInList(0x1234), 1);
    EXPECT_EQ(IsCardTypeInList(0x0712), 0) << "and nothing further";
    device().IPAddr[1] = 0x13;
    EXPECT_EQ(IsCardTypeInList(0x1234), 0);
}
