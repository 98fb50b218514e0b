// SPDX-License-Identifier: MIT
// A field of a track: where it begins, where it stops, what is copied.
#include "frame/zelTagAPI.h"
#include "tests/family/band/band_device.h"

#include <algorithm>
#include <random>

using namespace zel::test;
using zel::sim::BandFault;
using zel::sim::TrackCodes;

namespace {

constexpr std::size_t kFieldSize = 257;
constexpr unsigned short kNoTerminator = 255;

struct Choice {
    unsigned short track = 2;
    unsigned short field = 1;
    unsigned short offset = 0;
    unsigned short length = 32;
    unsigned short terminator = kNoTerminator;
    short convert = 0;
};

std::string fieldOf(const Choice& choice) {
    const char* const text =
        zelBandGetTrackFieldOffset(choice.track, choice.field, choice.offset, choice.length,
                                   choice.terminator, choice.convert);
    return {text, kFieldSize};
}

std::string filledTo(const std::string& text, char fill) {
    return filledUp(text, kFieldSize, fill);
}

class BandTrackFields : public BandLineTest {
protected:
    // The field of track 2 that holds this text, with '0' behind it.
    std::string second(const std::string& text, Choice choice = {}) {
        reader->swipe(zel::sim::bandCard({}, text));
        choice.convert = 1;
        const std::string field = fieldOf(choice);
        EXPECT_EQ(field.size(), kFieldSize);
        return field.substr(0, field.find_last_not_of('0') + 1);
    }
};

class BandFieldModel : public BandUsbTest {};

// The same by prefix sums over a row of codes with zeros behind those of the card, as many as the
// offset and a copy may reach.
std::string modelOf(const TrackCodes& codes, const Choice& choice) {
    constexpr std::size_t kChunks[] = {9, 5, 11};
    const std::size_t chunks = std::min(kChunks[choice.track - 1], codes.size() / 10 + 1);
    std::vector<int> row(codes.begin(), codes.end());
    row.resize(std::min(row.size(), 10 * chunks - 1));
    row.resize(2 * kFieldSize + choice.offset);
    const std::vector<int> delimiters =
        choice.track == 1 ? std::vector{0x15, 0x5F, 0x3E} : std::vector{0x0B, 0x0F, 0x0D};
    const auto isStop = [&](int code) {
        return code == 0 || choice.length == 0 || code == delimiters[1] || code == delimiters[2] ||
               (code < 0x80 && code == choice.terminator);
    };
    std::string text;
    const auto end = std::find(row.begin(), row.end(), 0) - row.begin();
    int passed = 0;
    for (std::ptrdiff_t place = 1; place <= end; ++place) {
        passed += static_cast<int>(std::count(delimiters.begin(), delimiters.end(),
                                              row[static_cast<std::size_t>(place - 1)]));
        const auto start = row.begin() + place + choice.offset;
        if (passed != choice.field || *start == 0)
            continue;
        const auto stop = std::find_if(start, row.end(), isStop);
        if (*stop != 0)
            text.assign(stop, stop + (stop - start));
        break;
    }
    text = filledTo(text, '\0');
    if (choice.convert != 0)
        for (char& code : text)
            code = static_cast<char>(choice.track == 1 ? ' ' + (code & 63) : '0' + (code & 15));
    return text;
}

} // namespace

TEST_F(BandTrackFields, AreCopiedFromWhereTheyStop) {
    EXPECT_EQ(second(";12=3456789?"), "=3");
    EXPECT_EQ(second(";1234=56789?"), "=567");
}

TEST_F(BandTrackFields, EndWithTheDataWhereTheyAreCopiedFrom) {
    EXPECT_EQ(second(";123456=7?"), "=7?");
}

TEST_F(BandTrackFields, CountDelimitersFromTheFirstOne) {
    const std::string text = ";11=222222=33333333?55=66?";
    EXPECT_EQ(second(text, {.field = 1}), "=2");
    EXPECT_EQ(second(text, {.field = 2}), "=33333");
    EXPECT_EQ(second(text, {.field = 3}), "?55=66?");
}

TEST_F(BandTrackFields, CountTheEndSentinelToo) {
    EXPECT_EQ(second(";11?2222=33333?", {.field = 2}), "=333");
}

TEST_F(BandTrackFields, OfNumberZeroAreNoneBehindADelimiter) {
    EXPECT_EQ(second(";12=34?", {.field = 0}), "");
}

TEST_F(BandTrackFields, OfNumberZeroBeginBehindTheFirstCodeOfOtherData) {
    EXPECT_EQ(second("1234=56789?", {.field = 0}), "=56");
    EXPECT_EQ(second("1234=56789?", {.field = 0, .offset = 1}), "=5");
}

TEST_F(BandTrackFields, BeginAtAnOffset) {
    EXPECT_EQ(second(";1234=56789?", {.offset = 1}), "=56");
    EXPECT_EQ(second(";1234=56789?", {.offset = 3}), "=");
    EXPECT_EQ(second(";1234=56789?", {.offset = 4}), "");
    EXPECT_EQ(second(";1234=5678?67?", {.offset = 7}), "?6");
}

