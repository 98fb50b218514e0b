// SPDX-License-Identifier: MIT
// A simulated device as the kernel's HID device, with the test in the kernel's place.
#include "sim/tag/reader.h"
#include "sim/uhid/device.h"
#include "sim/uhid/kernel.h"
#include "sim/wire/usb_bus.h"
#include "tests/support/temporary_folder.h"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <linux/sockios.h>
#include <linux/uhid.h>
#include <sys/ioctl.h>
#include <sys/socket.h>

namespace zel::test {

namespace {

using namespace zel::sim;

class KernelDevice : public ::testing::Test {
protected:
    KernelDevice() {
        usbBus().clear();
        reader_->present(card26(26, 3512));
        usbBus().plug(reader_, {TagReader::kVendor, TagReader::kProduct, "sim:door"});
        int ends[2] = {-1, -1};
        EXPECT_EQ(socketpair(AF_UNIX, SOCK_SEQPACKET, 0, ends), 0);
        kernel_.reset(ends[0]);
        fcntl(kernel_.number(), F_SETFL, O_NONBLOCK);
        device_ = std::make_unique<UhidDevice>(Descriptor(ends[1]), 0, 8);
        device_->serve();
    }
    ~KernelDevice() override {
        device_.reset();
        usbBus().clear();
    }

    // The next event that the device wrote; type -1 where there is none.
    uhid_event next() const {
        uhid_event event = {};
        if (read(kernel_.number(), &event, sizeof event) != static_cast<ssize_t>(sizeof event))
            event.type = UINT32_MAX;
        return event;
    }

    uhid_event ask(const uhid_event& request) {
        EXPECT_GT(write(kernel_.number(), &request, sizeof request), 0);
        device_->serve();
        return next();
    }

    // The kernel puts the report's number in front, also 0.
    uhid_event set(std::uint8_t command) {
        uhid_event event = {};
        event.type = UHID_SET_REPORT;
        event.u.set_report.id = 77;
        event.u.set_report.size = 9;
        event.u.set_report.data[1] = command;
        return ask(event);
    }

    uhid_event get() {
        uhid_event event = {};
        event.type = UHID_GET_REPORT;
        event.u.get_report.id = 78;
        return ask(event);
    }

    std::shared_ptr<TagReader> reader_ = std::make_shared<TagReader>();
    Descriptor kernel_;
    std::unique_ptr<UhidDevice> device_;
};

// Else two programs that poll it would keep the simulator from all else.
TEST_F(KernelDevice, ServesSomeRequestsATurnHoweverManyThereAre) {
    const std::uint32_t opened = UHID_OPEN;
    for (int i = 0; i < 40; ++i)
        ASSERT_EQ(write(kernel_.number(), &opened, sizeof opened), 4);
    const auto isAllTaken = [this] {
        int waiting = -1;
        EXPECT_EQ(ioctl(kernel_.number(), SIOCOUTQ, &waiting), 0);
        return waiting == 0;
    };
    device_->serve();
    EXPECT_FALSE(isAllTaken());
    device_->serve();
    EXPECT_TRUE(isAllTaken());
}

TEST_F(KernelDevice, IsMadeWithItsIdentityAndOneFeatureReport) {
    const uhid_event event = next();
    ASSERT_EQ(event.type, std::uint32_t{UHID_CREATE2});
    const uhid_create2_req& create = event.u.create2;
    EXPECT_STREQ(reinterpret_cast<const char*>(create.name), "sim:door");
    EXPECT_EQ(create.vendor, std::uint32_t{TagReader::kVendor});
    EXPECT_EQ(create.product, std::uint32_t{TagReader::kProduct});
    ASSERT_EQ(create.rd_size, 21);
    EXPECT_EQ(create.rd_data[17], 8) << "bytes of the report";
    EXPECT_EQ(create.rd_data[18], 0xB1) << "a feature";
}

TEST_F(KernelDevice, CarriesAReportAndItsAnswer) {
    next();
    const uhid_event sent = set(0x8F);
    EXPECT_EQ(sent.type, std::uint32_t{UHID_SET_REPORT_REPLY});
    EXPECT_EQ(sent.u.set_report_reply.id, 77U);
    EXPECT_EQ(sent.u.set_report_reply.err, 0);
    const uhid_event got = get();
    EXPECT_EQ(got.type, std::uint32_t{UHID_GET_REPORT_REPLY});
    EXPECT_EQ(got.u.get_report_reply.id, 78U);
    EXPECT_EQ(got.u.get_report_reply.err, 0);
    ASSERT_EQ(got.u.get_report_reply.size, 9);
    const std::uint8_t expected[9] = {0, 0x70, 0x1B, 0x34, 0x02};
    EXPECT_EQ(std::memcmp(got.u.get_report_reply.data, expected, sizeof expected), 0);
}

TEST_F(KernelDevice, TellsAnErrorWhereAnExchangeFails) {
    next();
    usbBus().fail(0, Fault::SendRefused);
    EXPECT_EQ(set(0x8F).u.set_report_reply.err, EIO);
    usbBus().fail(0, Fault::NoAnswer);
    EXPECT_EQ(get().u.get_report_reply.err, EIO);
}

TEST_F(KernelDevice, GoesAndComesWithItsPlug) {
    next();
    usbBus().unplug(0);
    device_->serve();
    EXPECT_EQ(next().type, std::uint32_t{UHID_DESTROY});
    EXPECT_EQ(usbBus().openHandles(), 0);
    usbBus().replug(0);
    device_->serve();
    EXPECT_EQ(next().type, std::uint32_t{UHID_CREATE2});
}

TEST_F(KernelDevice, LeavesTheSystemWithTheSimulator) {
    next();
    device_.reset();
    EXPECT_EQ(next().type, std::uint32_t{UHID_DESTROY});
}

TEST_F(KernelDevice, LeavesOtherEventsAlone) {
    next();
    uhid_event event = {};
    event.type = UHID_OPEN;
    EXPECT_EQ(ask(event).type, UINT32_MAX);
}

TEST(KernelNode, ThatIsMissingIsToldWithWhatToDo) {
    const auto node = openUhid("/nowhere/uhid");
    ASSERT_TRUE(std::holds_alternative<Trouble>(node));
    EXPECT_EQ(asLine(std::get<Trouble>(node)),
              "/nowhere/uhid: No such file or directory; load it with `modprobe uhid` as root, "
              "where the kernel has it");
}

} // namespace

} // namespace zel::test
