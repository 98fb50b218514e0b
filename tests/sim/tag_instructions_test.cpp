// SPDX-License-Identifier: MIT
// The instructions of the simulated reader, one by one, against their wire format.
#include "tests/sim/spoken_stream.h"

using namespace zel::sim;

namespace {
class StreamInstruction : public zel::test::SpokenStream {
protected:
    static std::string times(int count, const std::string& pair) {
        std::string text;
        for (int i = 0; i < count; ++i)
            text += ' ' + pair;
        return text;
    }
};

constexpr std::uint8_t kExtended = 0x40;
} // namespace

TEST_F(StreamInstruction, DeliversTheCardBehindFourBytes) {
    reader_->present(card26(26, 3512));
    EXPECT_EQ(say("FA 00 00 00 0C"), "00 00 1A 00 00 70 1B 34 02 00 00 00 00 90 00");
}

TEST_F(StreamInstruction, DeliversALongIdentifier) {
    Card card;
    card.bits = 200;
    card.id.fill(0x11);
    card.id[31] = 0x99;
    reader_->present(card);
    EXPECT_EQ(say("FA 00 00 00 24"), "00 00 C8 00 00" + times(31, "11") + " 99 90 00");
}

TEST_F(StreamInstruction, DeliversZerosAndAStatusWordWithoutACard) {
    EXPECT_EQ(say("FA 00 00 00 0C"), "00" + times(12, "00") + " 6A 82");
    EXPECT_EQ(say("FA 00 00 00 24"), "00" + times(36, "00") + " 6A 82");
}

TEST_F(StreamInstruction, ReadsAndWritesTheFourBlocks) {
    EXPECT_EQ(say("FA 81 03 00 08 01 02 03 04 05 06 07 08"), "81 90 00");
    EXPECT_EQ(say("FA 81 01 00 08 11 12 13 14 15 16 17 18"), "81 90 00");
    EXPECT_EQ(say("FA 01 03 00 08"), "01 01 02 03 04 05 06 07 08 90 00");
    EXPECT_EQ(say("FA 01 01 00 08"), "01 11 12 13 14 15 16 17 18 90 00");
    EXPECT_EQ(say("FA 01 04 00 08"), "6D 00");
    EXPECT_EQ(reader_->configuration(0).block[3], (TagBlock{1, 2, 3, 4, 5, 6, 7, 8}));
}

TEST_F(StreamInstruction, TellsLuidAndDeviceIdToTheProbeToo) {
    reader_->settings().luid = 0x1234;
    EXPECT_EQ(say("FA 04 00 00 04"), "04 34 12 42 01 90 00");
    EXPECT_EQ(say("FA 04 ED ED 04"), "04 34 12 42 01 90 00");
    EXPECT_EQ(say("FA 04 ED 00 04"), "6D 00");
}

TEST_F(StreamInstruction, TakesTheLuidLowByteFirst) {
    EXPECT_EQ(say("FA 06 00 00 02 78 56"), "06 90 00");
    EXPECT_EQ(reader_->settings().luid, 0x5678);
}

TEST_F(StreamInstruction, KeepsWhatIsCommitted) {
    say("FA 06 00 00 02 01 00");
    EXPECT_EQ(say("FA 02 80 00 00"), "90 00");
    say("FA 06 00 00 02 02 00");
    reader_->powerUp();
    EXPECT_EQ(reader_->settings().luid, 1);
}

TEST_F(StreamInstruction, ReturnsToFactoryDefaults) {
    say("FA 81 00 00 08 01 01 01 01 01 01 01 01");
    EXPECT_EQ(say("FA 03 00 00 00"), "90 00");
    EXPECT_EQ(say("FA 01 00 00 08"), "01 03 05 11 10 1A 00 28 01 90 00");
}

TEST_F(StreamInstruction, ComesNeverTooEarly) {
    say("FA 02 01 00 00");
    say("FA 01 00 00 08");
    EXPECT_EQ(reader_->violations(), 0);
}

TEST_F(StreamInstruction, ReadsAndWritesFieldsOfAPlainReader) {
    EXPECT_EQ(say("FA 0A 00 00 10 0C 01 02 03 04 05 06 07 08 09 0A 0B 0C 0D 0E 0F"), "0A 90 00");
    EXPECT_EQ(say("FA 09 00 00 08"), "09 0C 01 02 03 04 05 06 07 90 00");
    EXPECT_EQ(say("FA 09 00 00 11"), "09 0C 01 02 03 04 05 06 07 08 09 0A 0B 0C 0D 0E 0F 00 90 00");
    EXPECT_EQ(say("FA 8A 00 00 08"), "6D 00");
}

TEST_F(StreamInstruction, HasOthersForExtendedFields) {
    use({.features = kExtended, .fieldPages = 16});
    EXPECT_EQ(say("FA 0A 00 00 08"), "0A 24 00 00 10 00 00 00 00 90 00");
    EXPECT_EQ(say("FA 8A 00 00 08 24 01 02 03 04 05 06 07"), "8A 90 00");
    EXPECT_EQ(say("FA 0A 00 00 08"), "0A 24 01 02 03 04 05 06 07 90 00");
    EXPECT_EQ(say("FA 09 00 00 08"), "6D 00");
    EXPECT_EQ(reader_->configuration(0).page[0], (TagBlock{0x24, 1, 2, 3, 4, 5, 6, 7}));
}

TEST_F(StreamInstruction, TakesTheWholeOfALongField) {
    use({.features = kExtended, .fieldPages = 16});
    EXPECT_EQ(say("FA 8A 00 00 80" + times(127, "5A") + " A5"), "8A 90 00");
    EXPECT_EQ(reader_->configuration(0).page[15], (TagBlock{90, 90, 90, 90, 90, 90, 90, 165}));
    EXPECT_EQ(reader_->configuration(0).page[16], TagBlock{});
}

