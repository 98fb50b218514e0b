// SPDX-License-Identifier: MIT
// A configuration whose n-th command goes wrong: what that ends, what it tells, what it passes.
#include "frame/zelTagAPI.h"
#include "tests/family/band/band_device.h"

#include <cstring>

using namespace zel::test;
using zel::sim::BandFault;

namespace {

constexpr int kExchanges = 37;
constexpr int kFieldCommands = 3; // of each of the eleven fields

struct Outcome {
    int result;
    std::int64_t error;
    int commands;
    bool operator==(const Outcome&) const = default;
};

std::ostream& operator<<(std::ostream& stream, const Outcome& outcome) {
    return stream << "result " << outcome.result << ", error " << std::hex << outcome.error
                  << std::dec << ", commands " << outcome.commands;
}

// A field whose halves begin at a multiple of three.
Outcome fieldReadOutcome(int n, int inField) { return {0, inField < 2 ? 0x20001 : 0, n + 1}; }

// When command n of a read fails. The first one is asked again.
Outcome readOutcome(int n) {
    if (n == 0)
        return {1, 0, kExchanges + 1};
    if (n == 1 || n == 35)
        return {1, 0, kExchanges};
    if (n == 36)
        return {0, 0, kExchanges};
    return fieldReadOutcome(n, (n - 2) % kFieldCommands);
}

// When command n of a write fails. A field's control bytes are sent in vain.
Outcome writeOutcome(int n) {
    if (n == 0 || n == 35 || n == 36)
        return {0, 0, n + 1};
    if (n == 34 || (n - 1) % kFieldCommands == 2)
        return {1, 0, kExchanges};
    return {0, 0x20001, n + 1};
}

class BandFailures : public BandUsbTest {
protected:
    Outcome outcomeOf(int (*operation)(), int n, BandFault fault) {
        const int before = reader->commands();
        DevDat[0].lLastErr = 7;
        failAt(n, fault);
        const int result = operation();
        reader->fail(BandFault::None);
        wait(1'300'000);
        return {result, error(), reader->commands() - before};
    }
};

class BandLineFailures : public BandLineTest {};

} // namespace

TEST_F(BandFailures, EndAReadOrPassAtEachCommand) {
    for (const BandFault fault : {BandFault::WrongFirstByte, BandFault::Silence})
        for (int n = 0; n < kExchanges; ++n)
            EXPECT_EQ(outcomeOf(zelband_ReadCfg, n, fault), readOutcome(n)) << n;
}

TEST_F(BandFailures, EndAWriteOrPassAtEachCommand) {
    for (const BandFault fault : {BandFault::WrongFirstByte, BandFault::Silence})
        for (int n = 0; n < kExchanges; ++n)
            EXPECT_EQ(outcomeOf(zelband_WriteCfg, n, fault), writeOutcome(n)) << n;
}

TEST_F(BandFailures, EndAReadWhenThePartNumberFailsTwice) {
    settings().bBandCfgDirty = 1;
    std::strcpy(DevDat[0].szPartNum, "kept");
    reader->fail(BandFault::WrongFirstByte, 2);
    EXPECT_EQ(zelband_ReadCfg(), 0);
    EXPECT_EQ(error(), 0x20000);
    EXPECT_EQ(toldBriefly(), "QRZ ~2 ~2 ~25 QRZ ~2 ~2");
    EXPECT_STREQ(DevDat[0].szPartNum, "kept");
    EXPECT_EQ(settings().bBandCfgDirty, 1U);
}

TEST_F(BandFailures, KeepTheVersionThatCouldNotBeRead) {
    DevDat[0].iDID = 0x1111;
    DevDat[0].iFWVer = 0x2222;
    failAt(1);
    EXPECT_EQ(zelband_ReadCfg(), 1);
    EXPECT_EQ(DevDat[0].iDID, 0x1111);
    EXPECT_EQ(DevDat[0].iFWVer, 0x2222);
}

TEST_F(BandFailures, KeepTheFieldsBeforeThem) {
    const BandUserField before = settings().UserField[3];
    settings().bBandCfgDirty = 1;
    failAt(2 + 3 * kFieldCommands);
    EXPECT_EQ(zelband_ReadCfg(), 0);
    EXPECT_EQ(settings().UserField[2].Length, 32);
    EXPECT_EQ(std::memcmp(&settings().UserField[3], &before, sizeof before), 0);
    EXPECT_EQ(settings().bBandCfgDirty, 1U);
}

