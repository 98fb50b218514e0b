// SPDX-License-Identifier: MIT
// The simulated bus: faults and the trace.
#include "tests/support/library_test.h"

using namespace zel::test;
using zel::sim::Fault;

namespace {
class SimulatedBus : public LibraryTest {
protected:
    static int read() {
        unsigned char buffer[32];
        return GetActiveID(buffer, 8);
    }
};
} // namespace

TEST_F(SimulatedBus, FailsAsManyExchangesAsTold) {
    connectReader()->present(zel::sim::card26(26, 3512));
    bus().fail(0, Fault::NoAnswer, 2);
    EXPECT_EQ(read(), 0);
    EXPECT_EQ(read(), 0);
    EXPECT_EQ(read(), 26);
}

TEST_F(SimulatedBus, LetsALostReaderComeBack) {
    connectReader()->present(zel::sim::card26(26, 3512));
    bus().unplug(0);
    EXPECT_EQ(read(), 0);
    EXPECT_EQ(GetLastLibErr(), 0x1000000);
    bus().replug(0);
    EXPECT_EQ(read(), 26);
}

TEST_F(SimulatedBus, DoesNotListALostReader) {
    plugReader("a");
    plugReader("b");
    bus().unplug(0);
    EXPECT_EQ(connect(), 1);
    EXPECT_STREQ(DevDat[0].szDevName, "b");
}

TEST_F(SimulatedBus, NumbersTheTraceOfSeveralReaders) {
    plugReader("a");
    plugReader("b");
    connect();
    bus().takeTrace();
    SetActDev(1);
    Ping();
    EXPECT_EQ(bus().takeTrace(), "1> 8A 00 00 00 00 00 00 00  LUID\n"
                                 "1< 00 00 42 01 00 00 00 00\n");
}

TEST_F(SimulatedBus, TracesPausesInTheirPlace) {
    connectReader();
    bus().fail(0, Fault::SendRefused, 1);
    Ping();
    EXPECT_EQ(bus().takeTrace(), "> 8A 00 00 00 00 00 00 00  LUID\n"
                                 "! not sent\n"
                                 "~ 80 ms\n"
                                 "> 8A 00 00 00 00 00 00 00  LUID\n"
                                 "< 00 00 42 01 00 00 00 00\n");
}

TEST_F(SimulatedBus, RefusesAHandleAfterItsClose) {
    connectReader();
    void* const handle = DevDat[0].hDev;
    USBDisconnect();
    bus().takeTrace();
    bus().backend().close(handle);
    EXPECT_EQ(bus().takeTrace(), "close of a handle that isn't open\n");
    unsigned char data[8] = {};
    EXPECT_EQ(bus().backend().setFeature(handle, 0, data, 8), 0);
}
