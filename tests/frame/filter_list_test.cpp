// SPDX-License-Identifier: MIT
// The device filter list: its file, its fixed lines, what a line may be.
#include "frame/calls/filter_list.h"

#include "tests/support/library_test.h"
#include "tests/support/temporary_folder.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <dlfcn.h>
#include <fstream>
#include <random>

using namespace zel::test;

namespace {

constexpr char kAbsoluteFile[] = "/home/norvane/zelTagVidPid.txt";
constexpr char kRow[] = R"(VID="1234" PID="5678" VENDORNAME="1234:5678 x")";
constexpr char kStandIn[] = "stand-in.txt"; // opened in place of the absolute file

} // namespace

// Gives the absolute file a place in the working directory, whatever the machine has at its own.
extern "C" __attribute__((visibility("default"))) FILE* fopen(const char* name, const char* mode) {
    using Fopen = FILE* (*)(const char*, const char*);
    static const Fopen next = reinterpret_cast<Fopen>(dlsym(RTLD_NEXT, "fopen"));
    return next(std::strcmp(name, kAbsoluteFile) == 0 ? kStandIn : name, mode);
}

namespace {

class FilterFile : public LibraryTest {
protected:
    static void write(const std::string& text, const char* name = "zelTagVIDPID.txt") {
        std::ofstream(name, std::ios::binary) << text;
    }

    static void load(const std::string& text) {
        write(text);
        LoadzelTagVidPidListFile();
    }

    static std::size_t depth() { return std::filesystem::current_path().string().size() + 1; }

    // Goes down to a folder whose whole name has so many characters, or one less.
    static void enter(std::size_t length) {
        while (depth() < length) {
            const std::string name(std::min<std::size_t>(length - depth(), 200), 'd');
            std::filesystem::create_directory(name);
            std::filesystem::current_path(name);
        }
    }

    TemporaryFolder folder_;
};

class FilterLine : public LibraryTest {
protected:
    static void take(std::string line) { fillvidpidList(line.data()); }
    static const tsVidPidRow& row(int index) { return zelTagVidPid.rows[index]; }

    FilterLine() { listIndex = 0; }
};

class FixedList : public FilterFile {};
class KeyValue : public LibraryTest {
protected:
    // The value as text, `size` bytes at most, and the byte behind it.
    static std::string valueOf(std::string line, const char* key, int size = 8) {
        std::array<char, 64> out;
        out.fill('~');
        parseStrValue(line.data(), key, out.data(), size);
        EXPECT_EQ(out[static_cast<std::size_t>(size)], '~') << "past its size";
        return std::string(out.data(), strnlen(out.data(), static_cast<std::size_t>(size)));
    }
};

} // namespace

TEST_F(FixedList, HasEightRowsAndTheDefaultPair) {
    struct Row {
        int vendor, product;
        std::uint64_t filter;
        const char* name;
    };
    constexpr Row kRows[] = {
        {0x7C1F, 0x9D29, 0x4000, "7C1F:9D29 QX - gear"},
        {0x5A3E, 0x9D21, 0x2000, "5A3E:9D21 Norvanex Wiegand"},
        {0x5A3E, 0x9D22, 0x8000, "5A3E:9D22 Norvanex TagAdv"},
        {0x5A3E, 0x9D24, 0x8000, "5A3E:9D24 Norvanex BLE"},
        {0x6B2D, 0x9D25, 0x8000, "6B2D:9D25 Norvanex KQ7"},
        {0x5A3E, 0x9D26, 0x8000, "5A3E:9D26 Norvanex KVTR"},
        {0x5A3E, 0x9D27, 0x8000, "5A3E:9D27 Norvanex CCID"},
        {0x5A3E, 0x9D28, 0x8000, "5A3E:9D28 Ombrelle FIDO CCID"},
        {0, 0, 0, ""},
    };
    LoadzelTagVidPidListFile();
    EXPECT_EQ(zelTagVidPid.defaults[1].mask, 0x8000U);
    EXPECT_EQ(zelTagVidPid.defaults[1].compare, 0x8000U);
    EXPECT_EQ(listIndex, 8);
    int index = 0;
    for (const Row& expected : kRows) {
        const tsVidPidRow& row = zelTagVidPid.rows[index++];
        EXPECT_EQ(row.vendor, expected.vendor) << index;
        EXPECT_EQ(row.product, expected.product) << index;
        EXPECT_EQ(row.filter[1].mask, expected.filter) << index;
        EXPECT_EQ(row.filter[1].compare, expected.filter) << index;
        EXPECT_EQ(row.filter[0].mask | row.filter[0].compare, 0U) << index;
        EXPECT_STREQ(row.vendorName, expected.name);
    }
}

