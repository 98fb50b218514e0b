// SPDX-License-Identifier: MIT
// Asks the library which device is active.
#include "cli/device/device.h"

#include "frame/zelTagAPI.h"

#include <nlohmann/json.hpp>

namespace zel::cli {

namespace {

constexpr std::size_t kNameSize = 512;        // what GetDevName() may write
constexpr std::uint64_t kLongestPing = 65535; // ms; an absent reader is told by more

Place& devicePlace() {
    static Place place;
    return place;
}

} // namespace

void setDevicePlace(const Place& place) { devicePlace() = place; }

Device activeDevice() {
    char name[kNameSize] = "";
    GetDevName(name);
    return {GetActDev(), name, devicePlace()};
}

std::string nameAndPath(const Device& device) {
    return device.place.key == "port" ? device.name + " " + device.place.text : device.name;
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

bool isTag() { return GetProduct() == ZELTAGAPI_ZELTAG; }

bool isStripe() { return GetProduct() == ZELTAGAPI_ZELBAND; }

std::optional<std::uint64_t> pingTime() {
    const std::uint64_t time = Ping();
    return time <= kLongestPing ? std::optional(time) : std::nullopt;
}

Json toJson(const Device& device) {
    Json object = {{"index", device.index}, {"name", device.name}};
    if (!device.place.key.empty())
        object[device.place.key] = device.place.text;
    return object;
}

} // namespace zel::cli
