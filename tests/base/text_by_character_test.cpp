// SPDX-License-Identifier: MIT
#include "base/text_by_character.h"

#include <cstring>
#include <gtest/gtest.h>
#include <initializer_list>
#include <limits>
#include <string>

using zel::TextIn;
using zel::TextOut;

namespace {

constexpr int kLeast = std::numeric_limits<int>::min();
constexpr int kMost = std::numeric_limits<int>::max();

// Hands a text over from index 0 on.
void put(TextIn& text, const std::string& characters) {
    int index = 0;
    for (const char character : characters)
        EXPECT_EQ(text.put(index++, character, [](const char*) { return -1; }), 1);
}

// What an operation gets to see; its result is 42.
std::string finish(TextIn& text) {
    std::string seen;
    const int result = text.put(255, 'x', [&](const char* whole) {
        seen = whole;
        return 42;
    });
    EXPECT_EQ(result, 42);
    return seen;
}

// The characters from `index` on, up to and without the zero behind them.
template <std::size_t Size, class Refill>
std::string take(TextOut<Size>& text, int index, Refill refill) {
    std::string taken;
    while (const int character = text.at(index++, refill))
        taken += static_cast<char>(character);
    return taken;
}

template <std::size_t Size> void refillAbc(char (&text)[Size]) { std::strcpy(text, "abc"); }

} // namespace

TEST(TextIn, RunsTheOperationOnTheTextAtIndex255) {
    TextIn text;
    put(text, "/dev/x");
    EXPECT_EQ(finish(text), "/dev/x");
}

TEST(TextIn, EndingStoresNothingAndKeepsTheText) {
    TextIn text;
    put(text, "ab");
    finish(text);
    EXPECT_EQ(finish(text), "ab");
}

TEST(TextIn, IndexZeroStartsTheTextAnew) {
    TextIn text;
    put(text, "a longer text");
    put(text, "b");
    EXPECT_EQ(finish(text), "b");
}

TEST(TextIn, IndexZeroClearsTheWholeBuffer) {
    TextIn text;
    put(text, std::string(255, 'a'));
    put(text, "b");
    EXPECT_EQ(text.put(254, 'c', [](const char*) { return -1; }), 1);
    text.put(255, 0, [](const char* whole) {
        EXPECT_EQ(std::string(whole, 257),
                  "b" + std::string(253, '\0') + "c" + std::string(2, '\0'));
        return 0;
    });
}

TEST(TextIn, HoldsUpTo255Characters) {
    TextIn text;
    put(text, std::string(255, 'a'));
    EXPECT_EQ(finish(text), std::string(255, 'a'));
}

TEST(TextIn, AnIndexOutsideStoresNothing) {
    TextIn text;
    put(text, std::string(255, 'a'));
    for (const int index : {256, 257, 32767, kMost, -1, -32768, kLeast})
        EXPECT_EQ(text.put(index, 'b', [](const char*) { return -1; }), 0) << index;
    EXPECT_EQ(finish(text), std::string(255, 'a'));
}

TEST(TextIn, KeepsTheLowByteOfACharacter) {
    TextIn text;
    EXPECT_EQ(text.put(0, 0x1E9, [](const char*) { return -1; }), 1);
    EXPECT_EQ(finish(text), "\xE9");
}

TEST(TextIn, RunsTheOperationOfTheLastCallAlone) {
    TextIn text;
    const auto one = [](const char*) { return 1001; };
    const auto other = [](const char*) { return 1002; };
    EXPECT_EQ(text.put(0, 'a', one), 1);
    EXPECT_EQ(text.put(255, 0, other), 1002);
}

TEST(TextOut, YieldsCharactersUpToTheEnd) {
    TextOut<8> text;
    EXPECT_EQ(take(text, 0, refillAbc<8>), "abc");
    for (const int index : {3, 4, 7, 8, 9, kMost, -1, kLeast})
        EXPECT_EQ(text.at(index, refillAbc<8>), 0) << index;
}

TEST(TextOut, TakesACopyAtIndexZeroAlone) {
    TextOut<8> text;
    const auto refillXyz = [](char(&copy)[8]) { std::strcpy(copy, "xyz"); };
    EXPECT_EQ(text.at(1, refillAbc<8>), 0) << "nothing was taken yet";
    EXPECT_EQ(text.at(0, refillAbc<8>), 'a');
    EXPECT_EQ(take(text, 1, refillXyz), "bc");
    EXPECT_EQ(take(text, 0, refillXyz), "xyz");
}

TEST(TextOut, YieldsNothingOfWhatStandsBehindTheEnd) {
    TextOut<8> text;
    const auto refill = [](char(&copy)[8]) { std::memcpy(copy, "a\0secret", 8); };
    EXPECT_EQ(text.at(0, refill), 'a');
    for (const int index : {1, 2, 3, 7})
        EXPECT_EQ(text.at(index, refill), 0) << index;
}

TEST(TextOut, ForgetsALongerTextBeforeIt) {
    TextOut<8> text;
    EXPECT_EQ(take(text, 0, [](char(&copy)[8]) { std::strcpy(copy, "1234567"); }), "1234567");
    EXPECT_EQ(take(text, 0, [](char(&copy)[8]) { copy[0] = 'z'; }), "z");
    EXPECT_EQ(text.at(1, refillAbc<8>), 0);
}

TEST(TextOut, YieldsCharactersAbove127AsThemselves) {
    TextOut<8> text;
    EXPECT_EQ(text.at(0, [](char(&copy)[8]) { std::strcpy(copy, "\xE9"); }), 0xE9);
}
