// SPDX-License-Identifier: MIT
// Readers of several configurations: how they are found, selected among and reset.
#include "tests/family/tag/config_test.h"

#include <cstring>

using namespace zel::test;
using zel::sim::TagOptions;
using Block = zel::sim::TagReader::Block;

namespace {

class TagPlusProbe : public ConfigTest {
protected:
    static void expectState(unsigned state, int highest, int active) {
        EXPECT_EQ(record().iTagPlusState, state);
        EXPECT_EQ(record().iMaxConfig, highest);
        EXPECT_EQ(record().iActConfig, active);
    }
};

class TagPlusReader : public ConfigTest {};
class CardTypeList : public ConfigTest {};
class StoredSets : public ConfigTest {};

const std::string kQuery = "> 89 01 00 00 00 00 00 00  multi: query\n";
const std::string kNone = "< 00 00 00 00 00 00 00 00\n";

} // namespace

TEST_F(TagPlusProbe, FindsAReaderOfThreeConfigurations) {
    const auto reader = connectReader({.tagPlusConfigurations = 3});
    reader->activate(1);
    reader->configuration(1).cardType = 0x1204;
    reader->configuration(1).cardPriority = true;
    EXPECT_EQ(SendGetTagPlus(), 1);
    EXPECT_EQ(bus().takeTrace(), kQuery + "< 89 00 01 03 00 00 00 00\n"
                                          "> 84 00 00 00 00 00 00 00  card type\n"
                                          "< 00 04 12 01 00 00 00 00\n");
    expectState(2, 2, 1);
    EXPECT_EQ(config(1).iCardType, 0x1204);
    EXPECT_EQ(config(1).iCardPriority, 1);
}

TEST_F(TagPlusProbe, TakesThePriorityFromBit0Alone) {
    const auto reader = connectReader({.tagPlusConfigurations = 3});
    reader->replyWith({0x84}, {0xFF, 0x01, 0x02, 0xFE});
    SendGetTagPlus();
    EXPECT_EQ(config().iCardPriority, 0);
    EXPECT_EQ(config().iCardType, 0x0201);
}

TEST_F(TagPlusProbe, ThatCannotBeSentIsNotRepeated) {
    connectPlus({.tagPlusConfigurations = 3});
    failFor(1);
    EXPECT_EQ(SendGetTagPlus(), 0);
    expectState(1, 0, 0);
    EXPECT_EQ(GetLastLibErr(), 0);
    bus().takeTrace();
    record().iMaxConfig = 9;
    EXPECT_EQ(SendGetTagPlus(), 0);
    EXPECT_EQ(bus().takeTrace(), "");
    expectState(1, 0, 0);
}

TEST_F(TagPlusProbe, WithoutAReplyOrAnEchoFindsNothingYet) {
    const auto reader = connectPlus({.tagPlusConfigurations = 3});
    bus().failExchange(0, 2);
    EXPECT_EQ(SendGetTagPlus(), 0);
    expectState(0, 0, 0);
    reader->replyWith({0x89, 1}, {0x88, 0, 0, 3});
    record().iTagPlusState = 2;
    EXPECT_EQ(SendGetTagPlus(), 0);
    expectState(0, 0, 0);
    EXPECT_EQ(GetLastLibErr(), 0);
}

TEST_F(TagPlusProbe, OfNoOrTooManyConfigurationsFindsAPlainReader) {
    const auto reader = connectPlus({.tagPlusConfigurations = 3});
    for (const int count : {0, 12, 255}) {
        SCOPED_TRACE(count);
        reader->replyWith({0x89, 1}, {0x89, 0, 2, static_cast<std::uint8_t>(count)});
        record().iTagPlusState = 2;
        record().iActConfig = 2;
        bus().takeTrace();
        EXPECT_EQ(SendGetTagPlus(), 0);
        expectState(0, 0, 0);
        EXPECT_EQ(bus().takeTrace().find("card type"), std::string::npos);
    }
}

TEST_F(TagPlusProbe, OfElevenConfigurationsFindsThemAll) {
    connectPlus({.tagPlusConfigurations = 11});
    EXPECT_EQ(GetMaxConfig(), 10);
}

