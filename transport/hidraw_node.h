// SPDX-License-Identifier: MIT
// What the system tells of a hidraw node: its name, and the attribute with its identity.
#pragma once

#include <cstdint>
#include <string_view>

namespace zel {

struct HidrawNode {
    unsigned number;
    std::uint16_t vendor;
    std::uint16_t product;
};

// Takes the number of a name such as "hidraw3". Whether it is one.
bool takesName(std::string_view name, HidrawNode& node);

// Takes the identity that the text of the attribute "uevent" tells. Whether it tells one.
bool takesIds(std::string_view uevent, HidrawNode& node);

} // namespace zel
