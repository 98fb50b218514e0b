// SPDX-License-Identifier: MIT
// What the simulated USB bus asks of a device model: the two feature-report transfers.
#pragma once

#include <cstdint>
#include <span>
#include <string>

namespace zel::sim {

class Device {
public:
    Device() = default;
    Device(const Device&) = delete;
    Device& operator=(const Device&) = delete;
    virtual ~Device() = default;

    // Takes a report's payload, without the report ID. False: the device refuses (stalls).
    virtual bool take(std::uint8_t reportId, std::span<const std::uint8_t> payload) = 0;

    // Fills the reply to the last report, without the report ID. False: the device refuses.
    virtual bool answer(std::uint8_t reportId, std::span<std::uint8_t> reply) = 0;

    // A report, or the reply to the last one, was lost on the way.
    virtual void sendLost(std::span<const std::uint8_t>) {}
    virtual void replyLost() {}

    // Power came back after the device was unplugged.
    virtual void powerUp() {}

    // What a report means, for traces; empty when it has no name.
    virtual std::string nameOf(std::span<const std::uint8_t> payload) const = 0;

    // What the device objects to in the exchange just made, for traces; empty for nothing.
    virtual std::string takeRemark() { return {}; }
};

} // namespace zel::sim
