// SPDX-License-Identifier: MIT
// A simulated device that the whole system sees: the kernel makes a HID device of it and hands each
// feature report over, through its user-space HID driver (uhid).
//
// The node of that driver most often belongs to root. Where there is no such driver, openUhid()
// fails.
#pragma once

#include <cstdint>
#include <functional>
#include <span>
#include <string>

namespace zel::sim {

struct UhidIdentity {
    std::string name;
    std::uint16_t vendor = 0;
    std::uint16_t product = 0;
    std::uint8_t reportSize = 8; // bytes of its one feature report, without a report ID
};

// What carries the reports on. `get` fills the reply and returns its length; -1: refused.
struct UhidTransfers {
    std::function<bool(std::uint8_t reportId, std::span<const std::uint8_t> payload)> set;
    std::function<int(std::uint8_t reportId, std::span<std::uint8_t> reply)> get;
};

// A descriptor of the driver; -1 with errno set.
int openUhid();

// What openUhid() failed for, and what to do about it.
std::string uhidHint(int error);

class UhidDevice {
public:
    // Owns the descriptor; each device needs one of its own.
    UhidDevice(int fd, UhidIdentity identity, UhidTransfers transfers);
    ~UhidDevice();
    UhidDevice(const UhidDevice&) = delete;
    UhidDevice& operator=(const UhidDevice&) = delete;

    // Plugs the device in, and takes it away; false with errno set where the kernel refuses.
    bool plug();
    bool unplug();
    bool isPlugged() const { return isPlugged_; }

    // To be waited for; when it can be read, serve() answers one event. False: the driver is gone.
    int descriptor() const { return fd_; }
    bool serve();

private:
    int fd_;
    UhidIdentity identity_;
    UhidTransfers transfers_;
    bool isPlugged_ = false;
};

} // namespace zel::sim
