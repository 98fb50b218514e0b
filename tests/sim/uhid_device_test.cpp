// SPDX-License-Identifier: MIT
// A simulated device behind the kernel's user-space HID driver; a socket stands in for the kernel.
#include "sim/uhid/device.h"

#include <cerrno>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <linux/uhid.h>
#include <sys/socket.h>
#include <unistd.h>
#include <vector>

using zel::sim::UhidDevice;
using zel::sim::UhidTransfers;

namespace {

using Bytes = std::vector<std::uint8_t>;

class Uhid : public ::testing::Test {
protected:
    Uhid() {
        int ends[2] = {};
        EXPECT_EQ(socketpair(AF_UNIX, SOCK_SEQPACKET, 0, ends), 0);
        kernel_ = ends[0];
        device_ = std::make_unique<UhidDevice>(
            ends[1], zel::sim::UhidIdentity{"door", 0x5A3E, 0x9D23, 8},
            UhidTransfers{[this](std::uint8_t, std::span<const std::uint8_t> payload) {
                              taken_.assign(payload.begin(), payload.end());
                              return isWilling_;
                          },
                          [this](std::uint8_t, std::span<std::uint8_t> reply) {
                              std::copy(reply_.begin(), reply_.end(), reply.begin());
                              return isWilling_ ? static_cast<int>(reply_.size()) : -1;
                          }});
    }
    ~Uhid() override { close(kernel_); }

    // What the device tells the kernel; type -1 where it tells nothing.
    uhid_event next() const {
        uhid_event event = {};
        if (recv(kernel_, &event, sizeof event, MSG_DONTWAIT) != sizeof event)
            event.type = static_cast<std::uint32_t>(-1);
        return event;
    }

    uhid_event ask(const uhid_event& event) {
        EXPECT_EQ(send(kernel_, &event, sizeof event, 0), static_cast<ssize_t>(sizeof event));
        EXPECT_TRUE(device_->serve());
        return next();
    }

    uhid_event set(const Bytes& data, std::uint8_t type = UHID_FEATURE_REPORT) {
        uhid_event event = {};
        event.type = UHID_SET_REPORT;
        event.u.set_report.id = 41;
        event.u.set_report.rtype = type;
        event.u.set_report.size = static_cast<std::uint16_t>(data.size());
        std::copy(data.begin(), data.end(), event.u.set_report.data);
        return ask(event);
    }

    uhid_event get(std::uint8_t type = UHID_FEATURE_REPORT) {
        uhid_event event = {};
        event.type = UHID_GET_REPORT;
        event.u.get_report.id = 42;
        event.u.get_report.rtype = type;
        return ask(event);
    }

    int kernel_ = -1;
    std::unique_ptr<UhidDevice> device_;
    Bytes taken_;
    Bytes reply_ = {1, 2, 3, 4, 5, 6, 7, 8};
    bool isWilling_ = true;
};

} // namespace

TEST_F(Uhid, PlugsADeviceWithItsIdentityAndOneFeatureReport) {
    EXPECT_TRUE(device_->plug());
    const uhid_event event = next();
    const uhid_create2_req& request = event.u.create2;
    EXPECT_EQ(event.type, static_cast<std::uint32_t>(UHID_CREATE2));
    EXPECT_STREQ(reinterpret_cast<const char*>(request.name), "door");
    EXPECT_EQ(request.bus, 3); // USB
    EXPECT_EQ(request.vendor, 0x5A3EU);
    EXPECT_EQ(request.product, 0x9D23U);
    const Bytes descriptor = {0x06, 0x00, 0xFF, 0x09, 0x01, 0xA1, 0x01, 0x09, 0x01, 0x15, 0x00,
                              0x26, 0xFF, 0x00, 0x75, 0x08, 0x95, 0x08, 0xB1, 0x02, 0xC0};
    EXPECT_EQ(Bytes(request.rd_data, request.rd_data + request.rd_size), descriptor);
}

