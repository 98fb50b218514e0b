// SPDX-License-Identifier: MIT
// The events as the kernel's header lays them out.
#include "sim/uhid/events.h"

#include <algorithm>
#include <cstring>
#include <linux/input.h>
#include <linux/uhid.h>

namespace zel::sim {

namespace {

constexpr std::uint32_t kVersion = 0x0102;

// A vendor's own collection with one feature report of so many bytes.
UhidBytes reportDescriptor(std::size_t reportSize) {
    return {0x06, 0x00, 0xFF, 0x09, 0x01, 0xA1, 0x01, 0x09, 0x01,
            0x15, 0x00, 0x26, 0xFF, 0x00, 0x75, 0x08, 0x95, static_cast<std::uint8_t>(reportSize),
            0xB1, 0x02, 0xC0};
}

UhidBytes bytesOf(const uhid_event& event) {
    UhidBytes bytes(sizeof event);
    std::memcpy(bytes.data(), &event, sizeof event);
    return bytes;
}

template <std::size_t Size> void copyText(const std::string& text, std::uint8_t (&into)[Size]) {
    std::memcpy(into, text.data(), std::min(text.size(), Size - 1));
}

} // namespace

std::size_t uhidEventSize() { return sizeof(uhid_event); }

UhidRequest uhidRequestIn(std::span<const std::uint8_t> bytes) {
    uhid_event event = {};
    std::memcpy(&event, bytes.data(), std::min(bytes.size(), sizeof event));
    if (event.type == UHID_GET_REPORT)
        return {UhidRequest::Kind::Get, event.u.get_report.id, event.u.get_report.rnum};
    if (event.type != UHID_SET_REPORT)
        return {};
    const uhid_set_report_req& set = event.u.set_report;
    const std::size_t size = std::min<std::size_t>(set.size, sizeof set.data);
    return {UhidRequest::Kind::Set, set.id, set.rnum, UhidBytes(set.data, set.data + size)};
}

UhidBytes uhidCreation(const UhidIdentity& identity) {
    const UhidBytes descriptor = reportDescriptor(identity.reportSize);
    uhid_event event = {};
    event.type = UHID_CREATE2;
    uhid_create2_req& create = event.u.create2;
    copyText(identity.name, create.name);
    copyText(identity.place, create.phys);
    create.rd_size = static_cast<std::uint16_t>(descriptor.size());
    create.bus = BUS_USB;
    create.vendor = identity.vendor;
    create.product = identity.product;
    create.version = kVersion;
    std::memcpy(create.rd_data, descriptor.data(), descriptor.size());
    return bytesOf(event);
}

UhidBytes uhidDestruction() {
    uhid_event event = {};
    event.type = UHID_DESTROY;
    return bytesOf(event);
}

UhidBytes uhidSetReply(std::uint32_t id, int error) {
    uhid_event event = {};
    event.type = UHID_SET_REPORT_REPLY;
    event.u.set_report_reply.id = id;
    event.u.set_report_reply.err = static_cast<std::uint16_t>(error);
    return bytesOf(event);
}

UhidBytes uhidGetReply(std::uint32_t id, int error, std::span<const std::uint8_t> data) {
    uhid_event event = {};
    event.type = UHID_GET_REPORT_REPLY;
    uhid_get_report_reply_req& reply = event.u.get_report_reply;
    reply.id = id;
    reply.err = static_cast<std::uint16_t>(error);
    const std::size_t size = std::min(data.size(), sizeof reply.data);
    reply.size = static_cast<std::uint16_t>(size);
    std::copy_n(data.begin(), size, reply.data);
    return bytesOf(event);
}

} // namespace zel::sim
