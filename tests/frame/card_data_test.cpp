// SPDX-License-Identifier: MIT
// The exported calls on card data: which devices they serve, and what they yield where none does.
#include "tests/support/library_test.h"
#include "tests/support/temporary_folder.h"

using namespace zel::test;

namespace {

class UnservedCardData : public LibraryTest {
protected:
    UnservedCardData() { SetUnsupportedProductErrorCode(-7); }
    ~UnservedCardData() override { SetUnsupportedProductErrorCode(0); }

    static void expectNoReader() {
        EXPECT_EQ(GetQueuedID(1, 1), -7);
        EXPECT_EQ(GetQueuedID_index(0), -7);
        EXPECT_EQ(getActiveCardData(), -7);
        EXPECT_EQ(getActiveCardData_byte(0), 0xF9);
        EXPECT_EQ(SetRawPayload(0, 0, 0, 0, 0, 0, 0, 0), nullptr);
        EXPECT_EQ(SetRawPayload_index(8, 0), -7);
        EXPECT_EQ(GetRawPayload_index(1), 0xF9);
        EXPECT_EQ(GetRawPayload_index(10), 0xF9);
        EXPECT_EQ(setSourceEvent(5), 0);
        EXPECT_EQ(DevDat[0].lSourceEvent, 0U);
        EXPECT_EQ(DumpRawFeatureReports("dump.txt"), 0);
        EXPECT_FALSE(std::filesystem::exists("dump.txt"));
        EXPECT_EQ(GetRawRepDataI(nullptr, 8), 0);
    }

    TemporaryFolder folder_;
};

class CardDataCall : public LibraryTest {
protected:
    TemporaryFolder folder_;
};

} // namespace

TEST_F(UnservedCardData, IsRefusedWithNoDevice) {
    expectNoReader();
    EXPECT_EQ(bus().takeTrace(), "");
}

TEST_F(UnservedCardData, IsRefusedForAnotherProduct) {
    connectReader();
    for (const unsigned product : {0U, 3U, 8U}) {
        SCOPED_TRACE(product);
        DevDat[0].iProduct = product;
        expectNoReader();
    }
    EXPECT_EQ(bus().takeTrace(), "");
}

TEST_F(UnservedCardData, IsRefusedWithTheActiveIndexOutsideTheTable) {
    connectReader();
    for (const short device : std::initializer_list<short>{1, -1, 127, 32767}) {
        SCOPED_TRACE(device);
        iActDev = device;
        expectNoReader();
    }
    iActDev = 0;
    EXPECT_EQ(bus().takeTrace(), "");
}

TEST_F(CardDataCall, ReachesAProximityReader) {
    const auto reader = connectReader();
    zel::sim::QueuedId entry;
    entry.id[0] = 0x12;
    reader->queue(entry);
    zel::sim::Card card;
    card.data[39] = 0x34;
    reader->present(card);
    EXPECT_EQ(GetQueuedID(0, 0), 1);
    EXPECT_EQ(GetQueuedID_index(0), 0x12);
    EXPECT_EQ(getActiveCardData(), 1);
    EXPECT_EQ(getActiveCardData_byte(39), 0x34);
    EXPECT_STREQ(SetRawPayload(0x88, 1, 4, 0, 0, 0, 0, 0), "00.00.00.00.00.00.00.34");
    EXPECT_EQ(SetRawPayload_index(0, 0), 1);
    EXPECT_EQ(GetRawPayload_index(8), 0);
    EXPECT_EQ(setSourceEvent(5), 1);
    EXPECT_EQ(DevDat[0].lSourceEvent, 5U);
    EXPECT_EQ(DumpRawFeatureReports("dump.txt"), 1);
    EXPECT_TRUE(std::filesystem::exists("dump.txt"));
}

TEST_F(CardDataCall, OfRawReportDataDoesNothing) {
    connectReader();
    unsigned char buffer[] = {0xEE, 0xEE};
    EXPECT_EQ(GetRawRepDataI(buffer, 2), 0);
    EXPECT_EQ(buffer[0], 0xEE);
    EXPECT_EQ(GetRawRepDataI(nullptr, -1), 0);
    EXPECT_EQ(bus().takeTrace(), "");
}

TEST_F(CardDataCall, WithoutAFileNameIsRefused) {
    connectReader();
    EXPECT_EQ(DumpRawFeatureReports(nullptr), 0);
    EXPECT_EQ(bus().takeTrace(), "");
}
