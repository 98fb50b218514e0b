// SPDX-License-Identifier: MIT
// The frames and polls of a line and the pauses between them, for each kind of boot loader.
#include "tests/firmware/boot_loader_test.h"

using namespace zel::test;
using zel::sim::TagBootKind;

TEST_F(BootLoader, ThatIsSlowIsLeft10MillisecondsBehindEachFrame) {
    enterKind(TagBootKind::Slow);
    EXPECT_EQ(traceOfLine(21), "> 07 01 02 03 04 05 06 07  line 1 frame 1\n"
                               "~ 10 ms\n"
                               "> 07 08 09 0A 0B 0C 0D 0E  line 1 frame 2\n"
                               "~ 10 ms\n"
                               "> 07 0F 10 11 12 13 14 15  line 1 frame 3\n"
                               "~ 10 ms\n"
                               "~ 2 ms\n"
                               "< 00 2E 00 00 00 00 00 00\n");
    EXPECT_EQ(delayNextLine, 1);
}

TEST_F(BootLoader, ThatIsSlowIsLeft50MillisecondsFromTheSecondLineOn) {
    enterKind(TagBootKind::Slow);
    traceOfLine(21);
    EXPECT_EQ(traceOfLine(8), "> 07 01 02 03 04 05 06 07  line 2 frame 1\n"
                              "~ 10 ms\n"
                              "> 01 08 00 00 00 00 00 00  line 2 frame 2\n"
                              "~ 10 ms\n"
                              "> 00 00 00 00 00 00 00 00  line 2 frame 3\n"
                              "~ 10 ms\n"
                              "~ 50 ms\n"
                              "< 00 2E 00 00 00 00 00 00\n");
}

TEST_F(BootLoader, ThatIsFastIsLeftNoPauseButTwoMillisecondsFromTheSecondLineOn) {
    enterKind(TagBootKind::Fast);
    EXPECT_EQ(traceOfLine(1), "> 01 01 00 00 00 00 00 00  line 1 frame 1\n"
                              "~ 10 ms\n"
                              "> 00 00 00 00 00 00 00 00  line 1 frame 2\n"
                              "~ 10 ms\n"
                              "> 00 00 00 00 00 00 00 00  line 1 frame 3\n"
                              "~ 10 ms\n"
                              "~ 2 ms\n"
                              "< 00 2E 3E 00 00 00 00 00\n");
    EXPECT_EQ(traceOfLine(15), "> 07 01 02 03 04 05 06 07  line 2 frame 1\n"
                               "> 07 08 09 0A 0B 0C 0D 0E  line 2 frame 2\n"
                               "> 01 0F 00 00 00 00 00 00  line 2 frame 3\n"
                               "~ 2 ms\n"
                               "< 00 2E 3E 00 00 00 00 00\n");
}

TEST_F(BootLoader, WithFastFramesAloneIsStillPolledAfter50Milliseconds) {
    enterKind(TagBootKind::FastFrames);
    traceOfLine(21);
    EXPECT_EQ(traceOfLine(7), "> 07 01 02 03 04 05 06 07  line 2 frame 1\n"
                              "> 00 00 00 00 00 00 00 00  line 2 frame 2\n"
                              "> 00 00 00 00 00 00 00 00  line 2 frame 3\n"
                              "~ 50 ms\n"
                              "< 00 2E 3B 00 00 00 00 00\n");
}

TEST_F(BootLoader, OfTheLarkLineNeedsNoPausesFromTheFirstLineOn) {
    enterKind(TagBootKind::Lark);
    boot().options().lineBusy = 2;
    for (const char* line : {"1", "2"})
        EXPECT_EQ(traceOfLine(0), "> 00 00 00 00 00 00 00 00  line " + std::string(line) +
                                      " frame 1\n"
                                      "> 00 00 00 00 00 00 00 00  line " +
                                      line +
                                      " frame 2\n"
                                      "> 00 00 00 00 00 00 00 00  line " +
                                      line +
                                      " frame 3\n"
                                      "~ 2 ms\n"
                                      "< 00 54 00 00 00 00 00 00\n"
                                      "~ 50 ms\n"
                                      "< 00 54 00 00 00 00 00 00\n"
                                      "~ 50 ms\n"
                                      "< 00 2E 57 00 00 00 00 00\n");
}

