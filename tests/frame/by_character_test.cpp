// SPDX-License-Identifier: MIT
// The calls that hand a text over by characters: their buffers and their indexes.
#include "family/band/band.h"
#include "family/tag/tag.h"
#include "tests/support/library_test.h"
#include "tests/support/temporary_folder.h"

#include <cstring>
#include <initializer_list>

using namespace zel::test;

namespace {

using Put = int (*)(short, short);
using Take = int (*)(short);

constexpr Put kTextsIn[] = {chkAddArrival_char, chkDelRemoval_char, writeDevCfgToFile_char,
                            readDevCfgFmFile_char};
constexpr Take kNames[] = {getDevName_char, zeltag_getDevName_char, zelband_getDevName_char};

class ByCharacter : public LibraryTest {
protected:
    ByCharacter() { SetUnsupportedProductErrorCode(-7); }
    ~ByCharacter() override {
        iDevsFnd = 0;
        for (const Put put : kTextsIn)
            put(0, 0);
    }

    static void activate(const char* name) {
        iDevsFnd = 1;
        DevDat[0].iProduct = ZELTAGAPI_ZELTAG;
        std::strcpy(DevDat[0].szDevName, name);
    }

    static std::string take(Take at, short index = 0) {
        std::string text;
        while (const int character = at(index++))
            text += static_cast<char>(character);
        return text;
    }
};

} // namespace

TEST_F(ByCharacter, TextsInTakeIndexes0To254) {
    for (const Put put : kTextsIn)
        for (short index = 0; index < 255; ++index)
            EXPECT_EQ(put(index, 'A'), 1) << index;
}

TEST_F(ByCharacter, TextsInRefuseOtherIndexes) {
    for (const Put put : kTextsIn)
        for (const short index : std::initializer_list<short>{256, 257, 32767, -1, -32768})
            EXPECT_EQ(put(index, 'A'), 0) << index;
}

TEST_F(ByCharacter, TextsInEndAt255WithTheResultOfTheirOperation) {
    for (const Put put : kTextsIn)
        EXPECT_EQ(put(255, 0), put == chkDelRemoval_char ? 0 : -7);
}

// The two are crossed.
TEST_F(ByCharacter, TemplateIsReadByTheWriteCallAndWrittenByTheReadCall) {
    const TemporaryFolder folder;
    connectReader();
    for (const Put put : {writeDevCfgToFile_char, readDevCfgFmFile_char})
        for (short index = 0; index < 4; ++index)
            EXPECT_EQ(put(index, "file"[index]), 1);
    EXPECT_EQ(writeDevCfgToFile_char(255, 0), 0) << "there is nothing to read";
    EXPECT_FALSE(std::filesystem::exists("file"));
    EXPECT_EQ(readDevCfgFmFile_char(255, 0), 1);
    EXPECT_TRUE(std::filesystem::exists("file"));
    bus().takeTrace();
    EXPECT_EQ(writeDevCfgToFile_char(255, 0), 1);
    EXPECT_NE(bus().takeTrace().find("  commit\n"), std::string::npos);
}

TEST_F(ByCharacter, NameComesUpToItsEnd) {
    activate("/dev/hidraw3");
    for (const Take at : kNames) {
        EXPECT_EQ(take(at), "/dev/hidraw3");
        for (const short index : std::initializer_list<short>{12, 13, 511, 512, 513, 32767, -1})
            EXPECT_EQ(at(index), 0) << index;
    }
}

TEST_F(ByCharacter, NameOf511CharactersComesWhole) {
    activate(std::string(511, 'n').c_str());
    for (const Take at : kNames)
        EXPECT_EQ(take(at), std::string(511, 'n'));
}

TEST_F(ByCharacter, NameIsReadInPlaceWithoutACopy) {
    activate("old");
    EXPECT_EQ(getDevName_char(0), 'o');
    activate("new");
    EXPECT_EQ(take(getDevName_char, 1), "ew");
}

TEST_F(ByCharacter, FamiliesTakeACopyOfTheNameAtIndexZero) {
    for (const Take at : {zeltag_getDevName_char, zelband_getDevName_char}) {
        activate("old");
        EXPECT_EQ(at(0), 'o');
        activate("newer");
        EXPECT_EQ(take(at, 1), "ld");
        EXPECT_EQ(take(at), "newer");
    }
}

TEST_F(ByCharacter, EachFamilyHasACopyOfItsOwn) {
    activate("first");
    zeltag_getDevName_char(0);
    activate("second");
    zelband_getDevName_char(0);
    EXPECT_EQ(take(zeltag_getDevName_char, 1), "irst");
    EXPECT_EQ(take(zelband_getDevName_char, 1), "econd");
}

TEST_F(ByCharacter, FamiliesForgetTheNameAtIndexZeroWithNoDevice) {
    for (const Take at : {zeltag_getDevName_char, zelband_getDevName_char}) {
        activate("reader");
        EXPECT_EQ(at(0), 'r');
        iDevsFnd = 0;
        EXPECT_EQ(at(1), 'e') << "the copy stays until it is taken anew";
        EXPECT_EQ(at(0), 0);
        EXPECT_EQ(at(1), 0);
    }
}

TEST_F(ByCharacter, VendorNameIsReadAfreshEachTime) {
    activate("reader");
    DevDat[0].iVidPidIdx = 0;
    std::strcpy(zelTagVidPid.rows[0].vendorName, "one");
    EXPECT_EQ(take(getVidPidVendorName_char), "one");
    std::strcpy(zelTagVidPid.rows[0].vendorName, "four");
    EXPECT_EQ(take(getVidPidVendorName_char, 1), "our");
    for (const short index : std::initializer_list<short>{4, 5, 32767, -1, -32768})
        EXPECT_EQ(getVidPidVendorName_char(index), 0) << index;
}
