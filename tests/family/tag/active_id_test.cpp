// SPDX-License-Identifier: MIT
// The proximity reader's two ways to deliver an identifier.
#include "family/tag/tag.h"
#include "tests/support/library_test.h"

#include <array>

using namespace zel::test;
using zel::sim::cardOf;
using zel::sim::Fault;

namespace {

constexpr std::int64_t kReadFailed = 0x1000000;

class CardRead : public LibraryTest {
protected:
    CardRead() : reader_(connectReader()) {
        reader_->present(cardOf(0x8877665544332211, 64));
        buffer_.fill(0xEE);
    }

    std::shared_ptr<zel::sim::TagReader> reader_;
    std::array<unsigned char, 48> buffer_;
};

class LongRead : public CardRead {
protected:
    LongRead() {
        zel::sim::Card card;
        card.bits = 250;
        for (unsigned i = 0; i < card.id.size(); ++i)
            card.id[i] = static_cast<std::uint8_t>(i + 1);
        reader_->present(card);
    }
};

} // namespace

TEST_F(CardRead, IsTwoQueries) {
    EXPECT_EQ(GetActiveID(buffer_.data(), 8), 64);
    EXPECT_EQ(bus().takeTrace(), "> 8F 00 00 00 00 00 00 00  identifier\n"
                                 "< 11 22 33 44 55 66 77 88\n"
                                 "> 8E 00 00 00 00 00 00 00  bit count\n"
                                 "< 40 00 00 00 00 00 00 00\n");
    EXPECT_EQ(buffer_[7], 0x88);
    EXPECT_EQ(GetLastLibErr(), 0);
}

TEST_F(CardRead, OfFourBytesYieldsFourAndTheBitCount) {
    EXPECT_EQ(GetActiveID(buffer_.data(), 4), 64);
    EXPECT_EQ(buffer_[3], 0x44);
    EXPECT_EQ(buffer_[4], 0xEE);
}

TEST_F(CardRead, BeyondEightBytesIsFilledWithZeros) {
    EXPECT_EQ(GetActiveID(buffer_.data(), 40), 64);
    EXPECT_EQ(buffer_[7], 0x88);
    EXPECT_EQ(buffer_[8], 0x00);
    EXPECT_EQ(buffer_[39], 0x00);
    EXPECT_EQ(buffer_[40], 0xEE);
}

TEST_F(CardRead, OfNoBytesStillYieldsTheBitCount) {
    for (const short size : std::initializer_list<short>{0, -1, -32768}) {
        SCOPED_TRACE(size);
        EXPECT_EQ(GetActiveID(buffer_.data(), size), 64);
        EXPECT_EQ(buffer_[0], 0xEE);
    }
}

TEST_F(CardRead, WithoutACardYieldsZeroAndNoError) {
    reader_->removeCard();
    DevDat[0].lLastErr = 0x20000;
    EXPECT_EQ(GetActiveID(buffer_.data(), 8), 0);
    EXPECT_EQ(GetLastLibErr(), 0);
    EXPECT_EQ(buffer_[0], 0);
}

TEST_F(CardRead, OfASilentReaderYieldsZeroAndItsErrorWord) {
    bus().fail(0, Fault::NoAnswer, 100);
    EXPECT_EQ(GetActiveID(buffer_.data(), 8), 0);
    EXPECT_EQ(GetLastLibErr(), kReadFailed);
    EXPECT_EQ(bus().takeTrace(), "> 8F 00 00 00 00 00 00 00  identifier\n"
                                 "! no answer\n");
}

