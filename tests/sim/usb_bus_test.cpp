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

    // A fetched reply of eight bytes to a query of the LUID, straight over the bus.
    static std::string luidReply() {
        void* const handle = DevDat[0].hDev;
        const unsigned char query[8] = {0x8A};
        unsigned char reply[8] = {};
        long size = sizeof reply;
        bus().backend().setFeature(handle, 0, query, sizeof query);
        bus().takeTrace();
        bus().backend().getFeature(handle, 0, reply, &size);
        return bus().takeTrace();
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

TEST_F(SimulatedBus, FailsTheNthExchangeWhicheverWayItGoes) {
    connectReader()->present(zel::sim::card26(26, 3512));
    bus().failExchange(0, 3);
    read();
    EXPECT_EQ(bus().takeTrace(), "> 8F 00 00 00 00 00 00 00  identifier\n"
                                 "< 70 1B 34 02 00 00 00 00\n"
                                 "> 8E 00 00 00 00 00 00 00  bit count\n"
                                 "! not sent\n"
                                 "~ 80 ms\n"
                                 "> 8E 00 00 00 00 00 00 00  bit count\n"
                                 "< 1A 00 00 00 00 00 00 00\n");
    bus().failExchange(0, 2);
    EXPECT_EQ(read(), 0);
    EXPECT_EQ(read(), 26) << "once only";
}

TEST_F(SimulatedBus, FailsAsManyExchangesInARowAsTold) {
    connectReader()->present(zel::sim::card26(26, 3512));
    bus().failExchange(0, 2, 2);
    EXPECT_EQ(read(), 0);
    EXPECT_EQ(read(), 26) << "the fourth exchange is the first that works again";
    EXPECT_EQ(bus().takeTrace(), "> 8F 00 00 00 00 00 00 00  identifier\n"
                                 "! no answer\n"
                                 "> 8F 00 00 00 00 00 00 00  identifier\n"
                                 "! not sent\n"
                                 "~ 80 ms\n"
                                 "> 8F 00 00 00 00 00 00 00  identifier\n"
                                 "< 70 1B 34 02 00 00 00 00\n"
                                 "> 8E 00 00 00 00 00 00 00  bit count\n"
                                 "< 1A 00 00 00 00 00 00 00\n");
}

TEST_F(SimulatedBus, CountsExchangesAndThoseThatFailed) {
    connectReader();
    EXPECT_EQ(bus().exchanges(0), 0);
    bus().fail(0, Fault::NoAnswer, 1);
    read();
    EXPECT_EQ(bus().exchanges(0), 2);
    bus().unplug(0);
    Ping();
    EXPECT_GT(bus().exchanges(0), 2);
}

TEST_F(SimulatedBus, AnswersAllOnes) {
    connectReader();
    bus().fail(0, Fault::AllOnes);
    EXPECT_EQ(luidReply(), "< FF FF FF FF FF FF FF FF\n");
    EXPECT_EQ(luidReply(), "< 00 00 42 01 00 00 00 00\n");
}

TEST_F(SimulatedBus, AnswersGarbageThatItsSeedRepeats) {
    connectReader();
    bus().fail(0, Fault::Garbage, 3);
    bus().seed(1);
    const std::string first = luidReply();
    const std::string second = luidReply();
    bus().seed(1);
    EXPECT_EQ(luidReply(), first);
    EXPECT_NE(second, first);
}

TEST_F(SimulatedBus, AnswersWithOneWrongByte) {
    connectReader();
    constexpr int kTries = 50;
    bus().fail(0, Fault::WrongByte, kTries);
    const std::string right = "< 00 00 42 01 00 00 00 00\n";
    for (int i = 0; i < kTries; ++i) {
        const std::string reply = luidReply();
        ASSERT_EQ(reply.size(), right.size());
        int wrong = 0;
        for (std::size_t at = 2; at < right.size(); at += 3)
            wrong += reply.compare(at, 2, right, at, 2) != 0 ? 1 : 0;
        EXPECT_EQ(wrong, 1) << reply;
    }
}

TEST_F(SimulatedBus, TracesACommandThatCameTooEarly) {
    connectReader();
    forgiveHaste();
    const unsigned char commit[8] = {0x90, 1};
    bus().backend().setFeature(DevDat[0].hDev, 0, commit, sizeof commit);
    Ping();
    EXPECT_EQ(bus().takeTrace(), "> 90 01 00 00 00 00 00 00  commit\n"
                                 "> 8A 00 00 00 00 00 00 00  LUID\n"
                                 "! too early\n"
                                 "< 00 00 42 01 00 00 00 00\n");
}

TEST_F(SimulatedBus, KeepsTheReaderInStepThroughLostReports) {
    auto reader = connectReader();
    reader->settings().luid = 7;
    const auto send = [](const zel::sim::TagBlock& report) {
        return bus().backend().setFeature(DevDat[0].hDev, 0, report.data(), 8);
    };
    bus().failExchange(0, 2);
    send({0x83});
    EXPECT_EQ(send({9, 9}), 0);
    EXPECT_EQ(send({0x82}), 1);
    EXPECT_EQ(send({3, 3}), 1);
    bus().takeTrace();
    bus().fail(0, Fault::NoAnswer);
    EXPECT_GT(Ping(), 65535U);
    EXPECT_EQ(Ping(), 1U);
    EXPECT_EQ(reader->configuration(0).block[3], zel::sim::TagBlock{});
    EXPECT_EQ(reader->configuration(0).block[2], (zel::sim::TagBlock{3, 3}));
    EXPECT_EQ(reader->settings().luid, 7);
}
