// SPDX-License-Identifier: MIT
// What the bytes between a host and a device are called: one door to the names that the simulated
// devices tell.
#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <string>

namespace zel::sim {

class Device;

enum class Family { Tag, Band, Echo };

// Names each report to a device on USB. It goes along with a simulated device of the same family,
// which knows what a report means behind those before it.
class ReportNames {
public:
    explicit ReportNames(Family family);

    // A report that the device took, or that was lost on the way.
    std::string sent(std::span<const std::uint8_t> payload, bool taken);
    void received(std::size_t size);

private:
    std::shared_ptr<Device> companion_;
};

// The name of a frame's header behind the class byte; empty when it has none.
std::string tagFrameName(std::span<const std::uint8_t> header);

} // namespace zel::sim
