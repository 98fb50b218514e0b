// SPDX-License-Identifier: MIT
// The exported calls of arrivals and removals: which family takes a name, and the character forms.
#include "family/band/band.h"
#include "family/echo/echo.h"
#include "tests/transport/device_table.h"

using namespace zel;
using namespace zel::test;

namespace {

class HotPlug : public DeviceTable {
protected:
    HotPlug() { SetUnsupportedProductErrorCode(-7); }

    static void put(int (*form)(short, short), const std::string& text) {
        EXPECT_EQ(form(0, 0), 1);
        for (std::size_t i = 0; i < text.size(); ++i)
            EXPECT_EQ(form(static_cast<short>(i), text[i]), 1);
    }
    static int say(int (*form)(short, short), const std::string& text) {
        put(form, text);
        return form(255, 0);
    }
};

} // namespace

TEST_F(HotPlug, AddsNothingToAnEmptyTable) {
    EXPECT_EQ(ChkAddArrival(kTagName), -7);
    EXPECT_EQ(ChkAddArrival(kEchoName), -7);
    EXPECT_EQ(iDevsFnd, 0);
}

TEST_F(HotPlug, AddsNothingWithoutAnActiveDeviceOrWithAnUnknownProduct) {
    connectReaders({"a"});
    iActDev = 1;
    EXPECT_EQ(ChkAddArrival(kTagName), -7);
    iActDev = 0;
    DevDat[0].iProduct = 3;
    EXPECT_EQ(ChkAddArrival(kTagName), -7);
    EXPECT_EQ(iDevsFnd, 1);
}

TEST_F(HotPlug, AsksTheFamilyOfTheActiveDeviceAndNotThatOfTheName) {
    const std::pair<std::uint32_t, std::pair<const char*, const char*>> rows[] = {
        {1, {kTagName, kEchoName}}, {2, {kTagName, kEchoName}}, {4, {kEchoName, kTagName}}};
    for (const auto& [product, names] : rows) {
        DevDat[0].hDev = nullptr;
        DevDat[0].iProduct = product;
        iDevsFnd = 1;
        iActDev = 0;
        EXPECT_EQ(ChkAddArrival(names.second), 0) << product;
        EXPECT_EQ(iDevsFnd, 1);
        EXPECT_EQ(ChkAddArrival(names.first), 1) << product;
        EXPECT_EQ(iDevsFnd, 2);
        EXPECT_STREQ(DevDat[product == 4 ? 0 : 1].szDevName, names.first);
    }
}

TEST_F(HotPlug, ActivatesDeviceZeroWhenADeviceArrives) {
    connectReaders({"a", "b"});
    iActDev = 1;
    EXPECT_EQ(ChkAddArrival(kTagName), 1);
    EXPECT_EQ(iActDev, 0);
}

TEST_F(HotPlug, RemovesWithoutAnActiveDeviceAndWhateverTheProduct) {
    connectReaders({"a", "b", "c"});
    iActDev = 9;
    DevDat[0].iProduct = 99;
    EXPECT_EQ(ChkDelRemoval("b"), 1);
    EXPECT_EQ(list(), "b c");
}

TEST_F(HotPlug, RemovesTheSameByEachOfItsThreeNames) {
    for (int (*remove)(const char*) :
         {ChkDelRemoval, zelband_ChkDelRemoval, zelEchoChkDelRemoval}) {
        USBDisconnect();
        cbIndex = 0;
        bus().clear();
        bus().startTrace();
        connectReaders({"a", "b"});
        EXPECT_EQ(remove("B"), 1);
        EXPECT_EQ(remove("x"), 0);
        EXPECT_EQ(list(), "b");
        EXPECT_EQ(bus().takeTrace(), "close a\n");
    }
}

TEST_F(HotPlug, TakesAnArrivalByCharacters) {
    connectReaders({"a"});
    EXPECT_EQ(say(chkAddArrival_char, kTagName), 1);
    EXPECT_EQ(list(), std::string("a ") + kTagName + "0");
    EXPECT_EQ(say(chkAddArrival_char, std::string(kTagName) + "x"), 0);
    EXPECT_EQ(iDevsFnd, 2);
}

TEST_F(HotPlug, TakesCharactersOfAnArrivalWithNoActiveDeviceAndRefusesTheirEnd) {
    EXPECT_EQ(say(chkAddArrival_char, kTagName), -7);
    connectReaders({"a"});
    EXPECT_EQ(chkAddArrival_char(255, 0), 1) << "the text is still there";
}

TEST_F(HotPlug, TakesARemovalByCharactersWithNoActiveDevice) {
    connectReaders({"a", "b"});
    iActDev = 9;
    EXPECT_EQ(say(chkDelRemoval_char, "b"), 1);
    EXPECT_EQ(list(), "b");
}

TEST_F(HotPlug, KeepsTheCharactersOfTheTwoFormsApart) {
    connectReaders({"a"});
    put(chkAddArrival_char, kTagName);
    put(chkDelRemoval_char, "nobody");
    EXPECT_EQ(chkAddArrival_char(255, 'x'), 1);
    EXPECT_EQ(chkDelRemoval_char(255, 'x'), 0);
}

TEST_F(HotPlug, StoresNoCharacterOutside0To254) {
    connectReaders({"a"});
    put(chkDelRemoval_char, "a");
    for (const short index : std::initializer_list<short>{-1, 256, 32767, -32768})
        EXPECT_EQ(chkDelRemoval_char(index, 'x'), 0) << index;
    EXPECT_EQ(chkDelRemoval_char(254, 'x'), 1);
    EXPECT_EQ(chkDelRemoval_char(255, 'x'), 1) << "the text ended at its first zero";
}
