// SPDX-License-Identifier: MIT
// Makes the devices of each kind.
#include "sim/scene/kinds.h"

#include "sim/demo/reader.h"
#include "sim/scene/band_apparatus.h"
#include "sim/scene/echo_apparatus.h"
#include "sim/scene/tag_apparatus.h"

#include <algorithm>
#include <charconv>

namespace zel::sim {

namespace {

constexpr int kTagPlusConfigurations = 3;

// Four hexadecimal digits, such as "0123"; anything else leaves the model's own version.
std::uint16_t versionOf(const DeviceMake& made, std::uint16_t own) {
    std::uint16_t version = own;
    std::from_chars(made.firmware.data(), made.firmware.data() + made.firmware.size(), version, 16);
    return version;
}

TagOptions tagOptions(const DeviceMake& made) {
    TagOptions options;
    options.volume = std::uint8_t{2};
    options.partNumber = made.partNumber.empty() ? "ZT7" : made.partNumber;
    options.firmwareVersion = made.firmware;
    options.tagPlusConfigurations = made.configurations;
    std::copy_n(made.serialNumber.begin(),
                std::min(made.serialNumber.size(), options.serialNumber.size()),
                options.serialNumber.begin());
    return options;
}

std::unique_ptr<Apparatus> makeTag(const DeviceMake& made, std::uint16_t vendor,
                                   std::uint16_t product) {
    auto reader = std::make_shared<TagReader>(tagOptions(made));
    reader->settings().luid = made.luid.value_or(0);
    reader->keepSettings();
    return std::make_unique<TagApparatus>(std::move(reader), UsbIdentity{vendor, product, {}});
}

std::unique_ptr<Apparatus> makePlain(const DeviceMake& made) {
    return makeTag(made, TagReader::kVendor, TagReader::kProduct);
}

std::unique_ptr<Apparatus> makeTagPlus(const DeviceMake& made) {
    DeviceMake plus = made;
    if (plus.configurations == 0)
        plus.configurations = kTagPlusConfigurations;
    return makePlain(plus);
}

std::unique_ptr<Apparatus> makeTagAdv(const DeviceMake& made) {
    return makeTag(made, TagReader::kVendor, TagReader::kTagAdvProduct);
}

std::unique_ptr<Apparatus> makeKq7(const DeviceMake& made) {
    return makeTag(made, TagReader::kKq7Vendor, TagReader::kKq7Product);
}

constexpr std::size_t kLuidAt = 3; // of the system bytes, low byte first

std::unique_ptr<Apparatus> makeBand(const DeviceMake& made) {
    BandOptions options;
    options.firmwareVersion = versionOf(made, options.firmwareVersion);
    if (!made.partNumber.empty())
        options.partNumber = made.partNumber;
    auto reader = std::make_shared<BandReader>(options);
    auto& system = reader->settings().system;
    system[kLuidAt] = static_cast<std::uint8_t>(made.luid.value_or(0));
    system[kLuidAt + 1] = static_cast<std::uint8_t>(made.luid.value_or(0) >> 8);
    reader->keepSettings();
    return std::make_unique<BandApparatus>(std::move(reader));
}

std::unique_ptr<Apparatus> makeEcho(const DeviceMake& made) {
    EchoOptions options;
    options.luid = made.luid.value_or(0);
    options.firmwareVersion = versionOf(made, options.firmwareVersion);
    return std::make_unique<EchoApparatus>(std::make_shared<EchoSensor>(options));
}

constexpr Kind kKinds[] = {
    {"zelTag", Sort::Proximity, makePlain},  {"TagPlus", Sort::Proximity, makeTagPlus},
    {"TagAdv", Sort::Proximity, makeTagAdv}, {"KQ7", Sort::Proximity, makeKq7},
    {"zelBand", Sort::Stripe, makeBand},     {"zelEcho", Sort::Sensor, makeEcho},
};

} // namespace

std::span<const Kind> allKinds() { return kKinds; }

const Kind* findKind(std::string_view name) {
    const auto* const found = std::ranges::find(kKinds, name, &Kind::name);
    return found == std::end(kKinds) ? nullptr : found;
}

std::unique_ptr<Apparatus> demoApparatus() {
    return std::make_unique<TagApparatus>(demoReader(),
                                          UsbIdentity{TagReader::kVendor, TagReader::kProduct, {}});
}

} // namespace zel::sim
