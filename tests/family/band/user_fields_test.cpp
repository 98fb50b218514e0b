// SPDX-License-Identifier: MIT
// The words of the user fields and the enabled tracks, all of them in memory.
#include "frame/zelTagBand.h"
#include "tests/family/band/band_device.h"
#include "tests/support/is_same.h"

#include <cstring>

using namespace zel::test;

namespace {

using Words = std::vector<unsigned short>;

class BandFields : public BandLineTest {
protected:
    ~BandFields() override { EXPECT_EQ(told(), "") << "no command goes out"; }
};

struct Flag {
    const char* name;
    int (*set)(unsigned short, short);
    int (*get)(unsigned short);
    int (*setExported)(unsigned short, short);
    int (*getExported)(unsigned short);
    std::uint8_t BandUserField::*word;
};

struct Number {
    const char* name;
    int (*set)(unsigned short, unsigned short);
    int (*get)(unsigned short);
    int (*setExported)(unsigned short, unsigned short);
    int (*getExported)(unsigned short);
    std::uint8_t BandUserField::*word;
};

constexpr Flag kFlags[] = {
#define ZEL_flag(name, call)                                                                       \
    {#call,                                                                                        \
     zelband_SetField##call,                                                                       \
     zelband_GetField##call,                                                                       \
     zelBandSetField##call,                                                                        \
     zelBandGetField##call,                                                                        \
     &BandUserField::name},
#define ZEL_byte(name, call)
#define ZEL_FIELD(name, call, kind, most, comment) ZEL_##kind(name, call)
#include "frame/band_settings.def"
#undef ZEL_flag
#undef ZEL_byte
};

constexpr Number kNumbers[] = {
#define ZEL_flag(name, call)
#define ZEL_byte(name, call)                                                                       \
    {#call,                                                                                        \
     zelband_SetField##call,                                                                       \
     zelband_GetField##call,                                                                       \
     zelBandSetField##call,                                                                        \
     zelBandGetField##call,                                                                        \
     &BandUserField::name},
#define ZEL_FIELD(name, call, kind, most, comment) ZEL_##kind(name, call)
#include "frame/band_settings.def"
#undef ZEL_flag
#undef ZEL_byte
};

tsBand without(tsBand settings, int field, std::uint8_t BandUserField::*word) {
    settings.UserField[field - 1].*word = 0;
    return settings;
}

} // namespace

TEST_F(BandFields, HaveElevenWordsBesideTheKeys) {
    std::string names;
    for (const Flag& flag : kFlags)
        names += flag.name + std::string(" ");
    for (const Number& number : kNumbers)
        names += number.name + std::string(" ");
    EXPECT_EQ(names, "Enable Skip ShowSepSen ShowLRC IgnoreLRC "
                     "Track MagField Offset Length Term KeyCount ");
}

TEST_F(BandFields, KeepAFlagAsOneOrZero) {
    const tsBand before = settings();
    for (const Flag& flag : kFlags)
        for (unsigned short field = 1; field <= 11; ++field)
            for (const int value : {1, -1, 0x100, 2}) {
                EXPECT_EQ(flag.set(field, static_cast<short>(value)), 1) << flag.name;
                EXPECT_EQ(settings().UserField[field - 1].*flag.word, 1) << flag.name;
                EXPECT_EQ(flag.get(field), 1) << flag.name;
                EXPECT_TRUE(isSame(without(settings(), field, flag.word), before));
                EXPECT_EQ(flag.set(field, 0), 1);
                EXPECT_EQ(flag.get(field), 0) << flag.name;
            }
    EXPECT_TRUE(isSame(settings(), before));
}

TEST_F(BandFields, TellTheLowestBitOfAFlag) {
    for (const Flag& flag : kFlags) {
        settings().UserField[4].*flag.word = 0xFE;
        EXPECT_EQ(flag.get(5), 0) << flag.name;
        settings().UserField[4].*flag.word = 3;
        EXPECT_EQ(flag.get(5), 1) << flag.name;
    }
}

TEST_F(BandFields, KeepTheLowByteOfANumber) {
    const tsBand before = settings();
    for (const Number& number : kNumbers)
        for (unsigned short field = 1; field <= 11; ++field) {
            EXPECT_EQ(number.set(field, 0x1FE), 1) << number.name;
            EXPECT_EQ(settings().UserField[field - 1].*number.word, 0xFE) << number.name;
            EXPECT_EQ(number.get(field), 0xFE) << number.name;
            EXPECT_TRUE(isSame(without(settings(), field, number.word), before));
            number.set(field, 0);
        }
}

