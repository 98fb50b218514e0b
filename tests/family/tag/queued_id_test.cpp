// SPDX-License-Identifier: MIT
// An identifier that the reader queued, in five pages.
#include "family/tag/card_data.h"
#include "tests/family/tag/config_test.h"

#include <algorithm>
#include <cstring>
#include <iterator>
#include <utility>

using namespace zel::test;
using zel::sim::Fault;

namespace {

constexpr std::int64_t kFailed = 0x1000000;
constexpr int kPages = 5;

// Bytes 01 to 20 as the identifier.
zel::sim::QueuedId numberedEntry() {
    zel::sim::QueuedId entry = {.age = 0x8234, .byte2 = 0xF5, .word3 = -2, .byte7 = 0xAA};
    for (unsigned i = 0; i < entry.id.size(); ++i)
        entry.id[i] = static_cast<std::uint8_t>(i + 1);
    return entry;
}

class QueuedRead : public ConfigTest {
protected:
    QueuedRead() : reader_(connectReader()) {
        reader_->queue(numberedEntry());
        fillBuffers(0xEE);
    }
    ~QueuedRead() override { fillBuffers(0); }

    static void fillBuffers(int byte) {
        std::memset(&QueuedID, byte, sizeof QueuedID);
        std::memset(activeIDBuf, byte, sizeof activeIDBuf);
    }

    // How many bytes from the start count up from 1; `behind` are all the others.
    template <std::size_t Size>
    static long counted(const std::uint8_t (&bytes)[Size], std::uint8_t behind) {
        std::uint8_t next = 0;
        const auto* const end = std::find_if(std::begin(bytes), std::end(bytes),
                                             [&](auto byte) { return byte != ++next; });
        const auto others = std::count(end, std::end(bytes), behind);
        return others == std::end(bytes) - end ? end - std::begin(bytes) : -1;
    }

    std::shared_ptr<zel::sim::TagReader> reader_;
};

class QueuedElement : public QueuedRead {
protected:
    QueuedElement() {
        GetQueuedID(0, 0);
        bus().takeTrace();
    }
};

} // namespace

TEST_F(QueuedRead, IsFiveQueries) {
    record().lLastErr = 0x55;
    EXPECT_EQ(GetQueuedID(1, 1), 1);
    EXPECT_EQ(bus().takeTrace(), "> 8C 02 00 03 00 00 00 00  service: queued identifier page 0\n"
                                 "< 01 02 03 04 05 06 07 08\n"
                                 "> 8C 02 01 03 00 00 00 00  service: queued identifier page 1\n"
                                 "< 09 0A 0B 0C 0D 0E 0F 10\n"
                                 "> 8C 02 02 03 00 00 00 00  service: queued identifier page 2\n"
                                 "< 11 12 13 14 15 16 17 18\n"
                                 "> 8C 02 03 03 00 00 00 00  service: queued identifier page 3\n"
                                 "< 19 1A 1B 1C 1D 1E 1F 20\n"
                                 "> 8C 02 04 03 00 00 00 00  service: queued identifier page 4\n"
                                 "< 34 82 F5 FE FF 00 00 AA\n");
    EXPECT_EQ(GetLastLibErr(), 0);
    EXPECT_EQ(takePausedMicroseconds(), 0U);
}

TEST_F(QueuedRead, PassesItsFlagsOnAsTwoBitsOfTheMask) {
    const struct {
        short first;
        short second;
        const char* mask;
    } rows[] = {{0, 0, "00"}, {1, 0, "01"},     {0, 1, "02"},   {1, 1, "03"},
                {2, 0, "01"}, {0, 0x100, "02"}, {-1, -1, "03"}, {-32768, 0, "01"}};
    for (const auto& row : rows) {
        EXPECT_EQ(GetQueuedID(row.first, row.second), 1);
        const std::string trace = bus().takeTrace();
        for (int page = 0; page < kPages; ++page) {
            const std::string sent = "> 8C 02 0" + std::to_string(page) + ' ' + row.mask + ' ';
            EXPECT_NE(trace.find(sent), std::string::npos) << row.first << ", " << row.second;
        }
    }
}

TEST_F(QueuedRead, StoresTheEntryLowByteFirst) {
    EXPECT_EQ(GetQueuedID(0, 0), 1);
    EXPECT_EQ(counted(QueuedID.id, 0), 32);
    EXPECT_EQ(QueuedID.age, 0x8234U) << "unsigned";
    EXPECT_EQ(QueuedID.word40, -2);
    EXPECT_EQ(QueuedID.byte42, 0xF5);
    EXPECT_EQ(QueuedID.byte43, 0xAA);
}

TEST_F(QueuedRead, KeepsNeitherByte5NorByte6AndLeavesItsLastFourBytesZero) {
    reader_->replyWith({0x8C, 2, 4}, {0x11, 0x22, 0x33, 0x44, 0x55, 0x66, 0x77, 0x88});
    EXPECT_EQ(GetQueuedID(0, 0), 1);
    const unsigned char behindId[] = {0x11, 0x22, 0,    0,    0, 0, 0, 0,
                                      0x44, 0x55, 0x33, 0x88, 0, 0, 0, 0};
    const auto* const bytes = reinterpret_cast<const unsigned char*>(&QueuedID);
    EXPECT_TRUE(std::equal(std::begin(behindId), std::end(behindId), bytes + 32));
    EXPECT_EQ(sizeof QueuedID, 32 + sizeof behindId);
}

