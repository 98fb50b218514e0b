// SPDX-License-Identifier: MIT
// Entering a boot loader: how long it is awaited, and what it may answer.
#include "tests/firmware/boot_loader_test.h"
#include "transport/usb_driver.h"

using namespace zel::test;
using zel::sim::TagBootKind;

TEST_F(BootLoader, IsEnteredWithASecondBeforeAndThreeBehind) {
    connectKind(TagBootKind::Slow);
    EXPECT_EQ(traceOfEntry(0), "~ 1000 ms\n"
                               "> F0 00 00 00 00 00 00 00  enter boot loader: micro 0\n"
                               "~ 3000 ms\n"
                               "< 00 2E 00 00 00 00 00 00\n");
    EXPECT_EQ(giTargetMicro, 0);
    EXPECT_EQ(ReaderIsLark, 0);
}

TEST_F(BootLoader, IsToldItsTargetMicro) {
    connectKind(TagBootKind::Slow);
    EXPECT_EQ(traceOfEntry(1), "~ 1000 ms\n"
                               "> F0 01 00 00 00 00 00 00  enter boot loader: micro 1\n"
                               "~ 3000 ms\n"
                               "< 00 2E 00 00 00 00 00 00\n");
    EXPECT_EQ(giTargetMicro, 1);
    EXPECT_EQ(traceOfEntry(0xFF), "~ 1000 ms\n"
                                  "> F0 FF 00 00 00 00 00 00  enter boot loader: micro 255\n"
                                  "~ 3000 ms\n"
                                  "< 00 2E 00 00 00 00 00 00\n");
    EXPECT_EQ(giTargetMicro, 0xFF);
}

TEST_F(BootLoader, IsPolledEvery50MillisecondsUntilItIsReady) {
    connectKind(TagBootKind::Slow);
    boot().options().entryBusy = 2;
    EXPECT_EQ(traceOfEntry(0), "~ 1000 ms\n"
                               "> F0 00 00 00 00 00 00 00  enter boot loader: micro 0\n"
                               "~ 3000 ms\n"
                               "< 00 54 00 00 00 00 00 00\n"
                               "~ 50 ms\n"
                               "< 00 54 00 00 00 00 00 00\n"
                               "~ 50 ms\n"
                               "< 00 2E 00 00 00 00 00 00\n");
}

TEST_F(BootLoader, MayBeBusySixtyTimes) {
    connectKind(TagBootKind::Slow);
    boot().options().entryBusy = 60;
    takePausedMicroseconds();
    EXPECT_EQ(loader_.enterBlMode(0), 1);
    EXPECT_EQ(takePausedMicroseconds(), 4'000'000U + 60 * 50'000U);
    EXPECT_EQ(word(), 0);
}

TEST_F(BootLoader, IsGivenUpAtTheSixtyFirstBusyAnswer) {
    connectKind(TagBootKind::Slow);
    boot().options().entryBusy = 61;
    const int before = bus().exchanges(0);
    EXPECT_EQ(loader_.enterBlMode(0), 0);
    EXPECT_EQ(bus().exchanges(0) - before, 1 + 61);
    EXPECT_EQ(word(), 0x90300000);
}

TEST_F(BootLoader, RefusesToStartWithAnyOtherCharacter) {
    for (const char status : {'E', 'R', 'x', '\0'}) {
        connectKind(TagBootKind::Slow);
        boot().options().reply[0] = {0, static_cast<std::uint8_t>(status), 'W'};
        EXPECT_EQ(loader_.enterBlMode(0), 0);
        EXPECT_EQ(word(), 0x90300000) << status;
        EXPECT_EQ(ReaderIsLark, 0) << "a refusal tells nothing of the reader";
        USBDisconnect();
        bus().clear();
        bus().startTrace();
        cbIndex = 0;
    }
}

TEST_F(BootLoader, TellsNothingButTheLarkLineWhenItIsEntered) {
    connectKind(TagBootKind::Slow);
    for (const auto kind : {TagBootKind::Fast, TagBootKind::FastFrames}) {
        SCOPED_TRACE(static_cast<int>(kind));
        const auto detail = static_cast<std::uint8_t>(kind);
        boot().options().reply[0] = {0, '.', detail, 100};
        EXPECT_EQ(loader_.enterBlMode(0), 1);
        EXPECT_EQ(fastBootloader, 0);
        EXPECT_EQ(delayNextLine, 0);
        EXPECT_EQ(ReaderIsLark, 0);
    }
    boot().options().reply[0] = {0, '.', 'W', 100};
    takePausedMicroseconds();
    EXPECT_EQ(loader_.enterBlMode(0), 1);
    EXPECT_EQ(ReaderIsLark, 1);
    EXPECT_EQ(takePausedMicroseconds(), 4'000'000U) << "the delay counts behind a line only";
}

TEST_F(BootLoader, IsPolledAllTheSameWhenTheEnterReportIsNotSent) {
    connectKind(TagBootKind::Slow);
    EXPECT_EQ(loader_.enterBlMode(0), 1);
    bus().takeTrace();
    bus().fail(0, zel::sim::Fault::SendRefused, 6);
    EXPECT_EQ(loader_.enterBlMode(0), 0) << "refused six times";
    EXPECT_NE(bus().takeTrace().find("~ 3000 ms\n< 00 00 00"), std::string::npos);
    EXPECT_EQ(word(), 0x90300000) << "the later word";
}

TEST_F(BootLoader, IsNotEnteredWhenOnlyTheEnterReportWasLost) {
    connectKind(TagBootKind::Slow);
    reader_->replyWith({0x8F}, {0, '.'});
    const unsigned char query[9] = {0, 0x8F};
    EXPECT_EQ(UsbDriver_SendFR(8, 0, query), 1);
    bus().fail(0, zel::sim::Fault::SendRefused, 6);
    EXPECT_EQ(loader_.enterBlMode(0), 0);
    EXPECT_EQ(word(), 0x90100000);
}

TEST_F(BootLoader, ThatNeverComesBackIsTold) {
    connectKind(TagBootKind::Slow);
    boot().options().comesBack = false;
    EXPECT_EQ(traceOfEntry(0), "~ 1000 ms\n"
                               "> F0 00 00 00 00 00 00 00  enter boot loader: micro 0\n"
                               "~ 3000 ms\n"
                               "! no answer\n");
    EXPECT_EQ(word(), 0x90200000);
}
