// SPDX-License-Identifier: MIT
// The gadget is made in configfs; its requests are served over the control endpoint of FunctionFS.
#include "tests/kernel/guest/usb_reader.h"

#include "tests/kernel/guest/simulator.h"
#include "tests/kernel/guest/usb_descriptors.h"

#include <algorithm>
#include <array>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iomanip>
#include <poll.h>
#include <span>
#include <sys/eventfd.h>
#include <sys/mount.h>
#include <unistd.h>

namespace zel::test {

namespace {

namespace fs = std::filesystem;

constexpr std::size_t kShort = 3;
constexpr std::uint8_t kGetReport = 1;
constexpr std::uint8_t kSetReport = 9;
constexpr std::uint8_t kSetIdle = 10;
const fs::path kConfigfs = "/tmp/configfs";
const fs::path kFunctions = "/tmp/functions";
const fs::path kGadget = kConfigfs / "usb_gadget/reader";

void writeAttribute(const fs::path& attribute, const std::string& text) {
    std::ofstream file(attribute);
    file << text << std::endl;
    EXPECT_TRUE(file) << attribute;
}

void mountOnce(const char* source, const fs::path& folder, const char* type) {
    fs::create_directory(folder);
    if (!fs::is_empty(folder))
        return;
    EXPECT_EQ(mount(source, folder.c_str(), type, 0, nullptr), 0) << type;
}

std::string hexNumber(unsigned number) {
    std::ostringstream text;
    text << std::showbase << std::hex << number;
    return text.str();
}

void makeGadget() {
    mountOnce("none", kConfigfs, "configfs");
    fs::create_directory(kGadget);
    writeAttribute(kGadget / "idVendor", hexNumber(sim::TagReader::kVendor));
    writeAttribute(kGadget / "idProduct", hexNumber(sim::TagReader::kProduct));
    fs::create_directory(kGadget / "configs/c.1");
    fs::create_directory(kGadget / "functions/ffs.reader");
    fs::create_symlink(kGadget / "functions/ffs.reader", kGadget / "configs/c.1/ffs.reader");
    mountOnce("reader", kFunctions, "functionfs");
}

void removeGadget() {
    EXPECT_EQ(umount(kFunctions.c_str()), 0);
    fs::remove(kGadget / "configs/c.1/ffs.reader");
    fs::remove(kGadget / "configs/c.1");
    fs::remove(kGadget / "functions/ffs.reader");
    fs::remove(kGadget);
}

template <class Part> void describe(int endpoint) {
    const Part part;
    EXPECT_EQ(write(endpoint, &part, sizeof part), static_cast<ssize_t>(sizeof part));
}

bool wantsData(const usb_ctrlrequest& request) { return (request.bRequestType & USB_DIR_IN) != 0; }

} // namespace

UsbReader::UsbReader() {
    makeGadget();
    endpoint_ = open((kFunctions / "ep0").c_str(), O_RDWR | O_CLOEXEC);
    EXPECT_GE(endpoint_, 0);
    describe<Descriptors>(endpoint_);
    describe<Strings>(endpoint_);
    stop_ = eventfd(0, EFD_CLOEXEC);
    server_ = std::thread([this] { serve(); });
}

UsbReader::~UsbReader() {
    fail(Fault::None);
    EXPECT_EQ(eventfd_write(stop_, 1), 0);
    server_.join();
    close(stop_);
    close(endpoint_);
    removeGadget();
    EXPECT_TRUE(waitForNodes(0));
}

void UsbReader::fail(Fault fault) {
    fault_ = fault;
    fault_.notify_one();
}

void UsbReader::plug() {
    reader_.powerUp();
    writeAttribute(kGadget / "UDC", "dummy_udc.0");
    EXPECT_TRUE(waitForNodes(1));
}

void UsbReader::unplug() { writeAttribute(kGadget / "UDC", ""); }

void UsbReader::serve() {
    std::array<pollfd, 2> ends = {{{endpoint_, POLLIN, 0}, {stop_, POLLIN, 0}}};
    while (poll(ends.data(), ends.size(), -1) > 0 && ends[1].revents == 0) {
        usb_functionfs_event event = {};
        if (read(endpoint_, &event, sizeof event) == static_cast<ssize_t>(sizeof event) &&
            event.type == FUNCTIONFS_SETUP)
            answer(event.u.setup);
    }
}

void UsbReader::answer(const usb_ctrlrequest& request) {
    const std::size_t size = le16toh(request.wLength);
    const bool isClass = (request.bRequestType & USB_TYPE_MASK) == USB_TYPE_CLASS;
    if (!isClass && request.bRequest == USB_REQ_GET_DESCRIPTOR &&
        le16toh(request.wValue) >> 8 == kHidReportDescriptor)
        give(kReportDescriptor.data(), kReportDescriptor.size(), size);
    else if (isClass && request.bRequest == kSetReport)
        takeReport(size);
    else if (isClass && request.bRequest == kGetReport)
        giveReport(size);
    else if (isClass && request.bRequest == kSetIdle) [[maybe_unused]]
        const ssize_t acknowledged = read(endpoint_, nullptr, 0);
    else
        refuse(wantsData(request));
}

void UsbReader::takeReport(std::size_t size) {
    std::array<std::uint8_t, 64> report = {};
    if (fault_ == Fault::RefuseReport) {
        refuse(false);
        return;
    }
    const ssize_t taken = read(endpoint_, report.data(), std::min(size, report.size()));
    if (taken >= 0)
        reader_.take(0, std::span(report).first(static_cast<std::size_t>(taken)));
}

void UsbReader::giveReport(std::size_t size) {
    std::array<std::uint8_t, 8> report = {};
    const Fault fault = fault_;
    if (fault == Fault::NoAnswer) {
        fault_.wait(fault); // to read on would refuse the request
        return;
    }
    if (fault == Fault::RefuseAnswer || !reader_.answer(0, report))
        refuse(true);
    else
        give(report.data(), fault == Fault::ShortAnswer ? kShort : report.size(), size);
}

void UsbReader::give(const std::uint8_t* bytes, std::size_t size, std::size_t wanted) const {
    const std::size_t given = std::min(size, wanted);
    EXPECT_EQ(write(endpoint_, bytes, given), static_cast<ssize_t>(given));
}

// Data in the wrong direction stalls the endpoint.
void UsbReader::refuse(bool isWanted) const {
    EXPECT_EQ(isWanted ? read(endpoint_, nullptr, 0) : write(endpoint_, nullptr, 0), -1);
}

} // namespace zel::test
