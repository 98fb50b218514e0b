// SPDX-License-Identifier: MIT
// Pauses while signals come, of the library's own and of its exchanges.
#include "base/pause.h"
#include "tests/support/library_test.h"

namespace zel::test {

namespace {

class Pause : public LibraryTest {
protected:
    ~Pause() override {
        interruptPauses(0);
        limitPauses(0);
    }

    static std::uint64_t paused(unsigned microseconds) {
        takePausedMicroseconds();
        pauseFor(microseconds);
        return takePausedMicroseconds();
    }
};

} // namespace

TEST_F(Pause, IsOneCallWhenNoSignalComes) {
    bus().takeTrace();
    EXPECT_EQ(paused(250'000), 250'000U);
    EXPECT_EQ(bus().takeTrace(), "~ 250 ms\n");
    EXPECT_EQ(paused(0), 0U);
}

TEST_F(Pause, IsNeverTooShortHoweverManySignalsCome) {
    onPause({});
    for (int signals = 0; signals < 200; ++signals) {
        interruptPauses(signals);
        EXPECT_EQ(paused(20'000), 20'000U) << signals;
    }
}

TEST_F(Pause, EndsUnderATimerThatIsFasterThanItsSteps) {
    onPause({});
    for (const unsigned period : {1U, 10U, 250U, 999U, 5'000U}) {
        limitPauses(period);
        EXPECT_EQ(paused(20'000), 20'000U) << period;
    }
}

// Connects, and the pauses of all of it.
TEST_F(Pause, IsAsLongWhenTheClockJumpsBack) {
    traceNothing();
    plugReader();
    takePausedMicroseconds();
    EXPECT_EQ(USBConnect(nullptr), 1);
    const std::uint64_t wanted = takePausedMicroseconds();
    USBDisconnect();
    forgiveHaste(); // the simulated reader has the same clock
    takePausedMicroseconds();
    onPause([](std::uint64_t) { setVirtualMicroseconds(virtualMicroseconds() - 3'600'000'000U); });
    EXPECT_EQ(USBConnect(nullptr), 1);
    EXPECT_EQ(takePausedMicroseconds(), wanted);
}

// A reader that is asked too early would be told at the end.
TEST_F(Pause, LetsAReaderFinishUnderATimer) {
    traceNothing();
    const auto reader = plugReader();
    limitPauses(800);
    EXPECT_EQ(USBConnect(nullptr), 1);
    reader->present(sim::card26(26, 3512));
    unsigned char id[32] = {};
    EXPECT_EQ(GetActiveID(id, 8), 26);
    sTimeParms times = {};
    EXPECT_EQ(GetTimeParms(&times), 1);
    times.iIDHoldTO = 2000;
    EXPECT_EQ(SetTimeParms(&times), 1);
    EXPECT_EQ(WriteCfg(), 1);
    EXPECT_EQ(reader->violations(), 0) << reader->lastViolation();
}

} // namespace zel::test