TEST_F(BandFailures, OfControlBytesLeaveNoErrorWord) {
    failAt(4);
    EXPECT_EQ(zelband_ReadCfg(), 0);
    EXPECT_EQ(error(), 0);
    EXPECT_EQ(settings().UserField[0].Enable, 1);
    EXPECT_EQ(settings().UserField[0].Length, 0);
}

TEST_F(BandFailures, KeepTheSystemBytesThatCouldNotBeRead) {
    settings().Beeper = 0x5A;
    settings().KeyPressTime = 77;
    settings().TrackEnables = 1;
    settings().iBandLUID = 9;
    DevDat[0].iLUID = 8;
    failAt(35);
    EXPECT_EQ(zelband_ReadCfg(), 1);
    EXPECT_EQ(settings().Beeper, 0x5A);
    EXPECT_EQ(settings().KeyPressTime, 77);
    EXPECT_EQ(settings().TrackEnables, 1);
    EXPECT_EQ(settings().iBandLUID, 9);
    EXPECT_EQ(DevDat[0].iLUID, 8);
    EXPECT_EQ(settings().LedColor[4], 3);
}

TEST_F(BandFailures, OfTheFlashWaitAllTheSame) {
    failAt(36, BandFault::Silence);
    EXPECT_EQ(zelband_WriteCfg(), 0);
    EXPECT_TRUE(toldBriefly().ends_with(" FW ~2 ~200 ~2 ~1100"));
}

TEST_F(BandFailures, OfTheStartSendNothingElse) {
    failAt(0);
    EXPECT_EQ(zelband_WriteCfg(), 0);
    EXPECT_EQ(toldBriefly(), "FR ~2 ~2");
}

TEST_F(BandFailures, OfTheResetAreTold) {
    failAt(0, BandFault::Silence);
    EXPECT_EQ(zelband_ResetFactoryDflts(), 0);
    EXPECT_EQ(error(), 0x80000);
    EXPECT_EQ(toldBriefly(), "FD ~2 ~200 ~2");
}

TEST_F(BandFailures, BehindTheResetAreThoseOfTheRead) {
    reader->fail(BandFault::Silence, 2, 1);
    EXPECT_EQ(zelband_ResetFactoryDflts(), 0);
    EXPECT_EQ(error(), 0x20000);
    EXPECT_EQ(toldBriefly(), "FD ~2 ~200 ~1100 QRZ ~2 ~2 ~25 QRZ ~2 ~2");
}

TEST_F(BandFailures, EndAWriteForAnIndexOutsideTheTable) {
    DevDat[0].lLastErr = 7;
    DevDat[0].iLUID = 3;
    for (const int index : {-1, 128, SHRT_MIN, SHRT_MAX}) {
        iActDev = static_cast<std::int16_t>(index);
        EXPECT_EQ(zelband_WriteCfg(), 0) << index;
    }
    iActDev = 0;
    EXPECT_EQ(error(), 7);
    EXPECT_EQ(settings().iBandLUID, 0);
    EXPECT_EQ(reader->commands(), 0);
}

TEST_F(BandLineFailures, AreShortRepliesToo) {
    for (int n = 0; n < kExchanges; ++n) {
        const int before = reader->commands();
        failAt(n, BandFault::ShortReply);
        const int result = zelband_ReadCfg();
        EXPECT_EQ((Outcome{result, error(), reader->commands() - before}), readOutcome(n)) << n;
        reader->fail(BandFault::None);
    }
}

// Random bytes make no read go on for ever, and none beyond the area.
TEST_F(BandLineFailures, MayBeAnyBytes) {
    for (int n = 0; n < kExchanges; ++n) {
        reader->fail(BandFault::Garbage, kExchanges, n);
        const int before = reader->commands();
        zelband_ReadCfg();
        EXPECT_LE(reader->commands() - before, kExchanges + 1);
        reader->fail(BandFault::None);
    }
}

TEST_F(BandLineFailures, OfNoLineAreToldAsNoPartNumber) {
    DevDat[0].pPort = nullptr;
    EXPECT_EQ(zelband_ReadCfg(), 0);
    EXPECT_EQ(error(), 0x20000);
    EXPECT_EQ(zelband_WriteCfg(), 0);
    EXPECT_EQ(error(), 0);
    EXPECT_EQ(zelband_ResetFactoryDflts(), 0);
    EXPECT_EQ(error(), 0x80000);
}
