// SPDX-License-Identifier: MIT
// Factory values, and the copies among the stored sets.
#include "sim/tag/settings.h"

namespace zel::sim {

namespace {

constexpr std::uint8_t kOldForm = 12; // of separator and field data
constexpr std::uint8_t kNewForm = 0x24;

enum Set : unsigned { kCurrent = 1, kUser = 2, kFactory = 3 };

TagConfiguration factoryConfiguration(const TagOptions& options) {
    TagConfiguration made = {};
    made.block[0] = {3, 5, 0x11, 16, 26, 0, 0x28, 0x01};
    made.block[1] = {0, 16, 20, 40, 1, 1, 0, options.features};
    made.page[0] = {kOldForm};
    if (options.fieldPages != 0)
        made.page[0] = {kNewForm, 0, 0, options.fieldPages};
    return made;
}

} // namespace

TagSettings tagFactorySettings(const TagOptions& options) {
    TagSettings made = {};
    made.configuration.fill(factoryConfiguration(options));
    return made;
}

TagMemory::TagMemory(const TagOptions& options)
    : current(tagFactorySettings(options)), stored(current), user(current), factory_(current) {}

void TagMemory::powerUp() {
    current = stored;
    active = 0;
}

void TagMemory::makeCurrent(const TagSettings& settings) {
    current.configuration = settings.configuration;
    stored = current;
}

void TagMemory::resetToFactory() { makeCurrent(factory_); }

bool TagMemory::move(unsigned source, unsigned target) {
    const bool isKnown = source >= kCurrent && source <= kFactory;
    if (!isKnown || (target != kCurrent && target != kUser))
        return false;
    const TagSettings& from = source == kCurrent ? current : source == kUser ? user : factory_;
    if (target == kUser)
        user.configuration = from.configuration;
    else
        makeCurrent(from);
    return true;
}

} // namespace zel::sim
