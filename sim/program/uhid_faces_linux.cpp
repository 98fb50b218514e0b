// SPDX-License-Identifier: MIT
// By the kernel's uhid.
#include "sim/program/uhid_faces.h"
#include "sim/uhid/device.h"
#include "sim/uhid/kernel.h"

namespace zel::sim {

std::variant<std::vector<std::unique_ptr<Face>>, Trouble> makeUhidFaces(const World& world) {
    std::vector<std::unique_ptr<Face>> faces;
    const std::vector<std::size_t> sizes = world.reportSizes();
    for (std::size_t port = 0; port < sizes.size(); ++port) {
        auto kernel = openUhid();
        if (const auto* const trouble = std::get_if<Trouble>(&kernel))
            return *trouble;
        faces.push_back(std::make_unique<UhidDevice>(std::move(std::get<Descriptor>(kernel)), port,
                                                     sizes[port]));
    }
    return faces;
}

} // namespace zel::sim