TEST_F(BootLoader, OfAnotherMicroIsPolledAfter80Milliseconds) {
    for (const int micro : {1, 0xFF})
        for (const int lark : {0, 1})
            for (const int delay : {0, 1})
                for (unsigned char left = 0; left <= 2; ++left) {
                    SCOPED_TRACE(::testing::Message()
                                 << "micro " << micro << " lark " << lark << " delay " << delay
                                 << " left " << int{left});
                    giTargetMicro = micro;
                    ReaderIsLark = lark;
                    delayNextLine = delay;
                    EXPECT_EQ(pauseBeforePoll(left), 80'000U);
                }
}

TEST_F(BootLoader, OfTheFirstMicroIsPolledByItsKind) {
    struct Row {
        int lark;
        int delay;
        unsigned char left;
        std::uint64_t pause;
    };
    for (const Row& row : std::initializer_list<Row>{{1, 0, 2, 2'000},
                                                     {1, 1, 2, 2'000},
                                                     {1, 0, 1, 50'000},
                                                     {1, 0, 0, 50'000},
                                                     {1, 0, 3, 50'000},
                                                     {0, 1, 2, 50'000},
                                                     {0, 1, 0, 50'000},
                                                     {0, 0, 2, 2'000},
                                                     {0, 0, 0, 2'000}}) {
        ReaderIsLark = row.lark;
        delayNextLine = row.delay;
        EXPECT_EQ(pauseBeforePoll(row.left), row.pause)
            << row.lark << ' ' << row.delay << ' ' << int{row.left};
    }
}

TEST_F(BootLoader, OfAnotherMicroKeepsItsWholeConversation) {
    enterKind(TagBootKind::Slow, 1);
    boot().options().lineBusy = 1;
    EXPECT_EQ(traceOfLine(8), "> 07 01 02 03 04 05 06 07  line 1 frame 1\n"
                              "~ 10 ms\n"
                              "> 01 08 00 00 00 00 00 00  line 1 frame 2\n"
                              "~ 10 ms\n"
                              "> 00 00 00 00 00 00 00 00  line 1 frame 3\n"
                              "~ 10 ms\n"
                              "~ 80 ms\n"
                              "< 00 54 00 00 00 00 00 00\n"
                              "~ 80 ms\n"
                              "< 00 2E 00 00 00 00 00 00\n");
}

TEST_F(BootLoader, OfTheLarkLineMayAskForUpToFourSeconds) {
    EXPECT_EQ(pauseOf({0, '.', 'W', 0x01, 0x00}), 1U);
    EXPECT_EQ(pauseOf({0, 'E', 0, 0xA0, 0x0F}), 4000U) << "an earlier reply told the line";
    EXPECT_EQ(pauseOf({0, '.', 'W', 0xA1, 0x0F}), 0U);
    EXPECT_EQ(pauseOf({0, '.', 'W', 0x00, 0x00}), 0U);
    EXPECT_EQ(pauseOf({0, '.', 'W', 0x00, 0x01}), 256U);
    EXPECT_EQ(pauseOf({0, '.', 'W', 0xFF, 0xFF}), 0U);
}

TEST_F(BootLoader, OfAnotherLineAsksInVain) {
    for (const int delay : {1, 4000, 4001})
        EXPECT_EQ(pauseOf({0, '.', '>', static_cast<std::uint8_t>(delay),
                           static_cast<std::uint8_t>(delay >> 8)}),
                  0U)
            << delay;
}

TEST_F(BootLoader, OfTheLarkLineIsLeftTheTimeThatItAsksForBeforeTheNextLine) {
    enterKind(TagBootKind::Lark);
    boot().options().delay = 4000;
    EXPECT_EQ(traceOfLine(0), "> 00 00 00 00 00 00 00 00  line 1 frame 1\n"
                              "> 00 00 00 00 00 00 00 00  line 1 frame 2\n"
                              "> 00 00 00 00 00 00 00 00  line 1 frame 3\n"
                              "~ 2 ms\n"
                              "< 00 2E 57 A0 0F 00 00 00\n"
                              "~ 4000 ms\n");
    traceOfLine(0);
}

TEST_F(BootLoader, HasItsPauseAnewWhenASignalCutsItShort) {
    connectKind(TagBootKind::Slow);
    for (const int cuts : {1, 2, 7}) {
        SCOPED_TRACE(cuts);
        takePausedMicroseconds();
        interruptPauses(cuts);
        EXPECT_EQ(loader_.enterBlMode(0), 1);
        EXPECT_EQ(takePausedMicroseconds(), 4'000'000U);
        interruptPauses(cuts);
        EXPECT_EQ(sendLine(8), 1);
    }
}
