// SPDX-License-Identifier: MIT
// Finds a setting by its name.
#include "sim/scene/setting.h"

namespace zel::sim {

const Setting* findSetting(const Settings& settings, std::string_view name) {
    for (const Setting& setting : settings)
        if (setting.name == name)
            return &setting;
    for (const Setting& setting : settings)
        if (setting.name.ends_with("." + std::string(name)))
            return &setting;
    return nullptr;
}

} // namespace zel::sim