TEST_F(TagPlusProbe, CutsAnActiveConfigurationBeyondTheHighest) {
    const auto reader = connectReader({.tagPlusConfigurations = 3});
    reader->replyWith({0x89, 1}, {0x89, 0, 5, 3});
    EXPECT_EQ(SendGetTagPlus(), 1);
    expectState(2, 2, 2);
}

TEST_F(TagPlusProbe, WithoutACardTypeKeepsItsState) {
    connectReader({.tagPlusConfigurations = 3});
    for (const unsigned state : {0U, 2U})
        for (const int exchange : {3, 4}) {
            SCOPED_TRACE(::testing::Message() << "state " << state << " exchange " << exchange);
            record().iTagPlusState = state;
            record().lLastErr = 0;
            failFor(exchange);
            EXPECT_EQ(SendGetTagPlus(), 0);
            EXPECT_EQ(GetLastLibErr(), 0x20000);
            expectState(state, 2, 0);
            bus().failExchange(0, 1, 0);
        }
}

TEST_F(TagPlusReader, SelectsInTheLibraryAndInItself) {
    const auto reader = connectPlus({.tagPlusConfigurations = 3});
    EXPECT_EQ(zeltag_SendSelectActConfig(2), 1);
    EXPECT_EQ(bus().takeTrace(), "> 89 81 02 00 00 00 00 00  multi: select 2\n"
                                 "< 89 81 00 00 00 00 00 00\n");
    EXPECT_EQ(GetActConfig(), 2);
    EXPECT_EQ(reader->activeConfiguration(), 2U);
}

TEST_F(TagPlusReader, ThatFailsToSelectHasMovedInTheLibrary) {
    const auto reader = connectPlus({.tagPlusConfigurations = 3});
    for (const int exchange : {1, 2}) {
        SCOPED_TRACE(exchange);
        record().iActConfig = 0;
        failFor(exchange);
        EXPECT_EQ(zeltag_SendSelectActConfig(1), 0);
        EXPECT_EQ(GetActConfig(), 1);
        EXPECT_EQ(GetLastLibErr(), 0);
        bus().failExchange(0, 1, 0);
    }
    for (const Block& reply : {Block{0x89, 0x80}, Block{0x88, 0x81}}) {
        reader->replyWith({0x89, 0x81}, reply);
        EXPECT_EQ(zeltag_SendSelectActConfig(1), 0);
    }
}

TEST_F(TagPlusReader, MovesInTheLibraryAloneBySetActConfig) {
    const auto reader = connectPlus({.tagPlusConfigurations = 3});
    EXPECT_EQ(SetActConfig(2), 1);
    EXPECT_EQ(GetActConfig(), 2);
    EXPECT_EQ(SetActConfig(3), 0);
    EXPECT_EQ(GetActConfig(), 2);
    EXPECT_EQ(SetActConfig(0x101), 1) << "the low byte counts";
    EXPECT_EQ(GetActConfig(), 1);
    EXPECT_EQ(SetActConfig(-1), 0);
    EXPECT_EQ(bus().takeTrace(), "");
    EXPECT_EQ(reader->activeConfiguration(), 0U);
}

TEST_F(TagPlusReader, HoldsACardTypeForEachConfiguration) {
    connectPlus({.tagPlusConfigurations = 3});
    SetActConfig(1);
    EXPECT_EQ(SetCardTypePriority(0x1204, 7), 1);
    EXPECT_EQ(GetCardType(), 0x1204);
    EXPECT_EQ(GetCardPriority(), 1);
    SetActConfig(0);
    EXPECT_EQ(GetCardType(), 0);
    EXPECT_EQ(GetCardPriority(), 0);
    EXPECT_EQ(bus().takeTrace(), "");
}

TEST_F(TagPlusReader, TakesTheCardTypeAndNeedsAMoment) {
    const auto reader = connectPlus({.tagPlusConfigurations = 3});
    SetCardTypePriority(0x1204, 1);
    EXPECT_EQ(SendSetTagPlus(), 1);
    EXPECT_EQ(bus().takeTrace(), "> 84 00 00 00 00 00 00 00  card type\n"
                                 "> 00 04 12 01 00 00 00 00  card type data\n"
                                 "~ 10 ms\n");
    EXPECT_EQ(reader->configuration(0).cardType, 0x1204);
}

