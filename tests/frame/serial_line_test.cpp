// SPDX-License-Identifier: MIT
// The calls on a line, with devices that have none.
#include "tests/support/library_test.h"

#include <algorithm>
#include <array>
#include <initializer_list>

using namespace zel::test;

namespace {

class SerialLine : public LibraryTest {
protected:
    SerialLine() { SetUnsupportedProductErrorCode(-7); }
};

constexpr std::array<unsigned char, 4> kFilled = {1, 2, 3, 4};

void expectNothingMoves() {
    auto buffer = kFilled;
    EXPECT_EQ(ReadSerialPort(buffer.data(), 4), 0);
    EXPECT_EQ(QuickReadSerialPort(buffer.data(), 4), 0);
    EXPECT_EQ(WriteSerialPort(buffer.data(), 4), 0);
    EXPECT_EQ(buffer, kFilled);
    EXPECT_EQ(ReadSerialPort(nullptr, 4), 0);
    EXPECT_EQ(QuickReadSerialPort(nullptr, 4), 0);
    EXPECT_EQ(WriteSerialPort(nullptr, 4), 0);
}

} // namespace

TEST_F(SerialLine, MovesNothingWithNoDevice) { expectNothingMoves(); }

TEST_F(SerialLine, MovesNothingOnAUsbReader) {
    connectReader();
    expectNothingMoves();
    EXPECT_EQ(bus().takeTrace(), "");
}

TEST_F(SerialLine, ByCharactersReadsNothingAndYieldsZeros) {
    for (const auto at : {readSerialPort_char, quickReadSerialPort_char})
        for (const short index : std::initializer_list<short>{-1, 0, 1023, 1024, 32767, -2, -32768})
            EXPECT_EQ(at(index), 0) << index;
}

TEST_F(SerialLine, TimeoutsChangeNothing) {
    connectReader();
    SetSerialTimeouts(1, 2, 3);
    EXPECT_EQ(GetLastLibErr(), 0);
    EXPECT_EQ(bus().takeTrace(), "");
}
