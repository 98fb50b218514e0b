// SPDX-License-Identifier: MIT
// What a flash makes of a file, how it tells its progress, and how it judges a line.
#include "firmware/flash.h"

#include "firmware/boot_loader.h"
#include "tests/firmware/flash_test.h"

using namespace zel::test;

namespace {

// A boot loader that takes everything and remembers it.
class Recorder : public IBootload {
public:
    int enterBlMode(unsigned char micro) override {
        micros.push_back(micro);
        return 1;
    }
    int sendLine(int count, char* data, char* reply) override {
        lines.emplace_back(data, data + count);
        *reply = lines.size() == refused ? 'R' : status;
        return result;
    }

    std::vector<int> micros;
    std::vector<std::string> lines;
    std::size_t refused = 0;
    char status = '.';
    int result = 1;
};

class Flash : public FlashTest {
protected:
    Flash() { iDevsFnd = 1; }

    FlashReader flash_;
    Recorder recorder_;
};

} // namespace

TEST_F(Flash, RaisesTheProgressAtTheStartAndAtEachTenthThatTheLinesMakeExactly) {
    struct Row {
        int lines;
        int signals;
    };
    for (const Row& row : std::initializer_list<Row>{{0, 1},
                                                     {1, 2},
                                                     {2, 3}, // 50, 100
                                                     {3, 2}, // 33, 66, 100
                                                     {7, 2}, // 14, 28, 42, 57, 71, 85, 100
                                                     {10, 11},
                                                     {15, 6}, // 20, 40, 60, 80, 100
                                                     {1000, 11}}) {
        EXPECT_EQ(flash_.fwFlash(&recorder_, fileOf(row.lines, 1)), 1);
        EXPECT_EQ(takeProgress(), row.signals) << row.lines << " lines";
    }
}

TEST_F(Flash, RaisesTheProgressOfALineThatIsRefusedToo) {
    recorder_.refused = 1;
    recorder_.result = 0;
    EXPECT_EQ(flash_.fwFlash(&recorder_, fileOf(10)), 0);
    EXPECT_EQ(takeProgress(), 2);
    EXPECT_EQ(recorder_.lines.size(), 1U);
}

TEST_F(Flash, CutsALineBehind21Bytes) {
    const std::string whole = bodyLine(21);
    EXPECT_EQ(flash_.fwFlash(&recorder_, file("M0\n" + whole + "\n" + whole + "\r\n" + whole +
                                              "1617\n" + whole + "X\n")),
              1);
    const auto data = bytes(21);
    EXPECT_EQ(recorder_.lines, (std::vector<std::string>(4, {data.begin(), data.end()})));
}

TEST_F(Flash, SendsNoBytesOfAShortLineThatEndsInACarriageReturn) {
    EXPECT_EQ(flash_.fwFlash(&recorder_, file("M0\r\n" + bodyLine(20) + "\r\n:12G4\n:\n")), 1);
    EXPECT_EQ(recorder_.lines, (std::vector<std::string>{"", "\x12", ""}));
}

TEST_F(Flash, PassesTheMicroOnAsAByte) {
    for (const char* text : {"M0\n", "M1\n", ":00\n", "M\n"})
        EXPECT_EQ(flash_.fwFlash(&recorder_, file(text)), 1) << text;
    EXPECT_EQ(recorder_.micros, (std::vector<int>{0, 1, 0xFF, 0xD0}));
}

TEST_F(Flash, EndsAtTheFirstLineThatFails) {
    recorder_.refused = 2;
    EXPECT_EQ(flash_.fwFlash(&recorder_, fileOf(5)), 0);
    EXPECT_EQ(recorder_.lines.size(), 2U);
}

TEST_F(Flash, GoesOnBehindAnEWhateverTheLineMade) {
    recorder_.status = 'E';
    recorder_.result = 0;
    EXPECT_EQ(flash_.fwFlash(&recorder_, fileOf(2)), 1);
    EXPECT_EQ(recorder_.lines.size(), 2U);
}

TEST_F(Flash, JudgesALineByItsLastCharacter) {
    DevDat[0].lLastErr = 7;
    EXPECT_EQ(flash_.fwflashLogs('.', 1), 1);
    EXPECT_EQ(flash_.fwflashLogs('.', 0), 0);
    EXPECT_EQ(flash_.fwflashLogs('E', 0), 1);
    EXPECT_EQ(DevDat[0].lLastErr, 7);
    EXPECT_EQ(flash_.fwflashLogs('R', 1), 0);
    EXPECT_EQ(DevDat[0].lLastErr, 0x90600000);
    for (const char status : {'T', '\x80', '\0'}) {
        SCOPED_TRACE(static_cast<int>(status));
        DevDat[0].lLastErr = 7;
        EXPECT_EQ(flash_.fwflashLogs(status, 1), 0);
        EXPECT_EQ(DevDat[0].lLastErr, 0x90700000);
    }
}

TEST_F(Flash, ReportsNoProgressBesideTheSignal) {
    flash_.sendProgressToEvent(50);
    EXPECT_EQ(takeProgress(), 0);
    EXPECT_EQ(bus().takeTrace(), "");
}
