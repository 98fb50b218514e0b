// SPDX-License-Identifier: MIT
// How a setting is found by its name, and what is offered when it isn't.
#include "cli/config/word_search.h"

#include <algorithm>
#include <gtest/gtest.h>

namespace zel::cli {

namespace {

// "RECORD.NAME", or the message and the hint.
std::string found(std::string_view name) {
    const auto result = findWord(name);
    if (const auto* const failure = std::get_if<Failure>(&result))
        return asLine(*failure);
    return fullName(*std::get<const Word*>(result));
}

TEST(WordSearch, FindsANameWithoutRegardToCase) {
    EXPECT_EQ(found("iIDHoldTO"), "TimeParms.iIDHoldTO");
    EXPECT_EQ(found("IIDHOLDTO"), "TimeParms.iIDHoldTO");
    EXPECT_EQ(found("ledctrl.bvolatile"), "LEDCtrl.bVolatile");
}

TEST(WordSearch, NameOfSeveralRecordsNeedsItsRecord) {
    EXPECT_EQ(found("bVolatile"), "several records have a word bVolatile; "
                                  "write LEDCtrl.bVolatile or BprRlyCtrl.bVolatile");
}

TEST(WordSearch, PadOfSeveralRecordsIsPadding) {
    EXPECT_EQ(found("ipad7"),
              "iPad7 is padding and can't be set; `zeltag config show` lists the settings");
}

TEST(WordSearch, WrongNameGetsTheNearestThreeAtMost) {
    EXPECT_EQ(found("iIDHoldT"), "there is no setting iIDHoldT; did you mean iIDHoldTO?");
    EXPECT_EQ(found("iLeadChr3"), "there is no setting iLeadChr3; "
                                  "did you mean iLeadChr0, iLeadChr1 or iLeadChr2?");
}

TEST(WordSearch, NameLikeNoOtherGetsNone) {
    EXPECT_EQ(found("qwertzuiopqwertzuiop"),
              "there is no setting qwertzuiopqwertzuiop; `zeltag config show` lists them");
}

TEST(WordSearch, DistanceCountsLettersAddedLeftOutAndReplaced) {
    EXPECT_EQ(distance("", ""), 0U);
    EXPECT_EQ(distance("abc", ""), 3U);
    EXPECT_EQ(distance("beep", "BEEP"), 0U);
    EXPECT_EQ(distance("kitten", "sitting"), 3U);
}

// A name of the rows that changes would leave its special case behind.
TEST(Words, NamedOnesStandInTheTable) {
    const auto count = [](bool (*is)(const Word&)) {
        return std::count_if(allWords().begin(), allWords().end(), is);
    };
    EXPECT_EQ(count(isReadOnly), 3);
    EXPECT_EQ(count(isVolatileMark), 2);
    EXPECT_EQ(count(isTime), 5);
    EXPECT_EQ(count([](const Word& word) {
                  std::size_t record = 0;
                  return travelsWith(word, record);
              }),
              1);
    EXPECT_EQ(allWords().size(), recordCount() * Values().size());
}

} // namespace

} // namespace zel::cli
