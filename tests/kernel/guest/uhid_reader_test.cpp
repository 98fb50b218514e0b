// SPDX-License-Identifier: MIT
// The library on readers that the kernel knows by uhid: found, read, set up, given firmware.
#include "frame/zelTagAPI.h"
#include "tests/kernel/guest/simulator.h"

#include <array>
#include <csignal>
#include <cstring>
#include <gtest/gtest.h>
#include <vector>

namespace zel::test {

namespace {

using Words = std::array<std::int16_t, 8>;

constexpr char kDoor[] = R"(format = 1
[[device]]
name = "door"
kind = "zelTag"
luid = 7
firmware = "3.2"
)";
constexpr char kGateAndDoor[] = R"(format = 1
[[device]]
name = "gate"
kind = "TagPlus"
luid = 3
[[device]]
name = "door"
kind = "zelTag"
luid = 7
)";

// The words that a power loss must not change, and none at its default.
constexpr Words kFlags = {1, 1, 1, 1, 1, 1, 1, 1};
constexpr Words kFlags2 = {1, 1, 1, 1, 1, 1, 1, 0};
constexpr Words kCounts = {3, 5, 33, 44, 0, 0, 0, 0};
constexpr Words kShown = {'-', '\t', 21, 9, 0, 0, 0, 0};
constexpr Words kLead = {2, 'A', 'B', 0, 'G', 'O', 0, 0};
constexpr Words kTrail = {1, 'Z', 0, 0, 0, 0, 0, 0};
constexpr Words kTimes = {400, 2500, 5000, 96, 100, 0, 0, 0};
constexpr Words kLeds = {1, 1, 0, 0, 0, 0, 0, 0};

template <class Record> int setWords(int (*set)(Record*), const Words& words) {
    Record record = {};
    static_assert(sizeof record == sizeof words);
    std::memcpy(&record, words.data(), sizeof record);
    return set(&record);
}

template <class Record> Words wordsOf(int (*get)(Record*)) {
    Record record = {};
    EXPECT_EQ(get(&record), 1);
    Words words = {};
    std::memcpy(words.data(), &record, sizeof record);
    return words;
}

int readBits() {
    unsigned char id[32] = {};
    return GetActiveID(id, 8);
}

TEST(UhidReader, IsFoundAtItsNode) {
    const Simulator simulator(kDoor);
    EXPECT_EQ(USBConnect(nullptr), 1);
    EXPECT_EQ(GetDevCnt(), 1);
    EXPECT_EQ(GetProduct(), 1U);
    EXPECT_EQ(GetLUID(), 7);
    char name[512] = {};
    EXPECT_EQ(GetDevName(name), 999);
    EXPECT_STREQ(name, "/dev/hidraw0");
    EXPECT_LE(Ping(), 65535U);
    EXPECT_EQ(USBDisconnect(), 1);
}

TEST(UhidReader, GivesItsCard) {
    Simulator simulator(kDoor);
    ASSERT_EQ(USBConnect(nullptr), 1);
    EXPECT_EQ(readBits(), 0) << "no card yet";
    EXPECT_EQ(GetLastLibErr(), 0);
    simulator.ask(R"({"do":"tap","card":"26:3512"})");
    unsigned char id[32] = {};
    EXPECT_EQ(GetActiveID(id, 8), 26);
    EXPECT_EQ(std::vector(id, id + 8),
              (std::vector<unsigned char>{0x70, 0x1B, 0x34, 2, 0, 0, 0, 0}));
    EXPECT_EQ(GetActiveID32(id, 32), 26);
    EXPECT_EQ(GetLastLibErr(), 0);
    USBDisconnect();
}

TEST(UhidReader, KeepsTheWholeConfigurationOverALossOfPower) {
    Simulator simulator(kDoor);
    ASSERT_EQ(USBConnect(nullptr), 1);
    EXPECT_EQ(setWords(SetFlags, kFlags), 1);
    EXPECT_EQ(setWords(SetFlags2, kFlags2), 1);
    EXPECT_EQ(setWords(SetIDBitCnts, kCounts), 1);
    EXPECT_EQ(setWords(SetIDDispParms, kShown), 1);
    EXPECT_EQ(setWords(SetIDDispParms2, kLead), 1);
    EXPECT_EQ(setWords(SetIDDispParms3, kTrail), 1);
    EXPECT_EQ(setWords(SetTimeParms, kTimes), 1);
    EXPECT_EQ(setWords(SetLEDCtrl, kLeds), 1);
    SetLUID(4711);
    EXPECT_EQ(WriteCfg(), 1);
    USBDisconnect();
    simulator.unplug();
    simulator.plug();
    ASSERT_EQ(USBConnect(nullptr), 1);
    EXPECT_EQ(wordsOf(GetFlags), kFlags);
    EXPECT_EQ(wordsOf(GetFlags2), kFlags2);
    EXPECT_EQ(wordsOf(GetIDBitCnts), kCounts);
    EXPECT_EQ(wordsOf(GetIDDispParms), kShown);
    EXPECT_EQ(wordsOf(GetIDDispParms2), kLead);
    EXPECT_EQ(wordsOf(GetIDDispParms3), kTrail);
    EXPECT_EQ(wordsOf(GetTimeParms), kTimes);
    EXPECT_EQ(wordsOf(GetLEDCtrl), kLeds);
    EXPECT_EQ(GetLUID(), 4711);
    USBDisconnect();
}

TEST(UhidReader, StandsBesideAnotherOne) {
    Simulator simulator(kGateAndDoor, 2);
    ASSERT_EQ(USBConnect(nullptr), 1);
    ASSERT_EQ(GetDevCnt(), 2);
    EXPECT_EQ(GetMaxConfig(), 2);
    simulator.ask(R"({"do":"tap","card":"0x123456789/37","device":"door"})");
    EXPECT_EQ(readBits(), 0);
    EXPECT_EQ(SetActDev(static_cast<short>(GetDevByLUID(7, 0))), 1);
    EXPECT_EQ(GetActDev(), 1);
    EXPECT_EQ(readBits(), 37);
    USBDisconnect();
}

volatile std::sig_atomic_t progress = 0;

TEST(UhidReader, TakesFirmware) {
    const Simulator simulator;
    std::signal(SIGUSR1, [](int) { progress = progress + 1; });
    ASSERT_EQ(USBConnect(nullptr), 1);
    char path[] = "/share/firmware.hex";
    EXPECT_EQ(Bootload(path), 1);
    EXPECT_EQ(progress, 11) << "at 0 % and at each tenth of the 40 lines";
    EXPECT_EQ(ReadCfg(), 1);
    EXPECT_STREQ(GetFWFilename(), "ZT7_0302") << "it left its boot loader, which wanted 40 lines";
    USBDisconnect();
}

} // namespace

} // namespace zel::test