TEST_F(Uhid, PlugsOnceAndUnplugsOnce) {
    device_->plug();
    next();
    EXPECT_TRUE(device_->plug());
    EXPECT_EQ(next().type, static_cast<std::uint32_t>(-1));
    EXPECT_TRUE(device_->unplug());
    EXPECT_EQ(next().type, static_cast<std::uint32_t>(UHID_DESTROY));
    EXPECT_FALSE(device_->isPlugged());
    EXPECT_TRUE(device_->unplug());
    EXPECT_EQ(next().type, static_cast<std::uint32_t>(-1));
}

TEST_F(Uhid, HandsAReportOnWithoutItsId) {
    const uhid_event answer = set({0, 0x8F, 0, 0, 0, 0, 0, 0, 9});
    EXPECT_EQ(taken_, (Bytes{0x8F, 0, 0, 0, 0, 0, 0, 9}));
    EXPECT_EQ(answer.type, static_cast<std::uint32_t>(UHID_SET_REPORT_REPLY));
    EXPECT_EQ(answer.u.set_report_reply.id, 41U);
    EXPECT_EQ(answer.u.set_report_reply.err, 0);
}

TEST_F(Uhid, AnswersAFetchWithTheIdInFront) {
    const uhid_event answer = get();
    const auto& reply = answer.u.get_report_reply;
    EXPECT_EQ(answer.type, static_cast<std::uint32_t>(UHID_GET_REPORT_REPLY));
    EXPECT_EQ(reply.id, 42U);
    EXPECT_EQ(reply.err, 0);
    EXPECT_EQ(Bytes(reply.data, reply.data + reply.size), (Bytes{0, 1, 2, 3, 4, 5, 6, 7, 8}));
}

TEST_F(Uhid, AnswersAShortReplyAsShort) {
    reply_ = {1, 2, 3};
    EXPECT_EQ(get().u.get_report_reply.size, 4);
}

TEST_F(Uhid, RefusesWhatTheDeviceRefuses) {
    isWilling_ = false;
    EXPECT_EQ(set({0, 0x8F}).u.set_report_reply.err, EPIPE);
    const uhid_event answer = get();
    EXPECT_EQ(answer.u.get_report_reply.err, EPIPE);
    EXPECT_EQ(answer.u.get_report_reply.size, 0);
}

TEST_F(Uhid, RefusesReportsOfOtherKindsAndWithoutAnId) {
    EXPECT_EQ(set({0, 0x8F}, UHID_OUTPUT_REPORT).u.set_report_reply.err, EPIPE);
    EXPECT_EQ(get(UHID_INPUT_REPORT).u.get_report_reply.err, EPIPE);
    EXPECT_EQ(set({}).u.set_report_reply.err, EPIPE);
    EXPECT_TRUE(taken_.empty());
}

TEST_F(Uhid, ReadsNoFurtherThanAnEventThatTellsTooMuch) {
    uhid_event event = {};
    event.type = UHID_SET_REPORT;
    event.u.set_report.rtype = UHID_FEATURE_REPORT;
    event.u.set_report.size = 0xFFFF;
    ask(event);
    EXPECT_EQ(taken_.size(), static_cast<std::size_t>(UHID_DATA_MAX) - 1);
}

TEST_F(Uhid, PassesOverOtherEvents) {
    uhid_event event = {};
    event.type = UHID_START;
    EXPECT_EQ(ask(event).type, static_cast<std::uint32_t>(-1));
}

TEST_F(Uhid, EndsWhenTheDriverIsGone) {
    close(kernel_);
    EXPECT_FALSE(device_->serve());
    kernel_ = -1;
}

TEST(UhidHint, TellsWhatToDo) {
    EXPECT_EQ(zel::sim::uhidHint(ENOENT), "/dev/uhid: No such file or directory; load the driver "
                                          "with `modprobe uhid`, where the kernel has it");
    EXPECT_EQ(zel::sim::uhidHint(EACCES),
              "/dev/uhid: Permission denied; run zelsim as root, or give your user the node");
}