TEST_F(CardRead, OfAReaderThatRefusesTriesSixTimes) {
    bus().fail(0, Fault::SendRefused, 100);
    EXPECT_EQ(GetActiveID(buffer_.data(), 8), 0);
    EXPECT_EQ(GetLastLibErr(), kReadFailed);
    EXPECT_EQ(takePausedMicroseconds(), 6 * 80'000U);
}

TEST_F(CardRead, ThatFailsAtTheBitCountKeepsTheBytesItRead) {
    bus().fail(0, Fault::NoAnswer, 1, 1);
    EXPECT_EQ(GetActiveID(buffer_.data(), 8), 0);
    EXPECT_EQ(GetLastLibErr(), kReadFailed);
    EXPECT_EQ(buffer_[0], 0x11);
}

TEST_F(CardRead, ReadsAShortAnswerAsZeros) {
    bus().fail(0, Fault::ShortAnswer, 1);
    EXPECT_EQ(GetActiveID(buffer_.data(), 8), 64);
    EXPECT_EQ(buffer_[2], 0x33);
    EXPECT_EQ(buffer_[3], 0x00);
}

TEST_F(CardRead, WithoutABufferIsRefusedAndSendsNothing) {
    EXPECT_EQ(GetActiveID(nullptr, 8), 0);
    EXPECT_EQ(GetActiveID32(nullptr, 32), 0);
    EXPECT_EQ(GetLastLibErr(), kReadFailed);
    EXPECT_EQ(bus().takeTrace(), "");
}

TEST_F(CardRead, OfAKeyboardlessReaderIsTheSameAfterItsWait) {
    DevDat[0].bTagAdv = 1;
    EXPECT_EQ(GetActiveID(buffer_.data(), 8), 64);
    EXPECT_EQ(GetActiveID32(buffer_.data(), 8), 64);
}

TEST_F(LongRead, IsFiveQueries) {
    EXPECT_EQ(GetActiveID32(buffer_.data(), 32), 250);
    EXPECT_EQ(bus().takeTrace(), "> 8D 00 00 00 00 00 00 00  identifier page\n"
                                 "< 01 02 03 04 05 06 07 08\n"
                                 "> 8D 01 00 00 00 00 00 00  identifier page\n"
                                 "< 09 0A 0B 0C 0D 0E 0F 10\n"
                                 "> 8D 02 00 00 00 00 00 00  identifier page\n"
                                 "< 11 12 13 14 15 16 17 18\n"
                                 "> 8D 03 00 00 00 00 00 00  identifier page\n"
                                 "< 19 1A 1B 1C 1D 1E 1F 20\n"
                                 "> 8E 00 00 00 00 00 00 00  bit count\n"
                                 "< FA 00 00 00 00 00 00 00\n");
    EXPECT_EQ(buffer_[31], 0x20);
    EXPECT_EQ(buffer_[32], 0xEE);
}

TEST_F(LongRead, CopiesAsManyBytesAsAsked) {
    EXPECT_EQ(GetActiveID32(buffer_.data(), 10), 250);
    EXPECT_EQ(buffer_[9], 0x0A);
    EXPECT_EQ(buffer_[10], 0xEE);
}

TEST_F(LongRead, LeavesTheBufferClearWhereverItFails) {
    for (int exchange = 0; exchange < 5; ++exchange) {
        buffer_.fill(0xEE);
        bus().fail(0, Fault::NoAnswer, 1, exchange);
        EXPECT_EQ(GetActiveID32(buffer_.data(), 32), 0) << exchange;
        EXPECT_EQ(GetLastLibErr(), kReadFailed) << exchange;
        EXPECT_EQ(buffer_[0], 0) << exchange;
        EXPECT_EQ(buffer_[31], 0) << exchange;
    }
    EXPECT_EQ(GetActiveID32(buffer_.data(), 32), 250);
    EXPECT_EQ(GetLastLibErr(), 0);
}

TEST_F(LongRead, StopsAtTheFirstFailedSend) {
    bus().fail(0, Fault::SendRefused, 6, 2);
    EXPECT_EQ(GetActiveID32(buffer_.data(), 32), 0);
    EXPECT_EQ(takePausedMicroseconds(), 480'000U);
    EXPECT_EQ(GetActiveID32(buffer_.data(), 32), 250);
}
