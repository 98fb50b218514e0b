// SPDX-License-Identifier: MIT
// Card reads through a hidraw node, report by report.
#include "frame/zelTagAPI.h"
#include "tests/hidraw/hidraw_test.h"
#include "tests/support/virtual_time.h"
#include "transport/usb_driver.h"

#include <array>
#include <cerrno>

namespace zel::test {

namespace {

using Id = std::array<unsigned char, 32>;

struct CardRead {
    int bits;
    Id id;
    std::int64_t error;
    bool operator==(const CardRead&) const = default;
};

CardRead readCard() {
    CardRead result = {};
    result.id.fill(0xAA);
    result.bits = GetActiveID(result.id.data(), static_cast<short>(result.id.size()));
    result.error = GetLastLibErr();
    return result;
}

// What the trace gains after a connect.
std::string reports(const MockReader& reader) {
    return reader.trace().substr(std::string("info\n").size());
}

std::string times(int count, const std::string& line) {
    std::string text;
    while (count-- > 0)
        text += line;
    return text;
}

class HidrawExchange : public HidrawTest {
protected:
    void SetUp() override {
        HidrawTest::SetUp();
        reader = &bed.plug(0);
        ASSERT_EQ(connect(), Names{"/dev/hidraw0"});
    }
    MockReader* reader = nullptr;
};

constexpr std::int64_t kIdRead = 0x1000000;
constexpr std::uint64_t kSixPauses = 480'000; // µs, six of 80 ms

TEST_F(HidrawExchange, ReadsBitsAndBytesOfTheCard) {
    EXPECT_EQ(readCard(), (CardRead{64, {0x11, 0x22, 0x33, 0x44, 0x55, 0x66, 0x77, 0x88}, 0}));
}

TEST_F(HidrawExchange, PutsTheReportIdInFrontOfEachReport) {
    readCard();
    EXPECT_EQ(reports(*reader), "set 00 8F 00 00 00 00 00 00 00\n"
                                "get 00 00 00 00 00 00 00 00 00\n"
                                "set 00 8E 00 00 00 00 00 00 00\n"
                                "get 00 00 00 00 00 00 00 00 00\n");
}

TEST_F(HidrawExchange, PassesTheArgumentsOfACommand) {
    Id id;
    GetActiveID32(id.data(), 32);
    EXPECT_EQ(reports(*reader), "set 00 8D 00 00 00 00 00 00 00\n"
                                "get 00 00 00 00 00 00 00 00 00\n"
                                "set 00 8D 01 00 00 00 00 00 00\n"
                                "get 00 00 00 00 00 00 00 00 00\n"
                                "set 00 8D 02 00 00 00 00 00 00\n"
                                "get 00 00 00 00 00 00 00 00 00\n"
                                "set 00 8D 03 00 00 00 00 00 00\n"
                                "get 00 00 00 00 00 00 00 00 00\n"
                                "set 00 8E 00 00 00 00 00 00 00\n"
                                "get 00 00 00 00 00 00 00 00 00\n");
}

TEST_F(HidrawExchange, PingsAReaderThatIsThere) {
    EXPECT_EQ(Ping(), 1u);
    EXPECT_EQ(reports(*reader), "set 00 8A 00 00 00 00 00 00 00\n"
                                "get 00 00 00 00 00 00 00 00 00\n");
}

TEST_F(HidrawExchange, ReachesTheReaderThatIsActive) {
    MockReader& second = bed.plug(1);
    disconnect();
    ASSERT_EQ(connect().back(), "/dev/hidraw1");
    second.behave({.getError = EPIPE});
    SetActDev(1);
    EXPECT_EQ(readCard(), (CardRead{0, {}, kIdRead}));
}

TEST_F(HidrawExchange, ReadsTheRestOfAShortAnswerAsZero) {
    reader->behave({.answerSize = 4});
    EXPECT_EQ(readCard(), (CardRead{64, {0x11, 0x22, 0x33}, 0}));
}

TEST_F(HidrawExchange, ReadsAnAnswerOfTheReportIdAloneAsZeros) {
    reader->behave({.answerSize = 1});
    EXPECT_EQ(readCard(), (CardRead{0, {}, 0}));
}

TEST_F(HidrawExchange, ReadsAnEmptyAnswerAsZeros) {
    reader->behave({.answerSize = 0});
    EXPECT_EQ(readCard(), (CardRead{0, {}, 0}));
}

TEST_F(HidrawExchange, FailsAtOnceWhenAGetIsRefused) {
    reader->behave({.getError = EPIPE});
    EXPECT_EQ(readCard(), (CardRead{0, {}, kIdRead}));
    EXPECT_EQ(reports(*reader), "set 00 8F 00 00 00 00 00 00 00\n"
                                "get 00 00 00 00 00 00 00 00 00\n");
    EXPECT_EQ(takePausedMicroseconds(), 0u);
}

TEST_F(HidrawExchange, TriesARefusedSetSixTimes) {
    reader->behave({.setError = EPIPE});
    EXPECT_EQ(readCard(), (CardRead{0, {}, kIdRead}));
    EXPECT_EQ(reports(*reader), times(6, "set 00 8F 00 00 00 00 00 00 00\n"));
    EXPECT_EQ(takePausedMicroseconds(), kSixPauses);
}

TEST_F(HidrawExchange, SendsNoReportBeyond4096Bytes) {
    std::vector<unsigned char> report(1 + 4097);
    EXPECT_EQ(UsbDriver_SendFR(4097, 0, report.data()), 0);
    EXPECT_EQ(UsbDriver_RecvFR(4097, 0, report.data()), 0);
    EXPECT_EQ(reports(*reader), "");
    EXPECT_EQ(takePausedMicroseconds(), kSixPauses);
}

TEST_F(HidrawExchange, ReadsAgainAfterARefusal) {
    reader->behave({.getError = EPIPE});
    readCard();
    reader->behave({});
    EXPECT_EQ(readCard(), (CardRead{64, {0x11, 0x22, 0x33, 0x44, 0x55, 0x66, 0x77, 0x88}, 0}));
}

// The first query went through, so its bytes are there.
TEST_F(HidrawExchange, FailsWhenTheReaderLeavesInTheMiddleOfARead) {
    reader->behave({.reportsUntilGone = 2});
    EXPECT_EQ(readCard(), (CardRead{0, {0x11, 0x22, 0x33, 0x44, 0x55, 0x66, 0x77, 0x88}, kIdRead}));
    EXPECT_EQ(reports(*reader), "set 00 8F 00 00 00 00 00 00 00\n"
                                "get 00 00 00 00 00 00 00 00 00\n" +
                                    times(6, "set 00 8E 00 00 00 00 00 00 00\n"));
    EXPECT_EQ(takePausedMicroseconds(), kSixPauses);
}

TEST_F(HidrawExchange, PingsAReaderThatLeftWithTheClockInPlaceOfATime) {
    reader->behave({.reportsUntilGone = 0});
    const std::uint64_t now = virtualMicroseconds() / 1000;
    EXPECT_EQ(Ping(), now);
}

TEST_F(HidrawExchange, SetsAReportOfAnotherIdWithNoZeroInFront) {
    const unsigned char report[9] = {1, 2, 3, 4, 5, 6, 7, 8, 9};
    UsbDriver_SendFR(8, 0, report);
    EXPECT_EQ(reports(*reader), times(6, "set 01 02 03 04 05 06 07 08 09\n"));
}

TEST_F(HidrawExchange, GetsAReportOfAnotherIdByItsId) {
    unsigned char report[9] = {1};
    UsbDriver_RecvFR(8, 0, report);
    EXPECT_EQ(reports(*reader), "get 01 00 00 00 00 00 00 00 00\n");
}

TEST_F(HidrawExchange, RefusesAReportBeyond4096Bytes) {
    std::array<unsigned char, 4098> report = {};
    EXPECT_EQ(UsbDriver_SendFR(4097, 0, report.data()), 0);
    EXPECT_EQ(UsbDriver_RecvFR(4097, 0, report.data()), 0);
    EXPECT_EQ(reports(*reader), "");
}

} // namespace

} // namespace zel::test
