// SPDX-License-Identifier: MIT
#include "tests/support/library_test.h"

using namespace zel::test;

namespace {

class PresenceTest : public LibraryTest {};

// A reader whose answers take time.
class SlowReader : public zel::sim::TagReader {
public:
    explicit SlowReader(std::uint64_t us) : us_(us) {}
    bool answer(std::uint8_t id, std::span<std::uint8_t> reply) override {
        wait(us_);
        return TagReader::answer(id, reply);
    }

private:
    std::uint64_t us_;
};

void connectSlowReader(std::uint64_t us) {
    zel::sim::usbBus().plug(std::make_shared<SlowReader>(us), {0x5A3E, 0x9D23, "slow"});
    zeltag_USBDeviceConnect(0x5A3E, 0x9D23, nullptr);
}

} // namespace

TEST_F(PresenceTest, IsOneQueryOfTheLuid) {
    connectReader()->settings().luid = 0x1234;
    Ping();
    EXPECT_EQ(bus().takeTrace(), "> 8A 00 00 00 00 00 00 00  LUID\n"
                                 "< 34 12 42 01 00 00 00 00\n");
}

TEST_F(PresenceTest, TellsTheElapsedMilliseconds) {
    connectSlowReader(41'000);
    EXPECT_EQ(Ping(), 41U);
}

TEST_F(PresenceTest, RaisesLessThanAMillisecondToOne) {
    connectReader();
    EXPECT_EQ(Ping(), 1U);
}

TEST_F(PresenceTest, CutsALongTimeTo65535) {
    connectSlowReader(70'000'000);
    EXPECT_EQ(Ping(), 65535U);
}

TEST_F(PresenceTest, OfAnAbsentReaderYieldsItsStartTime) {
    connectReader();
    bus().fail(0, zel::sim::Fault::NoAnswer);
    setVirtualMicroseconds(1'700'000'000'123'456);
    EXPECT_EQ(Ping(), 1'700'000'000'123U);
}

TEST_F(PresenceTest, OfALostReaderYieldsItsStartTimeThoughTheRetriesTookTime) {
    connectReader();
    bus().unplug(0);
    const auto start = virtualMicroseconds() / 1000;
    EXPECT_EQ(Ping(), start);
    EXPECT_EQ(takePausedMicroseconds(), 480'000U);
}

TEST_F(PresenceTest, OfAnotherProductOrNoDeviceSendsNothing) {
    EXPECT_GT(Ping(), 65535U);
    connectReader();
    for (const unsigned product : {0U, 4U, 9U}) {
        DevDat[0].iProduct = product;
        EXPECT_GT(Ping(), 65535U) << product;
    }
    EXPECT_EQ(bus().takeTrace(), "");
}