TEST_F(TagPlusReader, ThatDoesNotTakeTheCardTypeIsToldByTheErrorWordAndNoPause) {
    connectPlus({.tagPlusConfigurations = 3});
    const std::string command = "> 84 00 00 00 00 00 00 00  card type";
    failFor(1);
    EXPECT_EQ(SendSetTagPlus(), 0);
    EXPECT_EQ(GetLastLibErr(), 0x40000);
    EXPECT_EQ(bus().takeTrace(), refused(command));
    record().lLastErr = 0;
    failFor(2);
    EXPECT_EQ(SendSetTagPlus(), 0);
    EXPECT_EQ(GetLastLibErr(), 0x40000);
    EXPECT_EQ(bus().takeTrace(),
              command + "\n" + refused("> 00 00 00 00 00 00 00 00  card type data"));
}

TEST_F(TagPlusReader, WithOneConfigurationIsNoneUntilItIsFound) {
    connectReader();
    for (const unsigned state : {0U, 1U}) {
        SCOPED_TRACE(state);
        record().iTagPlusState = state;
        record().iMaxConfig = 2;
        record().iActConfig = 1;
        EXPECT_EQ(GetMaxConfig(), 0);
        EXPECT_EQ(GetActConfig(), 0);
        EXPECT_EQ(SetActConfig(0), 0);
        EXPECT_EQ(GetCardType(), -1);
        EXPECT_EQ(GetCardPriority(), -1);
        EXPECT_EQ(SetCardTypePriority(1, 1), 0);
        EXPECT_EQ(SendSetTagPlus(), 0);
        EXPECT_EQ(zeltag_SendSelectActConfig(0), 0);
        EXPECT_EQ(record().iActConfig, 1);
    }
    EXPECT_EQ(bus().takeTrace(), "");
}

TEST_F(CardTypeList, EndsAtTheFirstZeroInTheMiddleOfAReport) {
    const auto reader = connectPlus({.tagPlusConfigurations = 3});
    reader->replyWith({0x89, 4}, {0xF4, 0x12, 0, 0, 0x07, 0x34});
    std::memset(record().CardTypeList, 0xFF, sizeof record().CardTypeList);
    zeltag_GetCardTypeListFromDevice();
    EXPECT_EQ(bus().takeTrace(), "> 89 04 00 00 00 00 00 00  multi: card types page 0\n"
                                 "< F4 12 00 00 07 34 00 00\n");
    EXPECT_EQ(record().CardTypeList[0], 0x1204);
    EXPECT_EQ(record().CardTypeList[1], 0);
    EXPECT_EQ(record().CardTypeList[1024], 0);
}

TEST_F(CardTypeList, HoldsTheTypesOf256Pages) {
    const auto reader = connectPlus({.tagPlusConfigurations = 3});
    reader->replyWith({0x89, 4}, {1, 1, 2, 2, 3, 3, 4, 4});
    record().iTagPlusState = 2;
    zeltag_GetCardTypeListFromDevice();
    EXPECT_EQ(record().CardTypeList[1023], 0x0404);
    EXPECT_EQ(record().CardTypeList[1024], 0);
    EXPECT_TRUE(
        bus().takeTrace().ends_with("> 89 04 FF 00 00 00 00 00  multi: card types page 255\n"
                                    "< 01 01 02 02 03 03 04 04\n"));
}

TEST_F(CardTypeList, PassesOverAPageNotAskedForAndEndsAtOneNotReceived) {
    connectPlus({.tagPlusConfigurations = 3, .cardTypes = {1, 2, 3, 4, 5, 6, 7, 8, 9}});
    failFor(3);
    zeltag_GetCardTypeListFromDevice();
    EXPECT_EQ(record().CardTypeList[3], 4);
    EXPECT_EQ(record().CardTypeList[4], 9);
    EXPECT_EQ(record().CardTypeList[5], 0);
    bus().failExchange(0, 4);
    zeltag_GetCardTypeListFromDevice();
    EXPECT_EQ(record().CardTypeList[3], 4);
    EXPECT_EQ(record().CardTypeList[4], 0);
}

