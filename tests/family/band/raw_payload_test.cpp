// SPDX-License-Identifier: MIT
// Frames of the caller's own, byte by byte.
#include "frame/zelTagAPI.h"
#include "tests/family/band/band_device.h"

using namespace zel::test;

namespace {

class BandRawOnUsb : public BandUsbTest {
protected:
    // The outgoing bytes are the process's own: each test begins with the same ones.
    BandRawOnUsb() {
        put("xABCDEFG");
        EXPECT_EQ(bus().takeTrace(), "");
    }

    static void put(const std::string& bytes) {
        for (std::size_t i = 0; i < bytes.size(); ++i)
            EXPECT_EQ(SetRawPayload_index(static_cast<short>(i), bytes[i]), 0) << i;
    }
};

// A reader that echoes whatever it is sent.
class Echo : public zel::sim::Device {
public:
    bool take(std::uint8_t reportId, std::span<const std::uint8_t> payload) override {
        last.assign(payload.begin(), payload.end());
        return reportId == 0 && last.size() == 24;
    }
    bool answer(std::uint8_t, std::span<std::uint8_t> reply) override {
        std::copy(last.begin(), last.end(), reply.begin());
        return true;
    }
    std::string nameOf(std::span<const std::uint8_t>) const override { return ""; }

    std::vector<std::uint8_t> last;
};

class BandRawEcho : public LineScan {
protected:
    BandRawEcho() {
        port = bus().plug(device, {0x5A3E, 0x9D2B, "stripe"});
        char name[512] = {};
        bus().backend().list();
        void* const handle = bus().backend().open(0, name);
        bus().backend().unlist();
        cbIndex = 0;
        zelband_FoundDevice(name, handle, -1);
        iActDev = 0;
        for (short i = 0; i < 8; ++i)
            SetRawPayload_index(i, static_cast<short>('a' + i));
        bus().takeTrace();
    }

    std::shared_ptr<Echo> device = std::make_shared<Echo>();
    std::size_t port = 0;
};

class BandRawOnLine : public BandLineTest {};

} // namespace

TEST_F(BandRawEcho, GoesOutFromTheEighthPlaceOn) {
    EXPECT_EQ(SetRawPayload_index(8, 0x141), 1);
    EXPECT_EQ(std::string(device->last.begin(), device->last.begin() + 8), "bcdefghA");
    EXPECT_EQ(SetRawPayload_index(9, 0x42), 1);
    EXPECT_EQ(std::string(device->last.begin(), device->last.begin() + 9), "bcdefghAB");
    std::string text;
    for (short i = 1; i < 10; ++i)
        text += static_cast<char>(GetRawPayload_index(i));
    EXPECT_EQ(text, "bcdefghAB");
    EXPECT_EQ(GetRawPayload_index(0), 0) << "report ID 0 stands in front";
}

TEST_F(BandRawEcho, GoesOutUnchangedAtAPlaceBeyond) {
    SetRawPayload_index(8, 'y');
    SetRawPayload_index(9, 'z');
    EXPECT_EQ(SetRawPayload_index(10, 'x'), 1);
    EXPECT_EQ(std::string(device->last.begin(), device->last.begin() + 10),
              std::string("bcdefghyz\0", 10));
    EXPECT_EQ(device->last.size(), 24U);
}

TEST_F(BandRawEcho, StaysAtNegativePlaces) {
    EXPECT_EQ(SetRawPayload_index(-1, 'x'), 0);
    EXPECT_TRUE(device->last.empty());
}

TEST_F(BandRawEcho, HasTenPlacesToReadAndTwoElsewhere) {
    SetRawPayload_index(9, 'B');
    EXPECT_EQ(zelband_GetRawPayload_index(9), 'B');
    for (const int index : {-1, 10, 255, SHRT_MAX})
        EXPECT_EQ(zelband_GetRawPayload_index(static_cast<short>(index)), 2) << index;
}

TEST_F(BandRawEcho, KeepsTheLastReplyWhenItCannotBeSent) {
    SetRawPayload_index(8, 'A');
    bus().fail(port, zel::sim::Fault::SendRefused, 100);
    EXPECT_EQ(SetRawPayload_index(8, 'Z'), 0);
    EXPECT_EQ(GetRawPayload_index(8), 'A');
}

TEST_F(BandRawEcho, ForgetsTheLastReplyWhenNoneComes) {
    SetRawPayload_index(8, 'A');
    bus().fail(port, zel::sim::Fault::NoAnswer);
    EXPECT_EQ(SetRawPayload_index(8, 'Z'), 0);
    for (short i = 0; i < 10; ++i)
        EXPECT_EQ(GetRawPayload_index(i), 0) << i;
}

TEST_F(BandRawEcho, IsToldAsTextOfEightBytes) {
    EXPECT_STREQ(SetRawPayload(0x51, 0x52, 0x5A, 0x30, 0x31, 0x32, 0xFF, 0x00),
                 "51.52.5A.30.31.32.FF.00");
}

TEST_F(BandRawOnUsb, MakesNoPause) {
    takePausedMicroseconds();
    SetRawPayload_index(8, 'H');
    EXPECT_EQ(takePausedMicroseconds(), 0U);
    EXPECT_EQ(toldBriefly().find('~'), std::string::npos);
}

TEST_F(BandRawOnLine, IsKeptAndNeverSent) {
    for (short i = 0; i < 12; ++i)
        EXPECT_EQ(SetRawPayload_index(i, 'a'), 0) << i;
    EXPECT_EQ(told(), "");
}
