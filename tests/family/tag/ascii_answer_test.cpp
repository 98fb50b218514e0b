// SPDX-License-Identifier: MIT
// Values in a listing of the ASCII protocol.
#include "family/tag/ascii_protocol.h"

#include <gtest/gtest.h>
#include <string>

TEST(ListingValue, IsANumberAFlagOrACharacter) {
    const struct {
        const char* value;
        int number;
    } rows[] = {{"500", 500},
                {" 17", 17},
                {"-3", -3},
                {"0x1F", 31},
                {"12 of 0x40", 18}, // the text holds "0x": all of it is hexadecimal
                {"1F", 1},
                {"True", 1},
                {"False", 0},
                {"true", 0},
                {"", 0},
                {"none", 0},
                {"'-'", '-'},
                {"'A'", 'A'},
                {"'='", '='},
                {"'''", '\''},
                {"' '", ' '},
                {"'", 0},
                {"'\xE9'", 0xE9},
                {"'\\x0D'", 13},
                {"'\\x00'", 0},
                {"'\\xfF'", 255},
                {"'\\x161'", 0x161},
                {"'\\n'", 0},
                {"'\\", 0},
                {"'\\x", 0},
                {"'\\xZZ'", 0}};
    for (const auto& row : rows) {
        const std::string listing = "ZTAG:a=9\rZTAG:key=" + std::string(row.value) + "\rZTAG:b=8\r";
        EXPECT_EQ(AcpGetValue(listing.c_str(), ":key"), row.number) << row.value;
    }
}

TEST(ListingValue, Is0ForAMissingKeyOrALineWithoutAnEnd) {
    EXPECT_EQ(AcpGetValue("ZTAG:a=9\r", ":b"), 0);
    EXPECT_EQ(AcpGetValue("ZTAG:a=9", ":a"), 0);
    EXPECT_EQ(AcpGetValue("ZTAG:a\rZTAG:b=9\r", ":a"), 0) << "the next line's value isn't its own";
    EXPECT_EQ(AcpGetValue("", ":a"), 0);
    EXPECT_EQ(AcpGetValue(nullptr, ":a"), 0);
    EXPECT_EQ(AcpGetValue("ZTAG:a=9\r", nullptr), 0);
}

TEST(ListingValue, IsThatOfTheFirstPlaceWhereTheKeyOccurs) {
    const char* const sorted = "ZTAG:wieg.qual=1\rZTAG:wieg.qual.bits=26\r";
    EXPECT_EQ(AcpGetValue(sorted, ":wieg.qual"), 1);
    EXPECT_EQ(AcpGetValue(sorted, ":wieg.qual.bits"), 26);
    const char* const reversed = "ZTAG:wieg.qual.bits=26\rZTAG:wieg.qual=1\r";
    EXPECT_EQ(AcpGetValue(reversed, ":wieg.qual"), 26) << "a longer key begins alike";
    EXPECT_EQ(AcpGetValue("ZTAG:a=1\rZTAG:a=2\r", ":a"), 1);
}

TEST(ListingValue, EndsBehind80CharactersOfItsLine) {
    const auto listing = [](std::size_t width, const std::string& value) {
        return "ZTAG:key=" + std::string(width, ' ') + value + "\r";
    };
    EXPECT_EQ(AcpGetValue(listing(73, "12").c_str(), ":key"), 12);
    EXPECT_EQ(AcpGetValue(listing(74, "12").c_str(), ":key"), 1);
    EXPECT_EQ(AcpGetValue(listing(75, "12").c_str(), ":key"), 0);
    EXPECT_EQ(AcpGetValue(listing(5000, "12").c_str(), ":key"), 0);
}
