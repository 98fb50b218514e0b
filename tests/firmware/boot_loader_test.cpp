// SPDX-License-Identifier: MIT
// What a boot loader answers to a line, and what the loader makes of it.
#include "tests/firmware/boot_loader_test.h"

using namespace zel::test;
using zel::sim::TagBootKind;

TEST_F(BootLoader, IsSentNothingOutsideALineOf21Bytes) {
    enterKind(TagBootKind::Slow);
    EXPECT_EQ(sendLine(1000), 1);
    EXPECT_EQ(boot().memory(), bytes(21));
    EXPECT_EQ(loader_.sendLine(-1, nullptr, nullptr), 1);
    EXPECT_EQ(boot().memory(), bytes(21));
}

TEST_F(BootLoader, MayBeBusyTwiceWithALine) {
    enterKind(TagBootKind::Slow);
    boot().options().lineBusy = 2;
    EXPECT_EQ(sendLine(8), 1);
    EXPECT_EQ(status_, '.');
}

TEST_F(BootLoader, IsGivenUpAtTheThirdBusyAnswerToALine) {
    enterKind(TagBootKind::Slow);
    boot().options().lineBusy = 3;
    const int before = bus().exchanges(0);
    EXPECT_EQ(sendLine(8), 0);
    EXPECT_EQ(bus().exchanges(0) - before, 3 + 3);
    EXPECT_EQ(status_, 'T');
    EXPECT_EQ(word(), 0x90400000);
}

TEST_F(BootLoader, TakesALineWithAnEAsWell) {
    enterKind(TagBootKind::Slow);
    boot().options().reply[1] = {0, 'E', '>'};
    EXPECT_EQ(sendLine(8), 1);
    EXPECT_EQ(status_, 'E');
    EXPECT_EQ(fastBootloader, 1);
    EXPECT_EQ(word(), 0);
}

TEST_F(BootLoader, RefusesALineWithAnyOtherCharacter) {
    for (const char status : {'R', 'W', '\0'}) {
        const std::int64_t before = DevDat[0].lLastErr = 7;
        EXPECT_EQ(verdict(status, '>'), 0U);
        EXPECT_NE(word(), before);
        EXPECT_EQ(word(), 0x90400000);
        EXPECT_EQ(fastBootloader + delayNextLine + ReaderIsLark, 0) << "it tells nothing";
    }
}

TEST_F(BootLoader, IsPolledAgainAtABusyAnswerThatTellsNothing) {
    DevDat[0].lLastErr = 7;
    EXPECT_EQ(verdict('T', '>'), kPollAgain);
    EXPECT_EQ(word(), 7);
    EXPECT_EQ(fastBootloader + delayNextLine + ReaderIsLark, 0);
}

TEST_F(BootLoader, TellsItsKindWithEachLine) {
    struct Row {
        char detail;
        int lark, fast, delay;
    };
    for (const Row& row : std::initializer_list<Row>{
             {'W', 1, 0, 1}, {'>', 0, 1, 0}, {';', 0, 1, 1}, {'\0', 0, 0, 1}, {'x', 0, 0, 1}}) {
        forget();
        EXPECT_EQ(verdict('.', row.detail), 1U);
        EXPECT_EQ(ReaderIsLark, row.lark) << row.detail;
        EXPECT_EQ(fastBootloader, row.fast) << row.detail;
        EXPECT_EQ(delayNextLine, row.delay) << row.detail;
    }
}

TEST_F(BootLoader, IsRememberedAsLarkAndFastForGood) {
    verdict('.', 'W');
    verdict('.', '>');
    EXPECT_EQ(verdict('.', 'x'), 1U);
    EXPECT_EQ(ReaderIsLark, 1);
    EXPECT_EQ(fastBootloader, 1);
    EXPECT_EQ(delayNextLine, 1) << "this one is told anew with each line";
}

TEST_F(BootLoader, LeavesTheMarkOfNoReplyWhenAFrameIsNotSent) {
    for (int frame = 1; frame <= 3; ++frame) {
        SCOPED_TRACE(frame);
        enterKind(TagBootKind::Slow);
        DevDat[0].lLastErr = 0;
        bus().failExchange(0, frame, 6);
        EXPECT_EQ(sendLine(8), 0);
        EXPECT_EQ(status_, kNoReply);
        EXPECT_EQ(word(), 0x90900000);
        USBDisconnect();
        bus().clear();
        bus().startTrace();
        cbIndex = 0;
    }
}

TEST_F(BootLoader, LeavesTheMarkOfNoReplyWhenTheFirstPollFails) {
    enterKind(TagBootKind::Slow);
    bus().fail(0, zel::sim::Fault::NoAnswer);
    EXPECT_EQ(sendLine(8), 0);
    EXPECT_EQ(status_, kNoReply);
    EXPECT_EQ(word(), 0x90200000);
}

TEST_F(BootLoader, LeavesTheBusyAnswerWhenALaterPollFails) {
    enterKind(TagBootKind::Slow);
    boot().options().lineBusy = 1;
    bus().fail(0, zel::sim::Fault::NoAnswer, 1, 1);
    EXPECT_EQ(sendLine(8), 0);
    EXPECT_EQ(status_, 'T');
    EXPECT_EQ(word(), 0x90200000);
}

TEST_F(BootLoader, NeedsNoPlaceForItsLastAnswer) {
    enterKind(TagBootKind::Slow);
    std::vector<std::uint8_t> data = bytes(3);
    EXPECT_EQ(loader_.sendLine(3, reinterpret_cast<char*>(data.data()), nullptr), 1);
    EXPECT_EQ(boot().memory(), bytes(3));
}

TEST_F(BootLoader, TellsItsWordsInRecord0WhicheverDeviceIsActive) {
    const auto readers = connectTwo();
    readers[1]->bootLoader().options().reply[0] = {0, 'R'};
    EXPECT_EQ(loader_.enterBlMode(0), 0);
    EXPECT_EQ(words(), (Words{0x90300000, 0}));
    EXPECT_FALSE(readers[0]->bootLoader().isRunning());
    EXPECT_TRUE(readers[1]->bootLoader().isRunning());
}
