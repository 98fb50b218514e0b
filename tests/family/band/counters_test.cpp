// SPDX-License-Identifier: MIT
// What the reader counts, and which tracks hold data.
#include "frame/zelTagBand.h"
#include "tests/family/band/band_device.h"

using namespace zel::test;

namespace {

class BandCounters : public BandLineTest {};
class BandData : public BandLineTest {};

} // namespace

TEST_F(BandCounters, TellTheUptimeLowByteFirst) {
    reader->replyWith("QUP", "RUP0403020108070605");
    EXPECT_EQ(zelBandGetSystemUptime(), 0x01020304);
    EXPECT_EQ(told(), traced("QUP", "RUP0403020108070605"));
}

TEST_F(BandCounters, TellTheCardsReadBehindTheUptime) {
    reader->replyWith("QUP", "RUP0403020108070605");
    EXPECT_EQ(zelBandGetSystemCardsRead(), 0x05060708);
    EXPECT_EQ(told(), traced("QUP", "RUP0403020108070605"));
}

TEST_F(BandCounters, AreSignedNumbersOf32Bits) {
    reader->replyWith("QUP", "RUPFFFFFFFF00000080");
    EXPECT_EQ(zelband_GetSystemUptime(), -1);
    EXPECT_EQ(zelband_GetSystemCardsRead(), INT32_MIN);
}

TEST_F(BandCounters, CountAsTheReaderDoes) {
    reader->setUptime(70'000);
    reader->setCardsRead(300);
    EXPECT_EQ(zelband_GetSystemUptime(), 70'000);
    EXPECT_EQ(zelband_GetSystemCardsRead(), 300);
}

TEST_F(BandCounters, AreFourOf16BitsInside) {
    reader->counters() = {1, 0x0203, 0xFFFE, 40'000};
    for (int index = 0; index < 4; ++index) {
        EXPECT_EQ(zelBandGetSystemInternalCount(index), reader->counters().at(size_t(index)));
        EXPECT_EQ(told(), traced("QDD", "RDD01000302FEFF409C"));
    }
}

TEST_F(BandCounters, AreZeroAtAnotherIndex) {
    reader->counters() = {1, 1, 1, 1};
    for (const int index : {-1, 4, 256, INT_MIN, INT_MAX})
        EXPECT_EQ(zelband_GetSystemInternalCount(index), 0) << index;
}

TEST_F(BandCounters, AreZeroWhenTheReaderFails) {
    reader->setUptime(5);
    reader->setCardsRead(5);
    reader->counters() = {5, 5, 5, 5};
    reader->fail(zel::sim::BandFault::WrongFirstByte, 3);
    EXPECT_EQ(zelband_GetSystemUptime(), 0);
    EXPECT_EQ(zelband_GetSystemCardsRead(), 0);
    EXPECT_EQ(zelband_GetSystemInternalCount(0), 0);
}

TEST_F(BandCounters, TakeAnyReplyOfSuccess) {
    reader->replyWith("QUP", "RxxFF");
    EXPECT_EQ(zelband_GetSystemUptime(), 255);
    reader->replyWith("QDD", "RxxFE");
    EXPECT_EQ(zelband_GetSystemInternalCount(0), 254);
}

TEST_F(BandData, IsToldByTheFourthByteBehindTheMark) {
    EXPECT_EQ(zelBandIsDataAvailable(), 0);
    told();
    reader->swipe(zel::sim::bandCard("%B0000^SIM?", {}, ";000?"));
    EXPECT_EQ(zelBandIsDataAvailable(), 5);
    EXPECT_EQ(told(), traced("QS0", "RS005"));
}

TEST_F(BandData, HasABitForEachTrack) {
    reader->replyWith("QS0", "RS00G");
    EXPECT_EQ(zelband_IsDataAvailable(), 'G' & 7);
}

TEST_F(BandData, IsNoneWithoutTheMark) {
    reader->replyWith("QS0", "RX007");
    EXPECT_EQ(zelband_IsDataAvailable(), 0);
}

TEST_F(BandData, IsNoneWhenTheReaderFails) {
    reader->replyWith("QS0", "ES007");
    EXPECT_EQ(zelband_IsDataAvailable(), 0);
}

TEST_F(BandData, IsForgottenOnDemand) {
    reader->swipe(zel::sim::bandCard({}, ";000?"));
    EXPECT_EQ(zelBandClearDataAvailable(), 1);
    EXPECT_EQ(told(), traced("CD0", "RD0"));
    EXPECT_EQ(zelband_IsDataAvailable(), 0);
}

TEST_F(BandData, IsForgottenByAnyReplyOfSuccess) {
    reader->replyWith("CD0", "Rxx");
    EXPECT_EQ(zelband_ClearDataAvailable(), 1);
    reader->replyWith("CD0", "ED0");
    EXPECT_EQ(zelband_ClearDataAvailable(), 0);
}

TEST_F(BandData, LetsAnOverrunBeForgotten) {
    EXPECT_EQ(zelBandClearOverrun(), 1);
    EXPECT_EQ(told(), traced("CQ", "RQ0"));
    failAt(0);
    EXPECT_EQ(zelBandClearOverrun(), 0);
}
