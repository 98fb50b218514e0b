// SPDX-License-Identifier: MIT
// A work area that held key data is zeros when it is gone.
#include "base/wipe.h"

#include <algorithm>
#include <array>
#include <gtest/gtest.h>
#include <new>

using zel::Wiped;

TEST(Wipe, ZeroesEachByteAndNoOther) {
    std::array<unsigned char, 6> bytes = {1, 2, 3, 4, 5, 6};
    zel::wipe(bytes.data() + 1, 4);
    EXPECT_EQ(bytes, (std::array<unsigned char, 6>{1, 0, 0, 0, 0, 6}));
}

TEST(Wipe, OfNothingMayBeOfANullPointer) { zel::wipe(nullptr, 0); }

TEST(Wipe, ComesWithTheEndOfTheArea) {
    using Area = Wiped<std::array<unsigned char, 16>>;
    alignas(Area) unsigned char storage[sizeof(Area)];
    Area* const area = new (storage) Area;
    EXPECT_EQ(area->area, (std::array<unsigned char, 16>{}));
    area->area.fill('k');
    area->~Area();
    EXPECT_EQ(std::count(std::begin(storage), std::end(storage), 0), 16);
}
