// SPDX-License-Identifier: MIT
// The events that the kernel and a HID device in user space exchange, each one read or write.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace zel::sim {

using UhidBytes = std::vector<std::uint8_t>;

struct UhidIdentity {
    std::string name;
    std::string place; // unique among the devices of the system
    std::uint16_t vendor = 0;
    std::uint16_t product = 0;
    std::size_t reportSize = 8; // of its one feature report, which has no number
};

// What the kernel asks for; of the many kinds those that a device must answer. The data of a report
// begins with its number, also where that is 0.
struct UhidRequest {
    enum class Kind { None, Set, Get } kind = Kind::None;
    std::uint32_t id = 0;
    std::uint8_t report = 0;
    UhidBytes data = {}; // of a set
};

UhidRequest uhidRequestIn(std::span<const std::uint8_t> event);

UhidBytes uhidCreation(const UhidIdentity& identity);
UhidBytes uhidDestruction();

// The answers to both; an error is an errno, 0 for none.
UhidBytes uhidSetReply(std::uint32_t id, int error);
UhidBytes uhidGetReply(std::uint32_t id, int error, std::span<const std::uint8_t> data);

// The largest event.
std::size_t uhidEventSize();

} // namespace zel::sim