TEST_F(FixedList, LeavesPathAndVersionAlone) {
    std::strcpy(path, "before");
    std::strcpy(VidPidVersion, "before");
    LoadzelTagVidPidListFile();
    EXPECT_STREQ(path, "before");
    EXPECT_STREQ(VidPidVersion, "before");
}

TEST_F(FilterFile, OfTheWorkingDirectoryCounts) {
    write(R"(VID="AAAA" PID="1" VENDORNAME="absolute")", kStandIn);
    load(kRow);
    EXPECT_EQ(listIndex, 1);
    EXPECT_EQ(zelTagVidPid.rows[0].vendor, 0x1234);
    EXPECT_EQ(zelTagVidPid.rows[0].product, 0x5678);
    EXPECT_STREQ(zelTagVidPid.rows[0].vendorName, "1234:5678 x");
    EXPECT_EQ(zelTagVidPid.rows[1].vendor, 0);
}

TEST_F(FilterFile, SetsThePathToFolderAndNameRunTogether) {
    std::strcpy(VidPidVersion, "before");
    load("");
    EXPECT_EQ(std::string(path), folder_.path().string() + "zelTagVIDPID.txt");
    EXPECT_STREQ(VidPidVersion, "");
    EXPECT_EQ(listIndex, 0) << "an empty file is a list all the same";
}

TEST_F(FilterFile, AtTheAbsolutePathCountsWithoutOne) {
    std::strcpy(path, "before");
    std::strcpy(VidPidVersion, "before");
    write(R"(VID="AAAA" PID="1" VENDORNAME="absolute")", kStandIn);
    LoadzelTagVidPidListFile();
    EXPECT_EQ(zelTagVidPid.rows[0].vendor, 0xAAAA);
    EXPECT_EQ(listIndex, 1);
    EXPECT_STREQ(path, "before");
    EXPECT_STREQ(VidPidVersion, "");
}

TEST_F(FilterFile, OfADeepFolderCutsThePath) {
    enter(1015);
    load(kRow);
    const std::string whole = std::filesystem::current_path().string() + "zelTagVIDPID.txt";
    EXPECT_EQ(std::string(path, strnlen(path, sizeof path)), whole.substr(0, 1023));
    EXPECT_EQ(listIndex, 1);
}

TEST_F(FilterFile, OfAFolderLongerThanThePathLeavesTheNameInIt) {
    enter(1200);
    load(kRow);
    EXPECT_STREQ(path, "zelTagVIDPID.txt");
    EXPECT_EQ(listIndex, 1);
}

TEST_F(FilterFile, GivesFiftyOneRowsAtMost) {
    std::string text;
    for (int i = 1; i <= 60; ++i)
        text += "VID=\"" + std::to_string(i) + "\" PID=\"1\" VENDORNAME=\"n\"\n";
    load(text + "DEFAULT1MASK=\"77\"\n");
    EXPECT_EQ(listIndex, 51);
    EXPECT_EQ(zelTagVidPid.rows[0].vendor, 0x01);
    EXPECT_EQ(zelTagVidPid.rows[50].vendor, 0x51);
    EXPECT_EQ(zelTagVidPid.defaults[1].mask, 0U) << "a full list takes in nothing at all";
}

TEST_F(FilterFile, TakesWhatFollows256CharactersAsTheNextLine) {
    load(std::string(256, ' ') + kRow + "\n");
    EXPECT_EQ(listIndex, 1);
    listIndex = 0;
    load(std::string(250, ' ') + kRow + "\n");
    EXPECT_EQ(listIndex, 0) << "a key that is cut in two is none";
    load(kRow + std::string(300, ' ') + kRow + "\n" + kRow);
    EXPECT_EQ(listIndex, 3);
}

