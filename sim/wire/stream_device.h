// SPDX-License-Identifier: MIT
// What a simulated byte stream, a serial line or a network bridge, asks of a device model.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

namespace zel::sim {

class StreamDevice {
public:
    StreamDevice() = default;
    StreamDevice(const StreamDevice&) = delete;
    StreamDevice& operator=(const StreamDevice&) = delete;
    virtual ~StreamDevice() = default;

    // Takes bytes from the host, in pieces of any size; what the device sends back at once.
    virtual std::vector<std::uint8_t> receive(std::span<const std::uint8_t> bytes) = 0;

    // The line was opened anew: what was begun is forgotten.
    virtual void restart() {}
};

} // namespace zel::sim