TEST_F(BandFields, AreSetByTheExportedCallsToo) {
    for (const Flag& flag : kFlags) {
        EXPECT_EQ(flag.setExported(7, 1), 1) << flag.name;
        EXPECT_EQ(settings().UserField[6].*flag.word, 1) << flag.name;
        EXPECT_EQ(flag.getExported(7), 1) << flag.name;
    }
    for (const Number& number : kNumbers) {
        EXPECT_EQ(number.setExported(7, 200), 1) << number.name;
        EXPECT_EQ(settings().UserField[6].*number.word, 200) << number.name;
        EXPECT_EQ(number.getExported(7), 200) << number.name;
    }
    EXPECT_EQ(zelBandSetFieldKeydata(7, 3, 0x141), 1);
    EXPECT_EQ(zelBandGetFieldKeydata(7, 3), 0x41);
}

TEST_F(BandFields, AreNumberedFromOneToEleven) {
    std::memset(settings().UserField, 0xFF, sizeof settings().UserField);
    settings().KeyPressTime = 0xFFFF;
    const tsBand before = settings();
    for (const unsigned short field : Words{0, 12, 256, 257, 65535}) {
        for (const Flag& flag : kFlags) {
            EXPECT_EQ(flag.set(field, 0), 0) << flag.name;
            EXPECT_EQ(flag.get(field), 0) << flag.name;
        }
        for (const Number& number : kNumbers) {
            EXPECT_EQ(number.set(field, 5), 0) << number.name;
            EXPECT_EQ(number.get(field), 0) << number.name;
        }
        EXPECT_EQ(zelband_SetFieldKeydata(field, 0, 5), 0);
        EXPECT_EQ(zelband_GetFieldKeydata(field, 0), 0);
    }
    EXPECT_TRUE(isSame(settings(), before));
}

TEST_F(BandFields, HaveSixteenKeys) {
    for (unsigned short field = 1; field <= 11; ++field)
        for (unsigned short key = 0; key < 16; ++key) {
            SCOPED_TRACE(::testing::Message() << field << ' ' << key);
            const int value = field * 16 + key;
            EXPECT_EQ(zelband_SetFieldKeydata(field, key, static_cast<unsigned short>(value)), 1);
            EXPECT_EQ(settings().UserField[field - 1].Keybyte[key], value & 0xFF);
            EXPECT_EQ(zelband_GetFieldKeydata(field, key), value & 0xFF);
        }
}

TEST_F(BandFields, ReachTheNextFieldsFirstByteBehindTheKeys) {
    for (unsigned short field = 1; field <= 10; ++field) {
        SCOPED_TRACE(field);
        EXPECT_EQ(zelband_SetFieldKeydata(field, 16, 0x1A5), 1);
        EXPECT_EQ(settings().UserField[field].Enable, 0xA5);
        EXPECT_EQ(zelband_GetFieldKeydata(field, 16), 0xA5);
    }
}

TEST_F(BandFields, ReachTheLowByteOfTheKeyPressTimeBehindTheLastKeys) {
    settings().KeyPressTime = 0x1234;
    EXPECT_EQ(zelband_GetFieldKeydata(11, 16), 0x34);
    EXPECT_EQ(zelband_SetFieldKeydata(11, 16, 0x5678), 1);
    EXPECT_EQ(settings().KeyPressTime, 0x1278);
    EXPECT_EQ(settings().KeyReleaseTime, 0);
}

TEST_F(BandFields, HaveNoSeventeenthKey) {
    std::memset(settings().UserField, 0xFF, sizeof settings().UserField);
    settings().KeyPressTime = 0xFFFF;
    const tsBand before = settings();
    for (const unsigned short key : Words{17, 256, 65535})
        for (const unsigned short field : Words{1, 11}) {
            EXPECT_EQ(zelband_SetFieldKeydata(field, key, 1), 0) << key;
            EXPECT_EQ(zelband_GetFieldKeydata(field, key), 0) << key;
        }
    EXPECT_TRUE(isSame(settings(), before));
}

TEST_F(BandFields, AreNotWhereTracksAreEnabled) {
    EXPECT_EQ(zelband_SetTrackEnables(0xFFFD), 1);
    EXPECT_EQ(settings().TrackEnables, 5);
    settings().TrackEnables = 0xFA;
    EXPECT_EQ(zelband_GetTrackEnables(), 2);
    EXPECT_EQ(zelBandSetTrackEnables(6), 1);
    EXPECT_EQ(zelBandGetTrackEnables(), 6);
}
