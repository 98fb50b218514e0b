// SPDX-License-Identifier: MIT
// Several configurations, card types and stored sets by frames.
#include "family/tag/card_types.h"
#include "family/tag/multi_config.h"
#include "frame/zelTagAPI.h"
#include "tests/family/tag/stream_test.h"

#include <algorithm>
#include <iterator>

using namespace zel::test;

namespace {

const std::string kAsk = "09 01 00 00";

class ScriptedMulti : public StreamTest {
protected:
    ScriptedMulti() {
        record().iMaxConfig = 7;
        record().iActConfig = 4;
    }

    void beMulti() { record().iTagPlusState = 2; }

    std::shared_ptr<Script> script_ = connectScript();
};
class StreamMultiState : public ScriptedMulti {};
class StreamCardTypeWrite : public ScriptedMulti {};
class StreamSelection : public ScriptedMulti {};
class StreamBlockMove : public ScriptedMulti {};
class StreamCardTypes : public ScriptedMulti {
protected:
    StreamCardTypes() { beMulti(); }

    static std::string page(const std::string& number, const std::string& answer) {
        return "> FA\n~ 50 ms\n> 09 04 " + number + " 00\n~ 10 ms\n< " + answer + "\n";
    }
};

} // namespace

TEST_F(StreamMultiState, IsToldInOneReplyOfSevenBytes) {
    script_->answer("09 01 05 03 00 04 12 03 90 00");
    EXPECT_EQ(SendGetTagPlus(), 1);
    EXPECT_EQ(told(), reading(kAsk, "09 01 05 03 00 04 12 03 90 00"));
    EXPECT_EQ(record().iTagPlusState, 2U);
    EXPECT_EQ(record().iMaxConfig, 2);
    EXPECT_EQ(record().iActConfig, 2) << "5 of 3";
    EXPECT_EQ(config(2).iCardType, 0x1204U);
    EXPECT_EQ(config(2).iCardPriority, 1U);
}

TEST_F(StreamMultiState, IsAskedForTwiceWithoutAPause) {
    script_->answer("09 01 05 03 00 04 12 03 6F 00");
    script_->answer("09 01 00 01 00 04 12 02 90 00");
    EXPECT_EQ(SendGetTagPlus(), 1);
    EXPECT_EQ(told(), reading(kAsk, "09 01 05 03 00 04 12 03 6F 00") +
                          reading(kAsk, "09 01 00 01 00 04 12 02 90 00"));
    EXPECT_EQ(record().iMaxConfig, 0);
    EXPECT_EQ(config(0).iCardPriority, 0U);
}

TEST_F(StreamMultiState, IsSingleWhereTwoTriesFail) {
    beMulti();
    script_->answer("6D 00");
    script_->answer("6D 00");
    EXPECT_EQ(SendGetTagPlus(), 0);
    EXPECT_EQ(told(), reading(kAsk, "6D 00") + reading(kAsk, "6D 00"));
    EXPECT_EQ(record().iTagPlusState, 1U);
    EXPECT_EQ(record().iMaxConfig, 0);
    EXPECT_EQ(GetLastLibErr(), 0);
}

TEST_F(StreamMultiState, IsSingleWhereTheReplyIsNotOfItsForm) {
    for (const char* const answer :
         {"09 02 00 03 00 04 12 01 90 00", "09 01 0B 03 00 04 12 01 90 00",
          "09 01 00 03 01 04 12 01 90 00", "09 00 00 00 00 00 00 00 90 00"}) {
        record().iTagPlusState = 0;
        script_->answer(answer);
        EXPECT_EQ(SendGetTagPlus(), 0) << answer;
        EXPECT_EQ(told(), reading(kAsk, answer)) << "one try";
        EXPECT_EQ(record().iTagPlusState, 1U) << answer;
        EXPECT_EQ(config(0).iCardType, 0U);
    }
}

TEST_F(StreamMultiState, StaysAsItIsWhereTheNumberOfConfigurationsIsOutside1To11) {
    for (const char* const answer :
         {"09 01 03 00 00 04 12 01 90 00", "09 01 03 0C 00 04 12 01 90 00",
          "09 01 03 FF 00 04 12 01 90 00"})
        for (const unsigned state : {0U, 2U}) {
            record().iTagPlusState = state;
            script_->answer(answer);
            EXPECT_EQ(SendGetTagPlus(), 1) << answer;
            EXPECT_EQ(record().iTagPlusState, state);
            EXPECT_EQ(record().iMaxConfig, 0);
            EXPECT_EQ(record().iActConfig, 4);
            EXPECT_EQ(config(3).iCardType + config(4).iCardType, 0U);
        }
}

TEST_F(StreamMultiState, HasElevenConfigurationsAtMost) {
    script_->answer("09 01 0A 0B 00 04 12 01 90 00");
    EXPECT_EQ(SendGetTagPlus(), 1);
    EXPECT_EQ(record().iMaxConfig, 10);
    EXPECT_EQ(record().iActConfig, 10);
}

TEST_F(StreamMultiState, OfASingleReaderIsNotAskedForAgain) {
    record().iTagPlusState = 1;
    EXPECT_EQ(SendGetTagPlus(), 0);
    EXPECT_EQ(told(), "");
    EXPECT_EQ(record().iMaxConfig, 0);
}

TEST_F(StreamCardTypeWrite, GoesOutWhateverIsKnownOfTheReader) {
    config(4).iCardType = 0x1204;
    config(4).iCardPriority = 7;
    for (const unsigned state : {0U, 1U, 2U}) {
        SCOPED_TRACE(state);
        record().iTagPlusState = state;
        script_->answer("81");
        script_->answer("90 00");
        EXPECT_EQ(SendSetTagPlus(), 1);
        EXPECT_EQ(told(), writing("81 04 00 08", "00 04 12 01 00 00 00 00"));
    }
}

