// SPDX-License-Identifier: MIT
// Asks the library which device is active.
#include "cli/device.h"

#include "frame/zelTagAPI.h"

#include <nlohmann/json.hpp>

namespace zel::cli {

namespace {
constexpr std::size_t kNameSize = 512; // what GetDevName() may write
}

Device activeDevice() {
    char name[kNameSize] = "";
    GetDevName(name);
    return {GetActDev(), name};
}

std::string activeProduct() {
    switch (GetProduct()) {
    case ZELTAGAPI_ZELTAG:
        return "zelTag";
    case ZELTAGAPI_ZELBAND:
        return "zelBand";
    case ZELTAGAPI_ZELECHO:
        return "zelEcho";
    default:
        return "unknown";
    }
}

Json toJson(const Device& device) { return {{"index", device.index}, {"name", device.name}}; }

} // namespace zel::cli
