// SPDX-License-Identifier: MIT
// A track as it is fetched: chunks, the length in front, the two alphabets.
#include "frame/zelTagAPI.h"
#include "tests/family/band/band_device.h"

#include <algorithm>
#include <cstring>

using namespace zel::test;
using zel::sim::BandCard;
using zel::sim::TrackCodes;

namespace {

constexpr int kTrackSize = 257;

class BandTracks : public BandLineTest {
protected:
    static std::string bytesOf(const char* track) { return {track, kTrackSize}; }
    static std::string padded(std::string text) {
        text.resize(kTrackSize);
        return text;
    }
};

class BandChunks : public BandUsbTest {
protected:
    // The commands that fetch a track of so many characters.
    int commandsFor(unsigned short track, std::size_t characters) {
        BandCard card;
        card.track[track - 1U] = TrackCodes(characters, 1);
        reader->swipe(card);
        const int before = reader->commands();
        zelband_GetTrackData(track, 0);
        return reader->commands() - before;
    }
};

using Words = std::vector<unsigned short>;

} // namespace

TEST_F(BandTracks, HaveTheirLengthInFrontOfTheirCodes) {
    reader->swipe(zel::sim::bandCard({}, ";000=1?"));
    EXPECT_EQ(bytesOf(zelBandGetTrackData(2, 0)), padded("\x07\x0B\x10\x10\x10\x0D\x01\x0F"));
    EXPECT_EQ(told(), traced("G2000", "R20070B1010100D010F"));
}

TEST_F(BandTracks, AreConvertedBehindTheLength) {
    reader->swipe(zel::sim::bandCard("%AB^C?", ";000=1?", ";2=3?"));
    EXPECT_EQ(bytesOf(zelBandGetTrackData(1, 1)), padded("\x06"
                                                         "5AB^C?"));
    EXPECT_EQ(bytesOf(zelBandGetTrackData(2, -1)), padded("\x07;000=1?"));
    EXPECT_EQ(bytesOf(zelBandGetTrackData(3, 256)), padded("\x05;2=3?"));
}

TEST_F(BandTracks, AreConvertedByTheLowBitsOfEachCode) {
    for (const unsigned short track : Words{1, 2, 3})
        for (int first = 0; first < 256; first += 32) {
            BandCard card;
            std::string wanted = " ";
            for (int code = first; code < first + 32; ++code) {
                card.track[track - 1U].push_back(static_cast<std::uint8_t>(code));
                wanted += static_cast<char>(track == 1 ? ' ' + code % 64 : '0' + code % 16);
            }
            reader->swipe(card);
            EXPECT_EQ(bytesOf(zelband_GetTrackData(track, 1)), padded(wanted)) << first;
        }
}

TEST_F(BandTracks, CountTheirCharactersInSevenBits) {
    reader->replyWith("G200", "R20830B0101010101");
    EXPECT_EQ(bytesOf(zelband_GetTrackData(2, 1)), padded("\x83;11\x01\x01\x01"));
    EXPECT_EQ(reader->commands(), 1);
}

TEST_F(BandTracks, AreFetchedInChunksOfTen) {
    reader->swipe(cardOf({}, {}, TrackCodes(120, 5)));
    const std::string data = bytesOf(zelband_GetTrackData(3, 0));
    EXPECT_EQ(data, padded("\x78" + std::string(109, 5)));
    std::string wanted = traced("G3000", "R3078050505050505050505");
    for (const char chunk : std::string("123456789A"))
        wanted += traced(std::string("G3") + chunk + "00",
                         std::string("R3") + chunk + "05050505050505050505");
    EXPECT_EQ(told(), wanted);
}

// Characters that no chunk brings are zeros, which is a character of the alphabet too.
TEST_F(BandTracks, AreConvertedAsFarAsTheirLengthTells) {
    reader->swipe(cardOf({}, TrackCodes(60, 1), {}));
    EXPECT_EQ(bytesOf(zelband_GetTrackData(2, 1)),
              padded("\x3C" + std::string(49, '1') + std::string(11, '0')));
}