TEST_F(StreamCardTypeWrite, IsTriedTwiceWithoutAPause) {
    script_->answer("6D 00");
    script_->answer("81");
    script_->answer("6F 00");
    EXPECT_EQ(SendSetTagPlus(), 0);
    EXPECT_EQ(told(), reading("81 04 00 08", "6D 00") + reading("81 04 00 08", "81") +
                          "> 00 00 00 00 00 00 00 00\n~ 5 ms\n< 6F 00\n");
    EXPECT_EQ(GetLastLibErr(), 0);
}

TEST_F(StreamSelection, IsKeptBeforeItIsSentAndTriedTwice) {
    beMulti();
    script_->answer("6D 00");
    script_->answer("6D 00");
    EXPECT_EQ(zeltag_SendSelectActConfig(3), 0);
    EXPECT_EQ(told(), reading("09 81 03 00", "6D 00") + reading("09 81 03 00", "6D 00"));
    EXPECT_EQ(record().iActConfig, 3);
    script_->answer("6D 00");
    script_->answer("09 00 00 00 00 00 00 00 90 00");
    EXPECT_EQ(zeltag_SendSelectActConfig(1), 1) << "whatever the reply says";
    EXPECT_EQ(record().iActConfig, 1);
}

TEST_F(StreamSelection, IsOfAMultiConfigurationReader) {
    EXPECT_EQ(zeltag_SendSelectActConfig(3), 0);
    EXPECT_EQ(told(), "");
    EXPECT_EQ(record().iActConfig, 4);
}

TEST_F(StreamBlockMove, HasSixHeaderBytesAndAPauseBehindIt) {
    beMulti();
    script_->answer("09 82 01 02 00 00 90 00");
    EXPECT_EQ(SaveUserDflts(), 1);
    EXPECT_EQ(told(), reading("09 82 01 02 00 FF", "09 82 01 02 00 00 90 00") + "~ 100 ms\n");
    script_->answer("6D 00");
    script_->answer("09 82 02 01 00 00 90 00");
    EXPECT_EQ(ResetUserDflts(), 1);
    EXPECT_EQ(told(), reading("09 82 02 01 00 FF", "6D 00") +
                          reading("09 82 02 01 00 FF", "09 82 02 01 00 00 90 00") + "~ 100 ms\n");
}

TEST_F(StreamBlockMove, ThatIsRefusedTwiceFailsWithoutAPauseOrAWord) {
    beMulti();
    script_->answer("6D 00");
    script_->answer("6D 00");
    EXPECT_EQ(PlusBlockMove(9, 15), 0);
    EXPECT_EQ(told(), reading("09 82 01 07 00 FF", "6D 00") + reading("09 82 01 07 00 FF", "6D 00"))
        << "three bits each";
    EXPECT_EQ(GetLastLibErr(), 0);
}

TEST_F(StreamBlockMove, IsOfAMultiConfigurationReader) {
    EXPECT_EQ(SaveUserDflts(), 0);
    EXPECT_EQ(told(), "");
}

TEST_F(StreamCardTypes, IsReadInPagesOfThirteenBytes) {
    script_->answer("09 04 00 F1 12 02 02 03 03 04 04 90 00");
    script_->answer("09 04 01 05 05 00 00 06 06 07 07 90 00");
    zeltag_GetCardTypeListFromDevice();
    EXPECT_EQ(told(), page("00", "09 04 00 F1 12 02 02 03 03 04 04 90 00") + "~ 2 ms\n" +
                          page("01", "09 04 01 05 05 00 00 06 06 07 07 90 00") + "~ 2 ms\n");
    const std::uint16_t expected[] = {0x1201, 0x0202, 0x0303, 0x0404, 0x0505, 0};
    EXPECT_TRUE(std::equal(std::begin(expected), std::end(expected), record().CardTypeList));
    EXPECT_EQ(IsCardTypeInList(0x12F1), 1);
    EXPECT_EQ(IsCardTypeInList(0x0606), 0);
}

TEST_F(StreamCardTypes, EndsAtTheFirstPageThatFails) {
    script_->answer("09 04 00 01 01 02 02 03 03 04 04 90 00");
    script_->answer("09 04 01 05 05 06 06 07 07 08 08 6A 86");
    record().CardTypeList[9] = 0xEEEE;
    zeltag_GetCardTypeListFromDevice();
    EXPECT_EQ(told(), page("00", "09 04 00 01 01 02 02 03 03 04 04 90 00") + "~ 2 ms\n" +
                          page("01", "09 04 01 05 05 06 06 07 07 08 08 6A 86") + "~ 10 ms\n");
    EXPECT_EQ(record().CardTypeList[3], 0x0404);
    EXPECT_EQ(record().CardTypeList[4], 0);
    EXPECT_EQ(record().CardTypeList[9], 0) << "cleared before";
}

TEST_F(StreamCardTypes, HasAllPagesOfAReaderThatKnowsManyTypes) {
    for (int page = 0; page < 260; ++page)
        script_->answer("09 04 00 01 01 01 01 01 01 01 01 90 00");
    zeltag_GetCardTypeListFromDevice();
    EXPECT_EQ(record().CardTypeList[1023], 0x0101);
    EXPECT_EQ(record().CardTypeList[1024], 0) << "256 pages of four";
    EXPECT_NE(told().find("> 09 04 FF 00\n"), std::string::npos);
}
