// SPDX-License-Identifier: MIT
// One number that a device can be set to, by the word that the library and its files have for it.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace zel::sim {

struct Setting {
    std::string name; // "TimeParms.iIDHoldTO", "UserField[0].Track"
    int step;         // what one step of the device's number means; 50 for 50 ms
    int most;
    std::function<int()> get;
    std::function<void(int)> set;
};

using Settings = std::vector<Setting>;

// By its whole name or by what stands behind the last point; null where there is none.
const Setting* findSetting(const Settings& settings, std::string_view name);

} // namespace zel::sim
