// SPDX-License-Identifier: MIT
// A device on a byte stream that sends back each byte with all bits turned over.
#pragma once

#include "sim/wire/stream_device.h"

namespace zel::test {

class EchoStream : public sim::StreamDevice {
public:
    static std::vector<std::uint8_t> turnedOver(std::span<const std::uint8_t> bytes) {
        std::vector<std::uint8_t> reply;
        for (const std::uint8_t byte : bytes)
            reply.push_back(static_cast<std::uint8_t>(~byte));
        return reply;
    }

    std::vector<std::uint8_t> receive(std::span<const std::uint8_t> bytes) override {
        received.insert(received.end(), bytes.begin(), bytes.end());
        return turnedOver(bytes);
    }
    void restart() override { ++restarts; }

    std::vector<std::uint8_t> received;
    int restarts = 0;
};

} // namespace zel::test
