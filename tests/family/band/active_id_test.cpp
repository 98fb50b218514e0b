// SPDX-License-Identifier: MIT
// The chosen field as identifier.
#include "frame/zelTagAPI.h"
#include "tests/family/band/band_device.h"

#include <array>
#include <cstring>

using namespace zel::test;

namespace {

using Buffer = std::array<unsigned char, 300>;

std::string textOf(const unsigned char* bytes, std::size_t size) {
    return {reinterpret_cast<const char*>(bytes), size};
}

struct Selection {
    unsigned short track, field, offset, terminator;
};

class BandActiveId : public BandLineTest {
protected:
    BandActiveId() { buffer.fill(0xEE); }

    static int select(const Selection& to) {
        return zelBandSetActiveID(to.track, to.field, to.offset, to.terminator);
    }
    static std::array<int, 4> selected() {
        return {settings().iActTrack, settings().iActField, settings().iActOffset,
                settings().iActTerm};
    }

    Buffer buffer = {};
};

} // namespace

TEST_F(BandActiveId, IsFieldZeroOfTrackTwoAtTheStart) {
    for (const tsDevDat& record : DevDat) {
        SCOPED_TRACE(&record - DevDat);
        EXPECT_EQ(record.Band.iActTrack, 2);
        EXPECT_EQ(record.Band.iActField, 0);
        EXPECT_EQ(record.Band.iActOffset, 0);
        EXPECT_EQ(record.Band.iActLength, 32);
        EXPECT_EQ(record.Band.iActTerm, 255);
    }
}

TEST_F(BandActiveId, IsFillCharactersOnlyAtTheStart) {
    reader->swipe(zel::sim::bandCard("%AB^CDEF?", ";1234=5678?"));
    EXPECT_EQ(GetActiveID(buffer.data(), 32), 32);
    EXPECT_EQ(textOf(buffer.data(), 33), std::string(32, '0') + '\xEE');
}

TEST_F(BandActiveId, TakesItsLimits) {
    for (const Selection& to : {Selection{1, 1, 0, 0}, Selection{3, 50, 100, 65535}}) {
        DevDat[0].lLastErr = 7;
        EXPECT_EQ(select(to), 1);
        EXPECT_EQ(selected(), (std::array<int, 4>{to.track, to.field, to.offset, to.terminator}));
        EXPECT_EQ(error(), 0);
        EXPECT_EQ(settings().iActLength, 32);
    }
}

TEST_F(BandActiveId, RefusesWhatIsBeyondThem) {
    for (const Selection& to : {Selection{0, 1, 0, 0}, Selection{4, 1, 0, 0}, Selection{1, 0, 0, 0},
                                Selection{1, 51, 0, 0}, Selection{1, 1, 101, 0}}) {
        SCOPED_TRACE(::testing::Message()
                     << "track " << to.track << " field " << to.field << " offset " << to.offset);
        DevDat[0].lLastErr = 7;
        EXPECT_EQ(select(to), 0);
        EXPECT_EQ(selected(), (std::array<int, 4>{2, 0, 0, 255}));
        EXPECT_EQ(error(), 0);
    }
}

TEST_F(BandActiveId, IsTheChosenFieldFilledUp) {
    swipeNumbers();
    DevDat[0].lLastErr = 7;
    EXPECT_EQ(zelband_GetActiveID(buffer.data(), 8), 8);
    EXPECT_EQ(textOf(buffer.data(), 9), "=5670000\xEE");
    EXPECT_EQ(error(), 0);
    EXPECT_EQ(settings().iActLength, 8);
    EXPECT_EQ(sent(), "G20 G21 CD0 ");
    EXPECT_EQ(zelband_IsDataAvailable(), 0) << "the reader forgets the card";
}

TEST_F(BandActiveId, IsCutWhereTheChoiceSaysSo) {
    reader->swipe(zel::sim::bandCard("%AB^CDEFG?", {}));
    EXPECT_EQ(select({1, 2, 1, 0x64}), 1); // the code of D
    EXPECT_EQ(zelband_GetActiveID(buffer.data(), 4), 4);
    EXPECT_EQ(textOf(buffer.data(), 4), "    ") << "it stops where it begins";
    reader->swipe(zel::sim::bandCard("%AB^CDEFG?", {}));
    EXPECT_EQ(select({1, 2, 1, 0x26}), 1); // of F
    EXPECT_EQ(zelband_GetActiveID(buffer.data(), 4), 4);
    EXPECT_EQ(textOf(buffer.data(), 4), "FG  ");
}

