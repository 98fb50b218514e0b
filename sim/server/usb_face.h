// SPDX-License-Identifier: MIT
// One application's view of the simulated bus, over a connection.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace zel::sim {

class FrameReader;

// Its handles are closed with it.
class UsbFace {
public:
    UsbFace() = default;
    ~UsbFace();
    UsbFace(const UsbFace&) = delete;
    UsbFace& operator=(const UsbFace&) = delete;

    // The answer to a request, with its head; nothing where that is none.
    std::optional<std::vector<std::uint8_t>> answer(std::span<const std::uint8_t> request);

private:
    using Bytes = std::vector<std::uint8_t>;

    static Bytes list();
    Bytes open(FrameReader& request);
    Bytes close(FrameReader& request);
    Bytes set(FrameReader& request) const;
    Bytes get(FrameReader& request) const;
    void* handle(std::uint32_t number) const;

    std::vector<void*> handles_; // number 1 is the first; null when it was closed
};

} // namespace zel::sim
