// SPDX-License-Identifier: MIT
// A reader is unplugged in the middle of an operation: what the library tells, what it holds
// afterwards, and that it works with the reader that comes back.
#include "frame/zelTagAPI.h"
#include "frame/zelTagTrace.h"
#include "tests/kernel/guest/held.h"
#include "tests/kernel/guest/simulator.h"

#include <csignal>
#include <gtest/gtest.h>
#include <ostream>

namespace zel::test {

namespace {

char firmware[] = "/share/firmware.hex";

int readCard() {
    unsigned char id[32] = {};
    return GetActiveID(id, 8);
}

int readLongCard() {
    unsigned char id[32] = {};
    return GetActiveID32(id, 32);
}

int writeTimes() {
    sTimeParms times = {};
    times.iIDHoldTO = 2500;
    return SetTimeParms(&times) == 1 ? WriteCfg() : -1;
}

int load() { return Bootload(firmware); }

// An operation, the report behind which the reader leaves, and what the operation then tells.
struct Step {
    const char* name;
    int (*run)();
    unsigned char lastReport;
    std::int64_t errorWord;
};

void PrintTo(const Step& step, std::ostream* stream) { *stream << step.name; }

constexpr Step kSteps[] = {
    {"CardRead", readCard, 0x8F, 0x1000000},
    {"LongCardRead", readLongCard, 0x8D, 0x1000000},
    {"Beep", [] { return BeepNow(1, 0); }, 0x8C, 0x1000000},
    {"ConfigurationRead", ReadCfg, 0x82, 0x20000},
    // The write fails with 0x40000. Then the library asks for the volume, to know how long to
    // wait, and that query has an error word of its own.
    {"ConfigurationWrite", writeTimes, 0x81, 0x1000000},
    {"Reset", ResetFactoryDflts, 0xA0, 0x20000},
    {"BootLoaderEntry", load, 0xF0, 0x90100000},
    {"FirmwareLine", load, 0x07, 0x90700000},
};

class UnpluggedReader : public ::testing::TestWithParam<Step> {
protected:
    UnpluggedReader() {
        SetDevTypeSrch(0); // USB alone: without a reader the network is searched for minutes
        std::signal(SIGUSR1, SIG_IGN); // a load's progress
    }
    ~UnpluggedReader() override { zelTagAPI_observe(nullptr, nullptr); }

    // The reader goes behind a report that begins so.
    void unplugBehind(unsigned char report) {
        report_ = report;
        zelTagAPI_observe([](const zelTraceEvent* event,
                             void* test) { static_cast<UnpluggedReader*>(test)->watch(*event); },
                          this);
    }

    Simulator simulator_;

private:
    void watch(const zelTraceEvent& event) {
        if (event.kind != ZELTAGAPI_TRACE_SEND || event.bytes[0] != report_)
            return;
        zelTagAPI_observe(nullptr, nullptr);
        simulator_.unplug();
    }

    unsigned char report_ = 0;
};

TEST_P(UnpluggedReader, IsToldAndComesBack) {
    const long descriptors = countDescriptors();
    ASSERT_EQ(USBConnect(nullptr), 1);
    EXPECT_EQ(countDescriptors(), descriptors + 1);
    unplugBehind(GetParam().lastReport);
    EXPECT_EQ(GetParam().run(), 0);
    EXPECT_EQ(GetLastLibErr(), GetParam().errorWord) << std::hex << GetLastLibErr();
    USBDisconnect();
    EXPECT_EQ(countDescriptors(), descriptors);
    EXPECT_EQ(USBConnect(nullptr), 0) << "it is away";
    simulator_.plug();
    EXPECT_EQ(USBConnect(nullptr), 1);
    GetParam().run();
    EXPECT_EQ(GetLastLibErr(), 0) << "it works again";
    USBDisconnect();
    EXPECT_EQ(countDescriptors(), descriptors);
}

INSTANTIATE_TEST_SUITE_P(Behind, UnpluggedReader, ::testing::ValuesIn(kSteps),
                         [](const auto& step) { return std::string(step.param.name); });

} // namespace

} // namespace zel::test