TEST_F(BandActiveId, OfLengthZeroIsStillAsked) {
    swipeNumbers();
    EXPECT_EQ(zelband_GetActiveID(buffer.data(), 0), 0);
    EXPECT_EQ(buffer[0], 0xEE);
    EXPECT_EQ(sent(), "G20 G21 CD0 ");
}

TEST_F(BandActiveId, HasNoMoreThanAFieldHas) {
    swipeNumbers();
    EXPECT_EQ(zelband_GetActiveID(buffer.data(), 299), 257);
    EXPECT_EQ(textOf(buffer.data(), 257), filledUp("=567", 257));
    EXPECT_EQ(textOf(&buffer[257], 43), std::string(42, '\0') + '\xEE');
}

TEST_F(BandActiveId, IsNothingWhenItCannotBeFetched) {
    swipeNumbers();
    DevDat[0].iProduct = 4;
    EXPECT_EQ(zelband_GetActiveID(buffer.data(), 8), 0);
    EXPECT_EQ(textOf(buffer.data(), 9), std::string(8, '\0') + '\xEE');
    EXPECT_EQ(sent(), "CD0 ");
}

TEST_F(BandActiveId, NeedsABuffer) {
    EXPECT_EQ(zelband_GetActiveID(nullptr, 8), 0);
    EXPECT_EQ(sent(), "");
}

TEST_F(BandActiveId, Of32IgnoresTheBuffer) {
    swipeNumbers();
    std::memset(activeIDBuf, 0xEE, sizeof activeIDBuf);
    EXPECT_EQ(zelband_GetActiveID32(buffer.data(), 8), 8);
    EXPECT_EQ(buffer[0], 0xEE);
    EXPECT_EQ(textOf(activeIDBuf, 9), "=5670000\xEE");
    EXPECT_EQ(activeIDBufSz, 8);
}

TEST_F(BandActiveId, Of32HasNoMoreBytes) {
    for (const int size : {33, 1000, -1}) {
        SCOPED_TRACE(size);
        swipeNumbers();
        EXPECT_EQ(zelband_GetActiveID32(nullptr, static_cast<short>(size)), 32);
        EXPECT_EQ(activeIDBufSz, 32);
        EXPECT_EQ(settings().iActLength, 32);
        EXPECT_EQ(textOf(activeIDBuf, 32), filledUp("=567", 32));
    }
}

// The exported call keeps what the caller's buffer holds, which the reader's identifier never was.
TEST_F(BandActiveId, Of32IsKeptInPlaceOfTheBuffersBytes) {
    swipeNumbers();
    EXPECT_EQ(GetActiveID32(buffer.data(), 32), 32);
    EXPECT_EQ(textOf(activeIDBuf, 32), std::string(32, '\xEE'));
}

TEST_F(BandActiveId, IsReadByteByByte) {
    for (const auto read : {getActiveID, getActiveID32}) {
        swipeNumbers();
        EXPECT_EQ(read(4), 4);
        EXPECT_EQ(activeIDBufSz, 4);
        std::string text;
        for (short index = 0; index < 4; ++index)
            text += static_cast<char>(getActiveID_byte(index));
        EXPECT_EQ(text, "=567");
    }
}

TEST_F(BandActiveId, HasAByteBehindItsLast) {
    std::memset(activeIDBuf, 'x', sizeof activeIDBuf);
    activeIDBufSz = 4;
    EXPECT_EQ(getActiveID_byte(4), 'x');
    for (const int index : {5, -1, 32})
        EXPECT_EQ(getActiveID_byte(static_cast<short>(index)), 0) << index;
    activeIDBufSz = 32;
    EXPECT_EQ(zelband_getActiveID_byte(31), 'x');
    EXPECT_EQ(zelband_getActiveID_byte(32), 0);
}
