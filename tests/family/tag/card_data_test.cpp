// SPDX-License-Identifier: MIT
// The data that the reader read from the card, in five blocks.
#include "family/tag/card_data.h"
#include "tests/family/tag/config_test.h"

#include <algorithm>
#include <cstring>
#include <iterator>

using namespace zel::test;
using zel::sim::Fault;

namespace {

constexpr std::int64_t kFailed = 0x1000000;
constexpr int kBlocks = 5;

class CardDataRead : public ConfigTest {
protected:
    CardDataRead() {
        zel::sim::Card card = zel::sim::card26(26, 3512);
        for (unsigned i = 0; i < card.data.size(); ++i)
            card.data[i] = static_cast<std::uint8_t>(i + 1);
        connectReader()->present(card);
        fillBuffer(0xEE);
    }
    ~CardDataRead() override { fillBuffer(0); }

    static void fillBuffer(int byte) { std::memset(activeCardDataBuf, byte, 256); }

    // The first bytes count up from 1, the others are as they were.
    static void expectBytes(int count) {
        for (int i = 0; i < 256; ++i)
            EXPECT_EQ(activeCardDataBuf[i], i < count ? i + 1 : 0xEE) << i;
    }
};

class CardDataByte : public CardDataRead {};

} // namespace

TEST_F(CardDataRead, IsFiveQueries) {
    record().lLastErr = 0x55;
    EXPECT_EQ(getActiveCardData(), 1);
    EXPECT_EQ(bus().takeTrace(), "> 88 01 00 00 00 00 00 00  card data\n"
                                 "< 01 02 03 04 05 06 07 08\n"
                                 "> 88 01 01 00 00 00 00 00  card data\n"
                                 "< 09 0A 0B 0C 0D 0E 0F 10\n"
                                 "> 88 01 02 00 00 00 00 00  card data\n"
                                 "< 11 12 13 14 15 16 17 18\n"
                                 "> 88 01 03 00 00 00 00 00  card data\n"
                                 "< 19 1A 1B 1C 1D 1E 1F 20\n"
                                 "> 88 01 04 00 00 00 00 00  card data\n"
                                 "< 21 22 23 24 25 26 27 28\n");
    EXPECT_EQ(GetLastLibErr(), 0);
    EXPECT_EQ(takePausedMicroseconds(), 0U);
}

TEST_F(CardDataRead, LeavesTheBytesFrom40OnAsTheyWere) {
    EXPECT_EQ(getActiveCardData(), 1);
    expectBytes(40);
}

TEST_F(CardDataRead, ThatFailsKeepsTheBlocksBeforeAndClearsNothing) {
    for (int block = 0; block < kBlocks; ++block)
        for (const int exchange : {2 * block + 1, 2 * block + 2}) {
            fillBuffer(0xEE);
            failFor(exchange);
            EXPECT_EQ(getActiveCardData(), 0) << exchange;
            EXPECT_EQ(GetLastLibErr(), kFailed) << exchange;
            expectBytes(8 * block);
            bus().failExchange(0, 1, 0);
        }
    EXPECT_EQ(getActiveCardData(), 1);
    EXPECT_EQ(GetLastLibErr(), 0);
}

TEST_F(CardDataRead, EndsAtTheFirstReportThatIsRefused) {
    failFor(1);
    EXPECT_EQ(getActiveCardData(), 0);
    EXPECT_EQ(bus().takeTrace(), refused("> 88 01 00 00 00 00 00 00  card data"));
}

TEST_F(CardDataRead, EndsAtTheFirstAnswerThatIsMissing) {
    bus().failExchange(0, 4);
    EXPECT_EQ(getActiveCardData(), 0);
    EXPECT_EQ(bus().takeTrace(), "> 88 01 00 00 00 00 00 00  card data\n"
                                 "< 01 02 03 04 05 06 07 08\n"
                                 "> 88 01 01 00 00 00 00 00  card data\n"
                                 "! no answer\n");
    EXPECT_EQ(takePausedMicroseconds(), 0U);
}

TEST_F(CardDataByte, IsOneOf256) {
    for (int i = 0; i < 256; ++i)
        activeCardDataBuf[i] = static_cast<std::uint8_t>(255 - i);
    for (short index = 0; index < 256; ++index)
        EXPECT_EQ(getActiveCardData_byte(index), 255 - index);
    EXPECT_EQ(bus().takeTrace(), "");
}

TEST_F(CardDataByte, IsZeroAtAnyOtherIndex) {
    for (const short index : std::initializer_list<short>{-1, 256, 257, 32767, -32768})
        EXPECT_EQ(getActiveCardData_byte(index), 0) << index;
}

TEST_F(CardDataByte, OfAnotherDeviceTakesThePlaceOfTheFirstOnes) {
    getActiveCardData();
    const auto second = plugReader("second");
    zel::sim::Card card;
    card.data.fill(0x77);
    second->present(card);
    USBDisconnect();
    cbIndex = 0;
    EXPECT_EQ(connect(), 2);
    EXPECT_EQ(SetActDev(1), 1);
    EXPECT_EQ(getActiveCardData(), 1);
    EXPECT_EQ(SetActDev(0), 1);
    EXPECT_EQ(getActiveCardData_byte(0), 0x77) << "the buffer is shared";
}

TEST_F(CardDataRead, OfNoiseStaysInsideTheBuffer) {
    bus().fail(0, Fault::Garbage, 10);
    EXPECT_EQ(getActiveCardData(), 1);
    EXPECT_TRUE(std::all_of(activeCardDataBuf + 40, activeCardDataBuf + 256,
                            [](int byte) { return byte == 0xEE; }));
}

TEST(SourceEvent, IsKeptWithTheRecordAsItIs) {
    iDevsFnd = 1;
    iActDev = 0;
    DevDat[0].iProduct = 1;
    EXPECT_EQ(setSourceEvent(UINTPTR_MAX), 1);
    EXPECT_EQ(DevDat[0].lSourceEvent, UINTPTR_MAX);
    EXPECT_EQ(setSourceEvent(0), 1);
    EXPECT_EQ(DevDat[0].lSourceEvent, 0U);
    iDevsFnd = 0;
    DevDat[0].iProduct = 0;
}
