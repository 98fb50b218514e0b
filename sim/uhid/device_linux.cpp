// SPDX-License-Identifier: MIT
// Events of the kernel's user-space HID driver: a device made, its feature reports answered.
#include "sim/uhid/device.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <linux/input.h>
#include <linux/uhid.h>
#include <unistd.h>
#include <utility>

namespace zel::sim {

namespace {

constexpr char kNode[] = "/dev/uhid";
constexpr std::size_t kReportCountAt = 17; // in the descriptor below

// One vendor-defined collection with one feature report that has no ID (USB HID 1.11, 6.2.2).
constexpr std::array<std::uint8_t, 21> kDescriptor = {
    0x06, 0x00, 0xFF, // usage page: vendor-defined
    0x09, 0x01,       // usage
    0xA1, 0x01,       // collection: application
    0x09, 0x01,       // usage
    0x15, 0x00,       // logical minimum 0
    0x26, 0xFF, 0x00, // logical maximum 255
    0x75, 0x08,       // report size: 8 bits
    0x95, 0x08,       // report count, set for each device
    0xB1, 0x02,       // feature: data, variable, absolute
    0xC0,             // end of the collection
};

bool send(int fd, const uhid_event& event) {
    return write(fd, &event, sizeof event) == static_cast<ssize_t>(sizeof event);
}

template <std::size_t kSize> void copyText(std::uint8_t (&place)[kSize], const std::string& text) {
    std::copy_n(text.begin(), std::min(text.size(), kSize - 1), place);
}

uhid_event creation(const UhidIdentity& identity) {
    uhid_event event = {};
    event.type = UHID_CREATE2;
    uhid_create2_req& request = event.u.create2;
    copyText(request.name, identity.name);
    copyText(request.phys, "zelsim/" + identity.name);
    request.rd_size = static_cast<std::uint16_t>(kDescriptor.size());
    request.bus = BUS_USB; // hosts look for readers there
    request.vendor = identity.vendor;
    request.product = identity.product;
    std::copy(kDescriptor.begin(), kDescriptor.end(), request.rd_data);
    request.rd_data[kReportCountAt] = identity.reportSize;
    return event;
}

bool isFeature(std::uint8_t type) { return type == UHID_FEATURE_REPORT; }

// The report ID stands in front of the data, also ID 0.
uhid_event answerToSet(const uhid_set_report_req& request, const UhidTransfers& transfers) {
    const std::size_t size = std::min<std::size_t>(request.size, UHID_DATA_MAX);
    const std::span<const std::uint8_t> data(request.data, size);
    const bool isTaken =
        isFeature(request.rtype) && size > 0 && transfers.set(request.rnum, data.subspan(1));
    uhid_event answer = {};
    answer.type = UHID_SET_REPORT_REPLY;
    answer.u.set_report_reply.id = request.id;
    answer.u.set_report_reply.err = isTaken ? 0 : EPIPE;
    return answer;
}

uhid_event answerToGet(const uhid_get_report_req& request, const UhidTransfers& transfers,
                       std::uint8_t reportSize) {
    uhid_event answer = {};
    answer.type = UHID_GET_REPORT_REPLY;
    uhid_get_report_reply_req& reply = answer.u.get_report_reply;
    reply.id = request.id;
    const std::span<std::uint8_t> room(reply.data + 1, reportSize);
    const int size = isFeature(request.rtype) ? transfers.get(request.rnum, room) : -1;
    reply.err = size < 0 ? EPIPE : 0;
    reply.size = static_cast<std::uint16_t>(size < 0 ? 0 : std::min<int>(size, reportSize) + 1);
    reply.data[0] = request.rnum;
    return answer;
}

} // namespace

int openUhid() { return open(kNode, O_RDWR | O_CLOEXEC); }

std::string uhidHint(int error) {
    const std::string reason = std::string(kNode) + ": " + std::strerror(error);
    switch (error) {
    case ENOENT:
    case ENODEV:
        return reason + "; load the driver with `modprobe uhid`, where the kernel has it";
    case EACCES:
    case EPERM:
        return reason + "; run zelsim as root, or give your user the node";
    default:
        return reason;
    }
}

UhidDevice::UhidDevice(int fd, UhidIdentity identity, UhidTransfers transfers)
    : fd_(fd), identity_(std::move(identity)), transfers_(std::move(transfers)) {}

// The kernel takes the device away when its descriptor is closed.
UhidDevice::~UhidDevice() { close(fd_); }

bool UhidDevice::plug() {
    if (!isPlugged_)
        isPlugged_ = send(fd_, creation(identity_));
    return isPlugged_;
}

bool UhidDevice::unplug() {
    uhid_event event = {};
    event.type = UHID_DESTROY;
    if (isPlugged_)
        isPlugged_ = !send(fd_, event);
    return !isPlugged_;
}

bool UhidDevice::serve() {
    uhid_event event = {};
    const ssize_t size = read(fd_, &event, sizeof event);
    if (size <= 0)
        return size < 0 && (errno == EINTR || errno == EAGAIN);
    if (event.type == UHID_SET_REPORT)
        send(fd_, answerToSet(event.u.set_report, transfers_));
    else if (event.type == UHID_GET_REPORT)
        send(fd_, answerToGet(event.u.get_report, transfers_, identity_.reportSize));
    return true;
}

} // namespace zel::sim
