// SPDX-License-Identifier: MIT
// A first card through the shared library.
#include "tests/support/library_test.h"

#include <array>

using namespace zel::test;

namespace {
class SharedLibrary : public LibraryTest {};
} // namespace

TEST_F(SharedLibrary, ReadsACardFromEndToEnd) {
    plugReader("/dev/hidraw0")->present(zel::sim::card26(26, 3512));
    ASSERT_EQ(connect(), 1);
    std::array<unsigned char, 32> id = {};
    EXPECT_EQ(GetActiveID(id.data(), 8), 26);
    EXPECT_EQ(id[0], 0x70);
    EXPECT_EQ(GetActiveID32(id.data(), 32), 26);
    EXPECT_EQ(getActiveID(8), 26);
    EXPECT_EQ(getActiveID_byte(1), 0x1B);
    EXPECT_LT(Ping(), 65536U);
    EXPECT_EQ(GetLastLibErr(), 0);
}

TEST_F(SharedLibrary, PausesWithTheProgramsOwnClock) {
    connectReader();
    bus().unplug(0);
    std::array<unsigned char, 32> id = {};
    EXPECT_EQ(GetActiveID(id.data(), 8), 0);
    EXPECT_EQ(takePausedMicroseconds(), 480'000U);
}

TEST_F(SharedLibrary, NeverWritesPastItsTable) {
    for (int i = 0; i < 300; ++i)
        plugReader("r" + std::to_string(i));
    EXPECT_EQ(connect(), 127);
    EXPECT_EQ(connect(), 127);
    EXPECT_EQ(bus().openHandles(), 127);
}