TEST_F(CardTypeList, DoesNotLookAtBits4To7) {
    EXPECT_EQ(IsCardTypeInList(0x00F0), 1) << "also with no device";
    EXPECT_EQ(IsCardTypeInList(0x1234), 0);
    connectReader();
    EXPECT_EQ(IsCardTypeInList(0x1234), 1) << "an empty list accepts every type";
    record().CardTypeList[0] = 7;
    record().CardTypeList[2] = 0x1204;
    EXPECT_EQ(IsCardTypeInList(0x1234), 1) << "a zero before it ends nothing";
    EXPECT_EQ(IsCardTypeInList(0x1235), 0);
    EXPECT_EQ(IsCardTypeInList(0x00F0), 1);
}

TEST_F(CardTypeList, IsLookedAtOneWordPastItsEnd) {
    connectReader();
    record().CardTypeList[0] = 7;
    record().CardTypeList[1024] = 0x0105;
    EXPECT_EQ(IsCardTypeInList(0x0105), 1);
    record().IPAddr[0] = 0x04;
    record().IPAddr[1] = 0x12;
    EXPECT_EQ(IsCardTypeInList(0x1204), 1);
    EXPECT_EQ(IsCardTypeInList(0x1205), 0);
}

TEST_F(StoredSets, AreCopiedInsideTheReader) {
    connectPlus({.tagPlusConfigurations = 3});
    const struct {
        int (*call)();
        const char* sent;
    } rows[] = {
        {ResetUserDflts, "> 89 82 02 01 00 FF 00 00  multi: move set 2 to 1\n"
                         "< 89 82 02 01 00 00 00 00\n~ 100 ms\n"},
        {SaveUserDflts, "> 89 82 01 02 00 FF 00 00  multi: move set 1 to 2\n"
                        "< 89 82 01 02 00 00 00 00\n~ 100 ms\n"},
        {zelTagPlusDefaults, "> 89 82 03 02 00 FF 00 00  multi: move set 3 to 2\n"
                             "< 89 82 03 02 00 00 00 00\n~ 100 ms\n"
                             "> 89 82 03 01 00 FF 00 00  multi: move set 3 to 1\n"
                             "< 89 82 03 01 00 00 00 00\n~ 100 ms\n"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.sent);
        EXPECT_EQ(row.call(), 1);
        EXPECT_EQ(bus().takeTrace(), row.sent);
    }
}

TEST_F(StoredSets, AreNumberedByThreeBits) {
    connectPlus({.tagPlusConfigurations = 3});
    EXPECT_EQ(PlusBlockMove(10, 0xF9), 1);
    EXPECT_EQ(bus().takeTrace().substr(0, 25), "> 89 82 02 01 00 FF 00 00");
}

TEST_F(StoredSets, AreMovedWhateverTheReplySays) {
    connectPlus({.tagPlusConfigurations = 3});
    EXPECT_EQ(PlusBlockMove(7, 7), 1);
    EXPECT_TRUE(bus().takeTrace().ends_with(kNone + "~ 100 ms\n"));
}

TEST_F(StoredSets, TellAReplyThatDoesNotComeButNotASendThatFails) {
    connectPlus({.tagPlusConfigurations = 3});
    failFor(1);
    EXPECT_EQ(SaveUserDflts(), 0);
    EXPECT_EQ(GetLastLibErr(), 0);
    bus().takeTrace();
    bus().failExchange(0, 2);
    EXPECT_EQ(SaveUserDflts(), 0);
    EXPECT_EQ(GetLastLibErr(), 0x1000000);
    EXPECT_EQ(bus().takeTrace(),
              "> 89 82 01 02 00 FF 00 00  multi: move set 1 to 2\n! no answer\n");
}

TEST_F(StoredSets, HaveTheResultOfTheSecondOfTwoMoves) {
    connectPlus({.tagPlusConfigurations = 3});
    forgiveHaste(); // a move whose answer is lost is followed by no pause
    bus().failExchange(0, 2);
    EXPECT_EQ(zelTagPlusDefaults(), 1);
    bus().failExchange(0, 4);
    EXPECT_EQ(zelTagPlusDefaults(), 0);
}

TEST_F(StoredSets, AreNoneOfAPlainReader) {
    connectReader();
    EXPECT_EQ(ResetUserDflts() | SaveUserDflts() | zelTagPlusDefaults(), 0);
    EXPECT_EQ(bus().takeTrace(), "");
}