TEST_F(BandTracks, AreEmptyWhenAChunkFails) {
    reader->swipe(zel::sim::bandCard("%" + std::string(40, 'A') + "?", {}));
    failAt(3);
    EXPECT_EQ(bytesOf(zelband_GetTrackData(1, 1)), padded(""));
    EXPECT_EQ(reader->commands(), 4);
}

TEST_F(BandTracks, ForgetTheOneBefore) {
    reader->swipe(cardOf({}, TrackCodes(40, 1), TrackCodes(2, 2)));
    zelband_GetTrackData(2, 0);
    EXPECT_EQ(bytesOf(zelband_GetTrackData(3, 0)), padded("\x02\x02\x02"));
}

TEST_F(BandTracks, AreThree) {
    reader->swipe(cardOf(TrackCodes(5, 1), TrackCodes(5, 1), TrackCodes(5, 1)));
    zelband_GetTrackData(1, 0);
    told();
    for (const unsigned short track : Words{0, 4, 257, 65535})
        EXPECT_EQ(bytesOf(zelBandGetTrackData(track, 1)), padded("")) << track;
    EXPECT_EQ(told(), "");
}

TEST_F(BandTracks, AreReadByteByByteFromACopy) {
    reader->swipe(zel::sim::bandCard("%AB?", ";12?"));
    EXPECT_EQ(zelBandGetTrackData_BYTE(2, 1, 0), 4);
    EXPECT_EQ(told(), traced("G2000", "R20040B01020F"));
    zelband_GetTrackData(1, 0);
    told();
    std::string text;
    for (unsigned short index = 1; index < 6; ++index)
        text += static_cast<char>(zelBandGetTrackData_BYTE(1, 0, index));
    EXPECT_EQ(text, std::string(";12?") + '\0');
    EXPECT_EQ(told(), "");
}

TEST_F(BandTracks, HaveBytesUpTo254) {
    reader->swipe(cardOf({}, TrackCodes(5, 0x81), {}));
    EXPECT_EQ(zelband_GetTrackData_BYTE(2, 0, 0), 5);
    EXPECT_EQ(zelband_GetTrackData_BYTE(2, 0, 5), 0x81);
    for (const unsigned short index : Words{254, 255, 256, 257, 65535})
        EXPECT_EQ(zelband_GetTrackData_BYTE(2, 0, index), 0) << index;
}

TEST_F(BandTracks, AreNoneOfAnotherProduct) {
    DevDat[0].iProduct = 4;
    EXPECT_EQ(zelBandGetTrackData(2, 1), nullptr);
    EXPECT_EQ(zelBandGetTrackFieldOffset(2, 1, 0, 32, 255, 1), nullptr);
    EXPECT_EQ(zelBandGetTrackData_BYTE(2, 1, 0), 0);
    EXPECT_EQ(told(), "");
}

TEST_F(BandChunks, AreAsManyAsTheLengthTellsAndNoMoreThanTheTracksOwn) {
    struct Case {
        unsigned short track;
        std::size_t characters;
        int commands;
    };
    for (const Case& each :
         {Case{1, 1, 1}, Case{1, 9, 1}, Case{1, 10, 2}, Case{1, 79, 8}, Case{1, 80, 9},
          Case{1, 127, 9}, Case{2, 39, 4}, Case{2, 40, 5}, Case{2, 127, 5}, Case{3, 99, 10},
          Case{3, 100, 11}, Case{3, 127, 11}, Case{3, 128, 1}})
        EXPECT_EQ(commandsFor(each.track, each.characters), each.commands)
            << each.track << ", " << each.characters;
}

TEST_F(BandChunks, EndWithTheFirstOneThatFails) {
    reader->swipe(cardOf({}, {}, TrackCodes(127, 1)));
    for (int n = 0; n < 11; ++n) {
        SCOPED_TRACE(n);
        const int before = reader->commands();
        failAt(n, zel::sim::BandFault::Silence);
        const char* const track = zelband_GetTrackData(3, 1);
        EXPECT_TRUE(std::all_of(track, track + kTrackSize, [](char byte) { return byte == 0; }));
        EXPECT_EQ(reader->commands() - before, n + 1);
    }
}
