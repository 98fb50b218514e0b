// SPDX-License-Identifier: MIT
// The library over the kernel's own driver for HID on USB.
#include "frame/zelTagAPI.h"
#include "tests/kernel/guest/held.h"
#include "tests/kernel/guest/usb_reader.h"

#include <chrono>
#include <gtest/gtest.h>
#include <thread>
#include <vector>

namespace zel::test {

namespace {

using Clock = std::chrono::steady_clock;
using std::chrono::milliseconds;
using Bytes = std::vector<unsigned char>;
using enum UsbReader::Fault;

constexpr std::int64_t kExchangeFailed = 0x1000000;
constexpr milliseconds kSixTries(6 * 80);

class KernelUsbReader : public ::testing::Test {
protected:
    KernelUsbReader() {
        SetDevTypeSrch(0); // USB alone: without a reader the network is searched for minutes
        device_.reader().present(sim::card26(26, 3512));
        device_.plug();
        EXPECT_EQ(USBConnect(nullptr), 1);
    }
    ~KernelUsbReader() override {
        USBDisconnect();
        device_.unplug();
    }

    // A card's bits; how long it took, and the identifier.
    int read() {
        id_.assign(32, 0xEE);
        const Clock::time_point start = Clock::now();
        const int bits = GetActiveID(id_.data(), 8);
        took_ = std::chrono::duration_cast<milliseconds>(Clock::now() - start);
        id_.resize(8);
        return bits;
    }

    UsbReader device_;
    Bytes id_;
    milliseconds took_ = {};
};

TEST_F(KernelUsbReader, GivesItsCardAndTakesSettings) {
    EXPECT_EQ(read(), 26);
    EXPECT_EQ(id_, (Bytes{0x70, 0x1B, 0x34, 0x02, 0, 0, 0, 0}));
    sTimeParms times = {};
    ASSERT_EQ(GetTimeParms(&times), 1);
    times.iIDHoldTO = 2500;
    EXPECT_EQ(SetTimeParms(&times), 1);
    EXPECT_EQ(WriteCfg(), 1);
    EXPECT_EQ(ReadCfg(), 1);
    EXPECT_EQ(GetTimeParms(&times), 1);
    EXPECT_EQ(times.iIDHoldTO, 2500);
    EXPECT_EQ(GetLastLibErr(), 0);
}

TEST_F(KernelUsbReader, RefusedReportIsTriedSixTimes) {
    device_.fail(RefuseReport);
    EXPECT_EQ(read(), 0);
    EXPECT_EQ(GetLastLibErr(), kExchangeFailed);
    EXPECT_GE(took_, kSixTries);
    EXPECT_LT(took_, kSixTries + milliseconds(100));
    device_.fail(None);
    EXPECT_EQ(read(), 26);
    EXPECT_EQ(GetLastLibErr(), 0);
}

TEST_F(KernelUsbReader, RefusedAnswerFailsAtOnce) {
    device_.fail(RefuseAnswer);
    EXPECT_EQ(read(), 0);
    EXPECT_EQ(GetLastLibErr(), kExchangeFailed);
    EXPECT_LT(took_, milliseconds(100));
    device_.fail(None);
    EXPECT_EQ(read(), 26);
}

TEST_F(KernelUsbReader, ShortAnswerIsFilledWithZeros) {
    device_.fail(ShortAnswer);
    EXPECT_EQ(read(), 26);
    EXPECT_EQ(id_, (Bytes{0x70, 0x1B, 0x34, 0, 0, 0, 0, 0}));
    EXPECT_EQ(GetLastLibErr(), 0);
}

TEST_F(KernelUsbReader, MissingAnswerFailsAfterFiveSeconds) {
    device_.fail(NoAnswer);
    EXPECT_EQ(read(), 0);
    EXPECT_EQ(GetLastLibErr(), kExchangeFailed);
    EXPECT_GE(took_, milliseconds(5000));
    EXPECT_LT(took_, milliseconds(5500));
    device_.fail(None);
    EXPECT_EQ(read(), 26);
    EXPECT_EQ(GetLastLibErr(), 0);
}

TEST_F(KernelUsbReader, UnplugEndsTheWaitForAnAnswer) {
    const long descriptors = countDescriptors();
    device_.fail(NoAnswer);
    std::thread hand([this] {
        std::this_thread::sleep_for(milliseconds(1000));
        device_.unplug();
    });
    EXPECT_EQ(read(), 0);
    hand.join();
    EXPECT_EQ(GetLastLibErr(), kExchangeFailed);
    EXPECT_GE(took_, milliseconds(1000));
    EXPECT_LT(took_, milliseconds(1500));
    USBDisconnect();
    EXPECT_EQ(USBConnect(nullptr), 0) << "it is away";
    device_.fail(None);
    device_.plug();
    EXPECT_EQ(USBConnect(nullptr), 1);
    EXPECT_EQ(read(), 26);
    EXPECT_EQ(countDescriptors(), descriptors);
}

} // namespace

} // namespace zel::test