TEST_F(StreamInstruction, TakesTwoKeys) {
    use({.features = kExtended});
    say("FA 8A 00 01 10" + times(8, "11") + times(8, "12"));
    EXPECT_EQ(say("FA 8A 00 11 10" + times(8, "21") + times(8, "22")), "8A 90 00");
    const auto& key = reader_->configuration(0).key;
    EXPECT_EQ(key[0][0][7], 0x11);
    EXPECT_EQ(key[0][1][0], 0x12);
    EXPECT_EQ(key[1][0][0], 0x21);
    EXPECT_EQ(key[1][1][7], 0x22);
    EXPECT_EQ(say("FA 8A 00 02 10"), "6D 00");
}

TEST_F(StreamInstruction, OfATagPlusReaderMeansNothingToAPlainOne) {
    EXPECT_EQ(say("FA 09 01 00 00"), "6D 00");
    EXPECT_EQ(say("FA 09 04 00 00"), "6D 00");
    EXPECT_EQ(say("FA 81 04 00 08"), "6D 00");
    EXPECT_EQ(say("FA 09 82 03 01 00 FF"), "6D 00");
}

TEST_F(StreamInstruction, TellsTheStateOfATagPlusReader) {
    use({.tagPlusConfigurations = 4});
    EXPECT_EQ(say("FA 09 81 02 00"), "09 81 00 00 00 00 00 00 90 00");
    EXPECT_EQ(say("FA 81 04 00 08 00 04 12 01 00 00 00 00"), "81 90 00");
    EXPECT_EQ(say("FA 09 01 00 00"), "09 01 02 04 00 04 12 01 90 00");
    EXPECT_EQ(reader_->configuration(2).cardType, 0x1204);
    EXPECT_EQ(reader_->activeConfiguration(), 2U);
    EXPECT_EQ(say("FA 09 81 04 00"), "6D 00") << "there is no fifth configuration";
}

TEST_F(StreamInstruction, TellsAVersionByUnitAndSlot) {
    TagOptions options = {.tagPlusConfigurations = 1};
    options.versions[1][2] = 0x0A0B0C0D;
    use(options);
    EXPECT_EQ(say("FA 09 03 01 02"), "09 03 01 02 0A 0B 0C 0D 90 00");
    EXPECT_EQ(say("FA 09 03 01 03"), "09 03 01 03 00 00 00 00 90 00");
}

TEST_F(StreamInstruction, TellsCardTypesInThirteenBytes) {
    use({.tagPlusConfigurations = 1, .cardTypes = {0x1204, 0x3408, 0x5601, 0x7802, 0x9A03}});
    EXPECT_EQ(say("FA 09 04 00 00"), "09 04 00 04 12 08 34 01 56 02 78 90 00");
    EXPECT_EQ(say("FA 09 04 01 00"), "09 04 01 03 9A 00 00 00 00 00 00 90 00");
}

TEST_F(StreamInstruction, MovesAStoredSet) {
    use({.tagPlusConfigurations = 1});
    say("FA 81 00 00 08 01 01 01 01 01 01 01 01");
    EXPECT_EQ(say("FA 09 82 01 02 00 FF"), "09 82 01 02 00 00 90 00");
    EXPECT_EQ(reader_->userDefaults().configuration[0].block[0][0], 1);
    EXPECT_EQ(say("FA 09 82 01 03 00 FF"), "6D 00") << "the factory defaults stay";
}

TEST_F(StreamInstruction, TellsThePartNumberWithoutAStatusWord) {
    use({.partNumber = "ZT7"});
    EXPECT_EQ(say("FA 0C 01 02 00"), "0C 37 00 00 00 00 00 00 00");
    EXPECT_EQ(say("FA 0C 01 03 00"), "0C 00 00 00 00 00 00 00 00");
}

TEST_F(StreamInstruction, TellsTheQueuedIdentifierWithoutAStatusWord) {
    reader_->queue({.id = cardOf(0x0807060504030201, 64).id,
                    .age = 0x0102,
                    .byte2 = 3,
                    .word3 = 0x0405,
                    .byte7 = 6});
    EXPECT_EQ(say("FA 0C 02 00 03"), "0C 01 02 03 04 05 06 07 08");
    EXPECT_EQ(say("FA 0C 02 04 03"), "0C 02 01 03 05 04 00 00 06");
}

TEST_F(StreamInstruction, Beeps) {
    EXPECT_EQ(say("FA 0C 03 82 00"), "90 00");
    EXPECT_EQ(reader_->beeps(), 1);
    EXPECT_EQ(reader_->lastBeep(), 0x82);
}

TEST_F(StreamInstruction, SetsAndTellsTheVolume) {
    use({.volume = std::uint8_t{2}});
    EXPECT_EQ(say("FA 0C 06 00 00"), "0C 02");
    EXPECT_EQ(say("FA 0C 86 05 00"), "0C 90 00");
    EXPECT_EQ(say("FA 0C 06 00 00"), "0C 05");
}

TEST_F(StreamInstruction, RefusesAVolumeThatTheReaderDoesNotKnow) {
    EXPECT_EQ(say("FA 0C 06 00 00"), "6D 00");
    EXPECT_EQ(say("FA 0C 86 05 00"), "6D 00");
}

TEST_F(StreamInstruction, SetsAndTellsTheSpeedCode) {
    EXPECT_EQ(say("FA 0D 01 00 00"), "0D 00");
    EXPECT_EQ(say("FA 0D 81 04 00"), "0D 90 00");
    EXPECT_EQ(say("FA 0D 01 00 00"), "0D 04");
    EXPECT_EQ(say("FA 0D 02 00 00"), "6D 00");
}