TEST_F(QueuedRead, EndsWithTheWholeIdentifierInTheActiveBuffer) {
    activeIDBufSz = 5;
    EXPECT_EQ(GetQueuedID(0, 0), 1);
    EXPECT_EQ(counted(activeIDBuf, 0), 32);
    EXPECT_EQ(activeIDBufSz, 5);
}

// A failed page leaves what stood in the active buffer; before, each page copied what stood before
// it.
TEST_F(QueuedRead, ThatFailsAtAPageKeepsThePagesBefore) {
    const long inActiveBuffer[kPages] = {0, 0, 8, 16, 24};
    for (int page = 0; page < kPages; ++page)
        for (const int exchange : {2 * page + 1, 2 * page + 2}) {
            fillBuffers(0xEE);
            failFor(exchange);
            EXPECT_EQ(GetQueuedID(1, 0), 0) << exchange;
            EXPECT_EQ(GetLastLibErr(), kFailed) << exchange;
            EXPECT_EQ(counted(QueuedID.id, 0), 8 * page) << exchange;
            EXPECT_EQ(QueuedID.age, 0U);
            EXPECT_EQ(counted(activeIDBuf, page == 0 ? 0xEE : 0), inActiveBuffer[page]) << exchange;
            bus().failExchange(0, 1, 0);
        }
    EXPECT_EQ(GetQueuedID(1, 0), 1);
    EXPECT_EQ(GetLastLibErr(), 0);
}

TEST_F(QueuedRead, EndsAtTheFirstReportThatIsRefused) {
    failFor(3);
    EXPECT_EQ(GetQueuedID(0, 1), 0);
    EXPECT_EQ(bus().takeTrace(),
              "> 8C 02 00 02 00 00 00 00  service: queued identifier page 0\n"
              "< 01 02 03 04 05 06 07 08\n" +
                  refused("> 8C 02 01 02 00 00 00 00  service: queued identifier page 1"));
}

TEST_F(QueuedRead, EndsAtTheFirstAnswerThatIsMissing) {
    bus().failExchange(0, 2);
    EXPECT_EQ(GetQueuedID(0, 1), 0);
    EXPECT_EQ(bus().takeTrace(), "> 8C 02 00 02 00 00 00 00  service: queued identifier page 0\n"
                                 "! no answer\n");
    EXPECT_EQ(takePausedMicroseconds(), 0U);
}

TEST_F(QueuedRead, OfNothingQueuedIsAllZeros) {
    reader_->queue({});
    EXPECT_EQ(GetQueuedID(1, 1), 1);
    const tsQueuedID nothing = {};
    EXPECT_EQ(std::memcmp(&QueuedID, &nothing, sizeof nothing), 0);
}

TEST_F(QueuedRead, TakesAShortAnswerAsZerosBehindIt) {
    bus().fail(0, Fault::ShortAnswer);
    EXPECT_EQ(GetQueuedID(0, 0), 1);
    EXPECT_EQ(QueuedID.id[2], 3);
    EXPECT_EQ(QueuedID.id[3], 0);
    EXPECT_EQ(QueuedID.id[8], 9);
}

TEST_F(QueuedElement, IsAByteOfTheIdentifierBelow32) {
    for (short index = 0; index < 32; ++index)
        EXPECT_EQ(GetQueuedID_index(index), index + 1);
    QueuedID.id[31] = 0xFF;
    EXPECT_EQ(GetQueuedID_index(31), 255) << "unsigned";
}

TEST_F(QueuedElement, IsAFieldOfTheEntryFrom32To35) {
    EXPECT_EQ(GetQueuedID_index(32), -2) << "signed";
    EXPECT_EQ(GetQueuedID_index(33), 0x8234) << "unsigned";
    EXPECT_EQ(GetQueuedID_index(34), 0xF5);
    EXPECT_EQ(GetQueuedID_index(35), 0xAA);
}

TEST_F(QueuedElement, Has64BitsOfTheAge) {
    QueuedID.age = 0x0123456789ABCDEF;
    EXPECT_EQ(GetQueuedID_index(33), 0x0123456789ABCDEF);
}

TEST_F(QueuedElement, IsZeroAtAnyOtherIndex) {
    std::memset(&QueuedID, 0xFF, sizeof QueuedID);
    for (const short index : std::initializer_list<short>{36, -1, 47, 256, 32767, -32768})
        EXPECT_EQ(GetQueuedID_index(index), 0) << index;
}

TEST_F(QueuedElement, AsksNoDevice) {
    for (short index = -2; index < 40; ++index)
        GetQueuedID_index(index);
    EXPECT_EQ(bus().takeTrace(), "");
}
