// SPDX-License-Identifier: MIT
// Real signals, during a flash and behind one: where they meet the library and what is left then.
#include "firmware/flash.h"
#include "firmware/interruption.h"
#include "tests/firmware/flash_test.h"

#include <cstdio>
#include <cstdlib>
#include <functional>

using namespace zel::test;
using ::testing::ExitedWithCode;
using ::testing::KilledBySignal;

namespace {

// A reader that lets something happen while it takes a report.
class EventfulReader : public zel::sim::TagReader {
public:
    bool take(std::uint8_t reportId, std::span<const std::uint8_t> payload) override {
        if (event && nameOf(payload) == at)
            event();
        return TagReader::take(reportId, payload);
    }

    std::string at; // the name of the report
    std::function<void()> event;
};

class Interruption : public FlashTest {
protected:
    std::shared_ptr<EventfulReader> connectEventful() {
        auto reader = std::make_shared<EventfulReader>();
        bus().plug(reader, {0x5A3E, 0x9D23, "reader"});
        EXPECT_EQ(connect(), 1);
        bus().takeTrace();
        return reader;
    }

    // Lets these signals come together while the reader takes a report.
    void raiseAt(const std::string& at, std::vector<int> signals) {
        reader_->at = at;
        reader_->event = [signals] {
            for (const int signal : signals)
                std::raise(signal);
        };
    }

    // The handler is in place, as behind a flash.
    void flashOnce() {
        EXPECT_EQ(Bootload(fileOf(1)), 1);
        bus().takeTrace();
        takePausedMicroseconds();
    }

    // Tells on stderr what the process leaves when it ends by exit().
    static void tellAtExit() {
        static zel::sim::TagReader* reader;
        reader = reader_.get();
        std::atexit([] {
            std::fprintf(stderr, "%d handles, %d lines", bus().openHandles(),
                         reader->bootLoader().lines());
        });
    }

    static bool isCaught(int signal) {
        struct sigaction action = {};
        sigaction(signal, nullptr, &action);
        return action.sa_handler == FlashReader::controlHandler;
    }

    static inline std::shared_ptr<EventfulReader> reader_;
};

// Each ends in a process of its own.
using InterruptionDeathTest = Interruption;

} // namespace

TEST_F(InterruptionDeathTest, OfAFlashClosesTheDevicesBehindTheLineAndExitsWith1) {
    reader_ = connectEventful();
    raiseAt("line 2 frame 2", {SIGINT});
    EXPECT_EXIT(
        {
            tellAtExit();
            Bootload(fileOf(9));
        },
        ExitedWithCode(1), "^0 handles, 2 lines$");
    reader_.reset();
}

TEST_F(InterruptionDeathTest, OfTheLastLineExitsToo) {
    reader_ = connectEventful();
    raiseAt("line 3 frame 3", {SIGINT});
    EXPECT_EXIT(
        {
            tellAtExit();
            Bootload(fileOf(3));
        },
        ExitedWithCode(1), "^0 handles, 3 lines$");
    reader_.reset();
}

TEST_F(InterruptionDeathTest, EndsAnExitHandlerToo) {
    reader_ = connectEventful();
    raiseAt("line 1 frame 1", {SIGINT});
    EXPECT_EXIT(
        {
            tellAtExit();
            std::atexit([] {
                std::fputs("hangs ", stderr);
                std::raise(SIGINT);
            });
            Bootload(fileOf(3));
        },
        ExitedWithCode(1), "^hangs $");
    reader_.reset();
}

TEST_F(InterruptionDeathTest, IsNotForgottenBesideAnotherSignal) {
    for (const auto& signals : {std::vector{SIGINT, SIGTERM}, std::vector{SIGTERM, SIGINT}}) {
        SCOPED_TRACE(::testing::PrintToString(signals));
        reader_ = connectEventful();
        raiseAt("line 1 frame 1", signals);
        EXPECT_EXIT(Bootload(fileOf(3)), ExitedWithCode(1), "");
        USBDisconnect();
        bus().clear();
        bus().startTrace();
        cbIndex = 0;
    }
    reader_.reset();
}

TEST_F(InterruptionDeathTest, OfAFailedEntryIsNotForgotten) {
    reader_ = connectEventful();
    flashOnce();
    reader_->bootLoader().options().comesBack = false;
    raiseAt("enter boot loader: micro 0", {SIGINT});
    EXPECT_EXIT(Bootload(fileOf(3)), ExitedWithCode(1), "");
    reader_.reset();
}

TEST_F(InterruptionDeathTest, WhileTheLockIsHeldExitsWith1) {
    reader_ = connectEventful();
    EXPECT_EXIT(
        {
            flashOnce();
            pthread_mutex_lock(&zelLock);
            std::raise(SIGINT);
        },
        ExitedWithCode(1), "");
    reader_.reset();
}

TEST_F(InterruptionDeathTest, BehindAFlashRunsNoCodeOfTheProcess) {
    reader_ = connectEventful();
    EXPECT_EXIT(
        {
            flashOnce();
            tellAtExit();
            std::raise(SIGINT);
        },
        ExitedWithCode(1), "^$");
    reader_.reset();
}