TEST_F(FilterFile, ReloadedStartsItsRowsAnew) {
    load(std::string(kRow) + "\n" + kRow);
    listIndex = 0;
    load(kRow);
    EXPECT_EQ(listIndex, 1);
    EXPECT_EQ(zelTagVidPid.rows[1].vendor, 0);
}

TEST_F(FilterFile, ReloadedWithoutTheIndexPutBackAppendsBehindEmptyRows) {
    load(kRow);
    load(kRow);
    EXPECT_EQ(listIndex, 2);
    EXPECT_EQ(zelTagVidPid.rows[0].vendor, 0);
    EXPECT_EQ(zelTagVidPid.rows[1].vendor, 0x1234);
}

TEST_F(FilterFile, ReloadedKeepsTheDefaultPair) {
    load(R"(DEFAULT1MASK="11" DEFAULT1COMPARE="22")");
    load(kRow);
    EXPECT_EQ(zelTagVidPid.defaults[1].mask, 0x11U);
    EXPECT_EQ(zelTagVidPid.defaults[1].compare, 0x22U);
    EXPECT_EQ(zelTagVidPid.defaults[0].mask | zelTagVidPid.defaults[0].compare, 0U);
}

TEST_F(FilterFile, OfTenMegabytesWithoutALineIsReadThrough) {
    std::string text(10'000'000, 'x');
    text.replace(256 * 30000, std::strlen(kRow), kRow);
    load(text);
    EXPECT_EQ(listIndex, 1);
}

