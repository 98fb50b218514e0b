// SPDX-License-Identifier: MIT
// The exported card reads: the copy of the last identifier and when it answers.
#include "base/runtime.h"
#include "frame/state/state.h"
#include "tests/support/library_test.h"

#include <algorithm>
#include <array>
#include <thread>

using namespace zel::test;
using zel::sim::cardOf;

namespace {

class LastId : public LibraryTest {
protected:
    LastId() : reader_(connectReader()) {
        zel::setLastIdBits(0);
        reader_->present(cardOf(0x0341B71, 26));
    }

    // A read that happened `ms` milliseconds ago, as an application may note it.
    static void readBefore(std::uint64_t ms) { DevDat[0].lLastIDTick = GetTickCount() - ms; }

    std::shared_ptr<zel::sim::TagReader> reader_;
    std::array<unsigned char, 40> buffer_ = {};
};

class OwnBuffer : public LastId {};

const std::string kTwoQueries = "> 8F 00 00 00 00 00 00 00  identifier\n"
                                "< 71 1B 34 00 00 00 00 00\n"
                                "> 8E 00 00 00 00 00 00 00  bit count\n"
                                "< 1A 00 00 00 00 00 00 00\n";

} // namespace

TEST_F(LastId, IsKeptAfterARead) {
    buffer_.fill(0xEE);
    ASSERT_EQ(GetActiveID(buffer_.data(), 8), 26);
    const std::array<unsigned char, 32> expected = {0x71, 0x1B, 0x34};
    EXPECT_TRUE(std::equal(expected.begin(), expected.begin() + 8, activeIDBuf));
}

TEST_F(LastId, TakesThirtyTwoBytesOfTheBufferWhateverTheSize) {
    buffer_.fill(0xEE);
    GetActiveID(buffer_.data(), 8);
    EXPECT_EQ(activeIDBuf[8], 0xEE);
    EXPECT_EQ(activeIDBuf[31], 0xEE);
}

TEST_F(LastId, NeverAnswersSinceNoOperationStoresATick) {
    GetActiveID(buffer_.data(), 8);
    EXPECT_EQ(DevDat[0].lLastIDTick, 0U);
    bus().takeTrace();
    EXPECT_EQ(GetActiveID(buffer_.data(), 8), 26);
    EXPECT_EQ(bus().takeTrace(), kTwoQueries);
}

TEST_F(LastId, AnswersWhileItsTickIsWithinTheHoldTime) {
    GetActiveID(buffer_.data(), 8);
    bus().takeTrace();
    DevDat[0].Cfg[0].sTimeParms.iIDHoldTO = 200;
    readBefore(199);
    buffer_.fill(0xEE);
    EXPECT_EQ(GetActiveID(buffer_.data(), 4), 26);
    EXPECT_EQ(buffer_[0], 0x71);
    EXPECT_EQ(buffer_[3], 0x00);
    EXPECT_EQ(buffer_[4], 0xEE);
    EXPECT_EQ(bus().takeTrace(), "");
}

TEST_F(LastId, IsForgottenFromTheHoldTimeOn) {
    GetActiveID(buffer_.data(), 8);
    bus().takeTrace();
    DevDat[0].Cfg[0].sTimeParms.iIDHoldTO = 200;
    readBefore(200);
    buffer_.fill(0xEE);
    EXPECT_EQ(GetActiveID(buffer_.data(), 4), 0);
    EXPECT_EQ(buffer_[3], 0x00);
    EXPECT_EQ(buffer_[4], 0xEE);
    EXPECT_TRUE(std::all_of(activeIDBuf, activeIDBuf + 32, [](auto byte) { return byte == 0; }));
    readBefore(0);
    EXPECT_EQ(GetActiveID(buffer_.data(), 4), 0) << "the bit count is forgotten too";
    EXPECT_EQ(bus().takeTrace(), "");
}

TEST_F(LastId, GivesWayToAFreshReadAfter235Milliseconds) {
    DevDat[0].Cfg[0].sTimeParms.iIDHoldTO = 12750;
    readBefore(234);
    GetActiveID(buffer_.data(), 8);
    EXPECT_EQ(bus().takeTrace(), "");
    readBefore(235);
    GetActiveID(buffer_.data(), 8);
    EXPECT_EQ(bus().takeTrace(), kTwoQueries);
}

TEST_F(LastId, HoldTimeIsThatOfTheActiveConfiguration) {
    DevDat[0].Cfg[2].sTimeParms.iIDHoldTO = 200;
    DevDat[0].iActConfig = 2;
    GetActiveID(buffer_.data(), 8);
    readBefore(100);
    EXPECT_EQ(GetActiveID(buffer_.data(), 8), 26);
    DevDat[0].iActConfig = 1;
    EXPECT_EQ(GetActiveID(buffer_.data(), 8), 0);
}