TEST_F(BandTrackFields, AreNoneAtAnOffsetPastTheData) {
    for (const int offset : {12, 13, 100, 255, 256, 65535})
        EXPECT_EQ(second(";1234=56789?", {.offset = static_cast<unsigned short>(offset)}), "")
            << offset;
}

// The search goes on while the delimiter isn't met, and finds what lies behind a gap.
TEST_F(BandTrackFields, AreSoughtOnWhereTheOffsetMeetsAZero) {
    reader->swipe(cardOf({}, {0x0B, 1, 1, 1, 0, 1, 1, 0x0D, 2, 2, 2}, {}));
    EXPECT_EQ(fieldOf({.offset = 3}), filledTo("\x0D\x02", '\0'));
}

TEST_F(BandTrackFields, TakeTheirLengthAsASwitch) {
    const std::string text = ";1234=56789?";
    EXPECT_EQ(second(text, {.length = 0}), "");
    EXPECT_EQ(second(text, {.length = 1}), "=567");
    EXPECT_EQ(second(text, {.length = 65535}), "=567");
}

TEST_F(BandTrackFields, StopAtATerminator) {
    const TrackCodes codes = {0x0B, 1, 2, 3, 4, 5, 0x0D, 6, 0x0F};
    reader->swipe(cardOf(codes, codes, codes));
    EXPECT_EQ(fieldOf({.terminator = 3}), filledTo("\x03\x04", '\0'));
    EXPECT_EQ(fieldOf({.track = 3, .terminator = 4}), filledTo("\x04\x05\x0D", '\0'));
    EXPECT_EQ(fieldOf({.terminator = 0x103}), filledTo("\x0D\x06\x0F", '\0'));
}

TEST_F(BandTrackFields, StopAtNoCodeAbove127) {
    reader->swipe(cardOf({}, {0x0B, 1, 0xFF, 0x83, 1, 0x0D, 2, 3, 4, 5, 6}, {}));
    const std::string wanted = filledTo("\x0D\x02\x03\x04", '\0');
    EXPECT_EQ(fieldOf({.terminator = 255}), wanted);
    EXPECT_EQ(fieldOf({.terminator = 0x83}), wanted);
    EXPECT_EQ(fieldOf({.terminator = 0xFF83}), wanted);
}

TEST_F(BandTrackFields, StopAtNoStartSentinel) { EXPECT_EQ(second(";12;34=56789?", {}), "=5678"); }

TEST_F(BandTrackFields, AreNoneWithoutAnEnd) {
    reader->swipe(zel::sim::bandCard("%1234", ";1234"));
    EXPECT_EQ(fieldOf({}), filledTo("", '\0'));
    EXPECT_EQ(fieldOf({.convert = 1}), filledTo("", '0'));
    EXPECT_EQ(fieldOf({.track = 1, .convert = 1}), filledTo("", ' '));
}

TEST_F(BandTrackFields, AreFilledUpWhenConverted) {
    reader->swipe(zel::sim::bandCard("%AB^CDEF?", ";12=345?"));
    EXPECT_EQ(fieldOf({.track = 1, .convert = 1}), filledTo("^C", ' '));
    EXPECT_EQ(fieldOf({.convert = -1}), filledTo("=3", '0'));
    EXPECT_EQ(fieldOf({}), filledTo("\x0D\x13", '\0'));
}

TEST_F(BandTrackFields, AreFillWhenTheTrackFails) {
    reader->swipe(zel::sim::bandCard({}, ";12=345?"));
    failAt(0);
    EXPECT_EQ(fieldOf({.convert = 1}), filledTo("", '0'));
}

TEST_F(BandTrackFields, AreNeitherFetchedNorConvertedOfAnotherTrack) {
    reader->swipe(zel::sim::bandCard("%12^345?", ";12=345?", ";12=345?"));
    fieldOf({.convert = 1});
    told();
    for (const int track : {0, 4, 65535})
        EXPECT_EQ(fieldOf({.track = static_cast<unsigned short>(track), .convert = 1}),
                  filledTo("", '\0'))
            << track;
    EXPECT_EQ(told(), "");
}

TEST_F(BandFieldModel, AgreesOnRandomTracks) {
    std::mt19937 random(1);
    const auto upTo = [&](unsigned most) { return static_cast<unsigned>(random() % (most + 1)); };
    const std::uint8_t favoured[] = {0x15, 0x5F, 0x3E, 0x0B, 0x0F, 0x0D, 0xFF, 0};
    for (int i = 0; i < 3'000; ++i) {
        TrackCodes codes(1 + upTo(126));
        const unsigned rarity = 2 + upTo(30);
        for (std::uint8_t& code : codes)
            code =
                upTo(rarity) == 0 ? favoured[upTo(7)] : static_cast<std::uint8_t>(1 + upTo(0x20));
        reader->swipe(cardOf(codes, codes, codes));
        const auto word = [&](unsigned most) { return static_cast<unsigned short>(upTo(most)); };
        const Choice choice = {static_cast<unsigned short>(1 + upTo(2)),
                               word(4),
                               word(i % 9 == 0 ? 300 : 9),
                               word(5),
                               word(i % 2 == 0 ? 300 : 20),
                               static_cast<short>(upTo(1))};
        EXPECT_EQ(fieldOf(choice), modelOf(codes, choice)) << i;
        bus().takeTrace();
    }
}