TEST_F(InterruptionDeathTest, ByAbortEndsTheProcess) {
    reader_ = connectEventful();
    reader_->at = "line 2 frame 1";
    reader_->event = [] { std::abort(); };
    EXPECT_EXIT(Bootload(fileOf(3)), KilledBySignal(SIGABRT), "");
    EXPECT_EXIT(
        {
            reader_->event = {};
            flashOnce();
            std::abort();
        },
        KilledBySignal(SIGABRT), "");
    reader_.reset();
}

TEST_F(Interruption, OfAFlashByAnotherSignalLetsItFindNoDeviceAnyMore) {
    for (const int signal : {SIGTERM, SIGABRT}) {
        reader_ = connectEventful();
        flashOnce();
        raiseAt("line 2 frame 1", {signal});
        EXPECT_EQ(Bootload(fileOf(9)), 0);
        EXPECT_EQ(reader_->bootLoader().lines(), 2) << "the line under way was finished";
        EXPECT_EQ(bus().openHandles(), 0);
        EXPECT_EQ(GetDevCnt(), 0);
        EXPECT_EQ(DevDat[0].lLastErr, 0x90700000);
        reader_.reset();
        bus().clear();
        bus().startTrace();
        cbIndex = 0;
    }
}

TEST_F(Interruption, BetweenTwoLinesClosesTheDevicesAndPausesTwoSeconds) {
    reader_ = connectEventful();
    fastBootloader = 1;
    reader_->bootLoader().options().kind = zel::sim::TagBootKind::Fast;
    raiseAt("line 1 frame 3", {SIGTERM});
    EXPECT_EQ(Bootload(fileOf(3)), 0);
    const std::string trace = bus().takeTrace();
    EXPECT_EQ(trace.substr(trace.find("> 00 ")), "> 00 00 00 00 00 00 00 00  line 1 frame 3\n"
                                                 "~ 2 ms\n"
                                                 "< 00 2E 3E 00 00 00 00 00\n"
                                                 "close reader\n"
                                                 "~ 2000 ms\n");
    reader_.reset();
}

TEST_F(Interruption, OfTheLastLineLetsTheFlashSucceed) {
    reader_ = connectEventful();
    raiseAt("line 3 frame 3", {SIGTERM});
    EXPECT_EQ(Bootload(fileOf(3)), 1);
    EXPECT_EQ(bus().openHandles(), 0);
    EXPECT_EQ(GetDevCnt(), 0);
    reader_.reset();
}

TEST_F(Interruption, InsideACallThatHoldsTheLockLetsItEndAndTheNextOneClosesTheDevices) {
    reader_ = connectEventful();
    flashOnce();
    reader_->bootLoader().options().lines = 1;
    EXPECT_EQ(Bootload(fileOf(1)), 1) << "the reader runs its firmware again";
    reader_->present(zel::sim::card26(26, 3512));
    raiseAt("identifier", {SIGTERM});
    unsigned char id[ZELTAGAPI_ID_SIZE] = {};
    takePausedMicroseconds();
    EXPECT_EQ(GetActiveID(id, sizeof id), 26);
    EXPECT_EQ(takePausedMicroseconds(), 2'000'000U);
    EXPECT_EQ(bus().openHandles(), 1) << "nothing was closed under the call";
    EXPECT_EQ(GetDevCnt(), 0) << "but the device is out of use";
    reader_->event = {};
    EXPECT_EQ(GetActiveID(id, sizeof id), 0);
    EXPECT_EQ(bus().openHandles(), 0);
    reader_.reset();
}

TEST_F(Interruption, LetsAnotherFlashNotStart) {
    reader_ = connectEventful();
    flashOnce();
    std::raise(SIGTERM);
    EXPECT_EQ(bus().takeTrace(), "~ 2000 ms\n");
    EXPECT_EQ(Bootload(fileOf(1)), 0);
    EXPECT_EQ(bus().takeTrace(), "");
    reader_.reset();
}

TEST_F(Interruption, LeavesTheInterruptedCodeItsErrno) {
    reader_ = connectEventful();
    flashOnce();
    onPause([](std::uint64_t) { errno = EINTR; });
    errno = ENOENT;
    std::raise(SIGTERM);
    EXPECT_EQ(errno, ENOENT);
    reader_.reset();
}

TEST_F(Interruption, IsHandledFromTheFirstLineOnForGood) {
    reader_ = connectEventful();
    reader_->bootLoader().options().comesBack = false;
    EXPECT_EQ(Bootload(fileOf(1)), 0);
    EXPECT_FALSE(isCaught(SIGINT) || isCaught(SIGABRT) || isCaught(SIGTERM));
    reader_->bootLoader().options().comesBack = true;
    EXPECT_EQ(Bootload(fileOf(1)), 1);
    EXPECT_TRUE(isCaught(SIGINT) && isCaught(SIGABRT) && isCaught(SIGTERM));
    std::raise(SIGTERM);
    EXPECT_TRUE(isCaught(SIGTERM));
    reader_.reset();
}

TEST_F(Interruption, ByAnyOtherSignalDoesNothing) {
    reader_ = connectEventful();
    FlashReader::controlHandler(SIGUSR2);
    {
        const zel::firmware::FlashUnderWay underWay;
        FlashReader::controlHandler(SIGHUP);
        zel::firmware::actOnSignal();
    }
    EXPECT_EQ(bus().takeTrace(), "");
    EXPECT_EQ(GetDevCnt(), 1);
    reader_.reset();
}