TEST_F(FilterFile, OfRandomBytesNeverLeavesTheList) {
    constexpr const char* kPieces[] = {
        "VID=\"", "PID=\"", "\"", "VENDORNAME=\"", "FILTER1MASK=\"", "DEFAULT1COMPARE=\"", "9",
        "\n",     " ",      "-"};
    std::mt19937 random(20);
    std::string text;
    while (text.size() < 200'000)
        text += random() % 4 == 0 ? std::string(1, static_cast<char>(random()))
                                  : kPieces[random() % std::size(kPieces)];
    load(text);
    EXPECT_GE(listIndex, 0);
    EXPECT_LE(listIndex, 51);
    for (const tsVidPidRow& row : zelTagVidPid.rows)
        EXPECT_LE(strnlen(row.vendorName, sizeof row.vendorName), 45U) << &row - zelTagVidPid.rows;
}

TEST_F(FilterLine, TakesItsKeysInAnyOrderSeparatedByAnything) {
    take(R"(;FILTER1COMPARE="22"VENDORNAME="n",PID="2"xVID="1" FILTER1MASK="11"#)");
    EXPECT_EQ(listIndex, 1);
    EXPECT_EQ(row(0).vendor, 1);
    EXPECT_EQ(row(0).product, 2);
    EXPECT_EQ(row(0).filter[1].mask, 0x11U);
    EXPECT_EQ(row(0).filter[1].compare, 0x22U);
    EXPECT_STREQ(row(0).vendorName, "n");
}

TEST_F(FilterLine, IsNoRowWithoutVendorProductOrName) {
    take(R"(VID="1" PID="2")");
    take(R"(VID="1" PID="2" VENDORNAME="")");
    take(R"(VID="1" PID="0" VENDORNAME="n")");
    take(R"(VID="0" PID="2" VENDORNAME="n")");
    take(R"(PID="2" VENDORNAME="n")");
    take(R"(VID="1" PID="zz" VENDORNAME="n")");
    take(R"(VID=1 PID=2 VENDORNAME="n")");
    take("");
    EXPECT_EQ(listIndex, 0);
    EXPECT_EQ(row(0).vendor | row(0).product, 0);
    EXPECT_STREQ(row(0).vendorName, "");
}

TEST_F(FilterLine, StoresItsMaskBeforeItIsKnownToBeARow) {
    take(R"(FILTER1MASK="11" FILTER1COMPARE="22")");
    take(R"(VID="1" PID="2" VENDORNAME="n" FILTER1COMPARE="33")");
    EXPECT_EQ(row(0).filter[1].mask, 0x11U) << "of the line before";
    EXPECT_EQ(row(0).filter[1].compare, 0x33U);
}

TEST_F(FilterLine, WithoutTheDefaultKeysKeepsTheirValues) {
    take(R"(DEFAULT1MASK="11")");
    take(R"(DEFAULT1COMPARE="22")");
    take(R"(DEFAULT1MASK="" DEFAULT1COMPARE="zz")");
    EXPECT_EQ(zelTagVidPid.defaults[1].mask, 0x11U);
    EXPECT_EQ(zelTagVidPid.defaults[1].compare, 0x22U);
}

TEST_F(FilterLine, FindsAKeyInsideOtherText) {
    take(R"(XVID="1" SOMEPID="2" MYVENDORNAME="n")");
    EXPECT_EQ(listIndex, 1);
}

// The first place of a key counts, also where it is part of another text.
TEST_F(FilterLine, LooksAtTheFirstPlaceOfAKeyOnly) {
    take(R"(VID=1 VID="1" PID="2" VENDORNAME="n")");
    take(R"(VENDORNAME="PID=x" VID="1" PID="2")");
    EXPECT_EQ(listIndex, 0);
}

TEST_F(FilterLine, ReadsFourHexDigits) {
    take(R"(VID="0x1234" PID="ABCDEF" VENDORNAME="n" FILTER1MASK="123456789")");
    EXPECT_EQ(row(0).vendor, 0x12) << "0x counts among the four";
    EXPECT_EQ(row(0).product, 0xABCD);
    EXPECT_EQ(row(0).filter[1].mask, 0x1234U);
}

TEST_F(FilterLine, UsesFortyFiveCharactersOfAName) {
    const std::string longName(46, 'n');
    for (const std::size_t length : {44U, 45U, 46U})
        take("VID=\"1\" PID=\"2\" VENDORNAME=\"" + longName.substr(0, length) + "\"");
    EXPECT_EQ(std::string(row(0).vendorName), longName.substr(0, 44));
    EXPECT_EQ(std::string(row(1).vendorName), longName.substr(0, 45));
    EXPECT_EQ(std::string(row(2).vendorName), longName.substr(0, 45));
}

TEST_F(FilterLine, OfALongNumberIsReadWithinBounds) {
    take("VID=\"" + std::string(100, '1') + "\" PID=\"2\" VENDORNAME=\"n\"");
    EXPECT_EQ(row(0).vendor, 0x1111);
}

TEST_F(FilterLine, IsNotTakenByAFullListOrAnIndexOutside) {
    for (const int index : {51, 52, 1 << 30, -1, -(1 << 30)}) {
        listIndex = index;
        take(std::string(kRow) + R"( DEFAULT1MASK="11")");
        EXPECT_EQ(listIndex, index);
    }
    EXPECT_EQ(zelTagVidPid.defaults[1].mask, 0U);
}

TEST_F(FilterLine, FillsTheLastRow) {
    listIndex = 50;
    take(kRow);
    EXPECT_EQ(row(50).vendor, 0x1234);
    EXPECT_EQ(listIndex, 51);
}

TEST_F(KeyValue, IsWhatStandsBetweenTheQuotes) {
    EXPECT_EQ(valueOf(R"(KEY="abc")", "KEY="), "abc");
    EXPECT_EQ(valueOf(R"(x KEY=" b " KEY="c")", "KEY="), " b ");
    EXPECT_EQ(valueOf(R"(KEY="")", "KEY="), "");
}

TEST_F(KeyValue, IsEmptyWithoutKeyOrQuotes) {
    EXPECT_EQ(valueOf("", "KEY="), "");
    EXPECT_EQ(valueOf(R"(KEX="abc")", "KEY="), "");
    EXPECT_EQ(valueOf("KEY=", "KEY="), "");
    EXPECT_EQ(valueOf(R"(KEY= "abc")", "KEY="), "");
    EXPECT_EQ(valueOf(R"(KEY="abc)", "KEY="), "");
}

TEST_F(KeyValue, OfItsSizeAndMoreHasNoEnd) {
    EXPECT_EQ(valueOf(R"(KEY="abcdefgh")", "KEY="), "abcdefgh");
    EXPECT_EQ(valueOf(R"(KEY="abcdefghi")", "KEY="), "abcdefgh");
    EXPECT_EQ(valueOf(R"(KEY="abc")", "KEY=", 0), "");
}
