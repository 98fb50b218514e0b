// SPDX-License-Identifier: MIT
// Hours with devices of all kinds, on a clock that doesn't wait: nothing piles up. A short run
// takes some minutes of the devices' time; ZEL_SOAK_MINUTES=60 takes an hour.
#include "family/echo/echo.h"
#include "family/tag/tag.h"
#include "sim/band/reader.h"
#include "sim/bridge/bridge.h"
#include "sim/echo/sensor.h"
#include "tests/faults/allocations.h"
#include "tests/support/descriptors.h"
#include "tests/support/line_test.h"
#include "tests/support/loopback.h"

#include <cstdlib>
#include <fstream>
#include <iostream>
#include <malloc.h>

namespace zel::test {

namespace {

constexpr char kArrival[] = R"(\\?\HID#Vid_5a3e&Pid_9d23)";
constexpr std::uint64_t kPollPause = 5'000; // µs
constexpr int kPolls = 400;                 // on a line of its own between two connects
constexpr int kPollsPerWrite = 100;
constexpr std::uint64_t kMinute = 60'000'000;

int minutes() {
    const char* const text = std::getenv("ZEL_SOAK_MINUTES");
    return text ? std::atoi(text) : 15;
}

// What the process holds.
struct Load {
    long blocks = heldBlocks();
    std::size_t descriptors = openDescriptors().size();
    std::size_t heap = mallinfo2().uordblks;
    long resident = pages();

    static long pages() {
        long size = 0;
        long resident = 0;
        std::ifstream("/proc/self/statm") >> size >> resident;
        return resident;
    }
};

std::ostream& operator<<(std::ostream& stream, const Load& load) {
    return stream << load.blocks << " blocks, " << load.heap << " bytes in use, " << load.resident
                  << " pages resident, " << load.descriptors << " descriptors";
}

class Soak : public LineTest {
protected:
    Soak() {
        bus().clear();
        EXPECT_TRUE(bridge_.start());
        SetComLinux(1, kPath);
        onPause([this](std::uint64_t) {
            lines().pump();
            bridge_.pump(0);
        });
    }
    ~Soak() override { onPause({}); }

    // All that an application does with readers, once on each way to them.
    void work() {
        workOnUsb();
        workOnStripe();
        workOnSensor();
        workOnLine();
        workOverNetwork();
        comeAndGo();
    }

private:
    static std::shared_ptr<sim::TagReader> newReader() {
        return std::make_shared<sim::TagReader>(sim::TagOptions{.tagPlusConfigurations = 2});
    }

    static void workOnUsb() {
        const auto reader = newReader();
        bus().plug(reader, {sim::TagReader::kVendor, sim::TagReader::kProduct, "tag"});
        EXPECT_EQ(USBConnect(nullptr), 1);
        pollTag(*reader);
        leave();
    }

    static void workOnStripe() {
        const auto stripe = std::make_shared<sim::BandReader>();
        lines().attach(kPath, stripe);
        EXPECT_EQ(ComConnect(nullptr), 1);
        stripe->swipe(sim::bandCard("%B0000^SIMULATED?", ";0000=11?"));
        for (int poll = 0; poll < kPolls / 10; ++poll, wait(kPollPause))
            EXPECT_NE(zelBandGetTrackData(1, 1), nullptr);
        EXPECT_EQ(WriteCfg(), 1);
        USBDisconnect();
        lines().detach(kPath);
    }

    // No scan finds a sensor: its handle is handed over.
    static void workOnSensor() {
        const auto sensor = std::make_shared<sim::EchoSensor>();
        char name[512] = "sensor"; // as long as the library's
        const auto port =
            bus().plug(sensor, {sim::EchoSensor::kVendor, sim::EchoSensor::kProduct, name});
        zelecho_FoundDevice(name, bus().open(port), -1);
        for (int poll = 0; poll < kPolls / 10; ++poll, wait(kPollPause)) {
            sRangeInfo range = {};
            sensor->place(poll % 60);
            EXPECT_EQ(GetObjRangeInfo(&range), 1);
        }
        leave();
    }

    static void leave() {
        USBDisconnect();
        bus().clear();
    }

    void workOnLine() {
        const auto reader = newReader();
        lines().attach(kPath, std::make_shared<sim::TagStream>(reader));
        EXPECT_EQ(ComConnect(nullptr), 1);
        pollTag(*reader);
        USBDisconnect();
        lines().detach(kPath);
    }

    void workOverNetwork() {
        const auto [a, b, c, d] = loopbackHost(1);
        SetIpPort(a, b, c, d, bridge_.port());
        SetDevTypeSrch(2);
        EXPECT_EQ(USBConnect(nullptr), 1);
        pollTag(*remote_);
        USBDisconnect();
        SetDevTypeSrch(0);
        bridge_.pump(0);
    }

    // Beside a reader that stays, one arrives and leaves.
    static void comeAndGo() {
        bus().plug(newReader(), {sim::TagReader::kVendor, sim::TagReader::kProduct, "stays"});
        bus().plug(newReader(), {sim::TagReader::kVendor, sim::TagReader::kProduct, kArrival});
        EXPECT_EQ(USBConnect(nullptr), 1);
        for (int visit = 0; visit < 20; ++visit) {
            EXPECT_EQ(ChkDelRemoval(kArrival), 1);
            EXPECT_EQ(zeltag_ChkAddArrival(kArrival), 1);
        }
        leave();
    }

    static void pollTag(sim::TagReader& reader) {
        for (int poll = 0; poll < kPolls; ++poll) {
            const bool hasCard = poll / 50 % 2 != 0;
            reader.present(hasCard ? sim::card26(26, 3512) : sim::Card{});
            unsigned char id[32] = {};
            EXPECT_EQ(GetActiveID(id, 8), hasCard ? 26 : 0);
            if (poll % kPollsPerWrite == 0)
                writeSettings(poll / kPollsPerWrite % 2 == 0 ? 1000 : 2000);
            wait(kPollPause);
        }
    }

    static void writeSettings(short holdTime) {
        sTimeParms times = {};
        EXPECT_EQ(GetTimeParms(&times), 1);
        times.iIDHoldTO = holdTime;
        EXPECT_EQ(SetTimeParms(&times), 1);
        EXPECT_EQ(WriteCfg(), 1);
    }

    std::shared_ptr<sim::TagReader> remote_ = newReader();
    sim::Bridge bridge_{std::make_shared<sim::TagStream>(remote_), {.address = loopbackHost(1)}};
};

} // namespace

TEST_F(Soak, LeavesMemoryAndDescriptorsAsTheyWere) {
    for (int warmUp = 0; warmUp < 2; ++warmUp)
        work();
    const Load before;
    const std::uint64_t start = virtualMicroseconds();
    const std::uint64_t end = start + static_cast<std::uint64_t>(minutes()) * kMinute;
    int rounds = 0;
    for (; virtualMicroseconds() < end && !HasFailure(); ++rounds)
        work();
    const Load after;
    std::cout << rounds << " rounds in " << (virtualMicroseconds() - start) / kMinute
              << " minutes\nbefore: " << before << "\nafter:  " << after << std::endl;
    EXPECT_EQ(after.blocks, before.blocks);
    EXPECT_EQ(after.descriptors, before.descriptors);
}

} // namespace zel::test