TEST_F(LastId, AnActiveConfigurationBeyondTheRecordReadsTheFirstOne) {
    DevDat[0].Cfg[0].sTimeParms.iIDHoldTO = 200;
    DevDat[0].iActConfig = 255;
    readBefore(100);
    EXPECT_EQ(GetActiveID(buffer_.data(), 8), 0);
    EXPECT_EQ(bus().takeTrace(), "");
}

TEST_F(LastId, LongerThanItsStoreReadsAsZeros) {
    DevDat[0].Cfg[0].sTimeParms.iIDHoldTO = 200;
    readBefore(0);
    buffer_.fill(0xEE);
    GetActiveID32(buffer_.data(), 40);
    EXPECT_EQ(buffer_[39], 0x00);
}

TEST_F(LastId, LockIsHeldDuringTheRead) {
    int tried = 0;
    reader_->follow([&] {
        std::thread([&] { tried = pthread_mutex_trylock(&zelLock); }).join();
        return cardOf(1, 26);
    });
    GetActiveID(buffer_.data(), 8);
    EXPECT_EQ(tried, EBUSY);
    EXPECT_EQ(pthread_mutex_trylock(&zelLock), 0);
    pthread_mutex_unlock(&zelLock);
}

TEST_F(OwnBuffer, TakesTheIdentifier) {
    EXPECT_EQ(getActiveID(8), 26);
    EXPECT_EQ(bus().takeTrace(), kTwoQueries);
    EXPECT_EQ(activeIDBufSz, 8);
    EXPECT_EQ(getActiveID_byte(0), 0x71);
    EXPECT_EQ(getActiveID_byte(2), 0x34);
}

TEST_F(OwnBuffer, IsThirtyTwoBytesForASizeOutside) {
    for (const short size : std::initializer_list<short>{100, -1, 33, -32768, 32767}) {
        activeIDBufSz = 0;
        activeIDBuf[31] = 0xEE;
        EXPECT_EQ(getActiveID(size), 26) << size;
        EXPECT_EQ(activeIDBufSz, 32) << size;
        EXPECT_EQ(activeIDBuf[31], 0) << size;
    }
}

TEST_F(OwnBuffer, KeepsWhatItsSizeLeavesOut) {
    activeIDBuf[5] = 0xEE;
    getActiveID(2);
    EXPECT_EQ(activeIDBuf[0], 0x71);
    EXPECT_EQ(activeIDBuf[1], 0x1B);
    EXPECT_EQ(activeIDBuf[2], 0x00);
    EXPECT_EQ(activeIDBuf[5], 0xEE);
}

TEST_F(OwnBuffer, ByteAtItsSizeIsLetThrough) {
    activeIDBuf[4] = 0x99;
    activeIDBuf[5] = 0x77;
    getActiveID(4);
    EXPECT_EQ(getActiveID_byte(4), 0x99);
    EXPECT_EQ(getActiveID_byte(5), 0);
    EXPECT_EQ(getActiveID_byte(-1), 0);
}

TEST_F(OwnBuffer, ByteThirtyTwoIsZero) {
    getActiveID(32);
    activeIDBuf[31] = 0x55;
    EXPECT_EQ(getActiveID_byte(31), 0x55);
    EXPECT_EQ(getActiveID_byte(32), 0);
}

TEST_F(OwnBuffer, TakesALongIdentifier) {
    zel::sim::Card card;
    card.bits = 255;
    card.id.fill(0xA5);
    reader_->present(card);
    EXPECT_EQ(getActiveID32(100), 255);
    EXPECT_EQ(getActiveID_byte(31), 0xA5);
}

TEST_F(OwnBuffer, FollowsTheSameAgeRule) {
    getActiveID(8);
    bus().takeTrace();
    DevDat[0].Cfg[0].sTimeParms.iIDHoldTO = 200;
    readBefore(199);
    EXPECT_EQ(getActiveID(8), 26);
    EXPECT_EQ(getActiveID32(8), 26);
    readBefore(200);
    EXPECT_EQ(getActiveID(8), 0);
    EXPECT_EQ(getActiveID_byte(0), 0);
    EXPECT_EQ(bus().takeTrace(), "");
}

TEST_F(OwnBuffer, TakesNoLockOfItsOwnBeforeTheRead) {
    DevDat[0].Cfg[0].sTimeParms.iIDHoldTO = 200;
    readBefore(0);
    pthread_mutex_lock(&zelLock);
    int bits = -1;
    std::thread([&] { bits = getActiveID(8); }).join();
    pthread_mutex_unlock(&zelLock);
    EXPECT_EQ(bits, 0);
}
