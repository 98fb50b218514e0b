// SPDX-License-Identifier: MIT
#include "base/runtime.h"

#include "tests/support/virtual_time.h"

#include <cerrno>
#include <gtest/gtest.h>

TEST(Clock, IsTheTimeOfDayInMilliseconds) {
    zel::test::setVirtualMicroseconds(1'700'000'123'456'789);
    EXPECT_EQ(GetTickCount(), 1'700'000'123'456U);
}

TEST(Clock, GoesBackWhenTheSystemsClockDoes) {
    zel::test::setVirtualMicroseconds(5'000'000);
    const auto before = GetTickCount();
    zel::test::setVirtualMicroseconds(3'999'999);
    EXPECT_EQ(GetTickCount() - before, static_cast<std::uint64_t>(-1001));
}

TEST(TextCompare, IgnoresCase) { EXPECT_EQ(_stricmp("HID#Vid_5A3e", "hid#vID_5a3E"), 0); }

TEST(TextCompare, GivesTheDifferenceOfTheFirstUnlikePair) {
    EXPECT_EQ(_stricmp("readEr", "readas"), 'e' - 'a');
    EXPECT_EQ(_stricmp("a", "C"), 'a' - 'c');
}

TEST(TextCompare, EndsWithTheShorterText) {
    EXPECT_EQ(_stricmp("", ""), 0);
    EXPECT_EQ(_stricmp("abc", "ab"), 'c');
    EXPECT_EQ(_stricmp("ab", "abc"), -'c');
}

TEST(TextCompare, ReadsBytesAsUnsigned) { EXPECT_GT(_stricmp("\xFF", "a"), 0); }

TEST(PrefixCompare, ComparesNothingForACountOfZero) { EXPECT_EQ(_strnicmp("a", "b", 0), 0); }

TEST(PrefixCompare, ComparesOnePairMoreThanItsCount) {
    EXPECT_EQ(_strnicmp("ABx", "aby", 1), 0);
    EXPECT_EQ(_strnicmp("ABx", "aby", 2), 'x' - 'y');
}

TEST(PrefixCompare, OfAPrefixHoldsOnlyWhereTheOtherTextEnds) {
    EXPECT_NE(_strnicmp("prefix and more", "prefix", 6), 0);
    EXPECT_EQ(_strnicmp("PREFIX", "prefix", 6), 0);
}

TEST(PrefixCompare, StopsAtTheEndOfATextBeforeItsCount) {
    EXPECT_EQ(_strnicmp("ab", "AB", 100), 0);
}

TEST(FileOpen, StoresTheStreamAndReturnsZero) {
    std::FILE* file = nullptr;
    ASSERT_EQ(fopen_s(&file, "/dev/null", "r"), 0);
    ASSERT_NE(file, nullptr);
    std::fclose(file);
}

TEST(FileOpen, ReturnsErrnoAndStoresNullForAMissingFile) {
    std::FILE* file = stdin;
    EXPECT_EQ(fopen_s(&file, "/no/such/file", "r"), ENOENT);
    EXPECT_EQ(file, nullptr);
}
