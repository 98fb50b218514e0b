// SPDX-License-Identifier: MIT
// Matches actions with the sorts of devices.
#include "sim/scene/choice.h"

#include <vector>

namespace zel::sim {

namespace {

constexpr const char* kHowToName = "name one of these: ";

struct Demand {
    std::optional<Sort> sort; // nothing: any device
    const char* what;
};

Demand demandOf(const Action& action) {
    struct {
        Demand operator()(const Tap&) const {
            return {Sort::Proximity, "takes cards in its field"};
        }
        Demand operator()(const Remove&) const {
            return {Sort::Proximity, "takes cards in its field"};
        }
        Demand operator()(const Swipe&) const { return {Sort::Stripe, "reads magnetic stripes"}; }
        Demand operator()(const Approach&) const { return {Sort::Sensor, "measures a distance"}; }
        Demand operator()(const Unplug&) const { return {{}, ""}; }
        Demand operator()(const Plug&) const { return {{}, ""}; }
        Demand operator()(const FaultOrder&) const { return {{}, ""}; }
    } demand;
    return std::visit(demand, action);
}

bool fits(const Candidate& device, const Demand& demand) {
    return !demand.sort || device.kind->sort == *demand.sort;
}

Trouble wrongName(std::span<const Candidate> devices, const std::string& name) {
    Names names;
    for (const Candidate& device : devices)
        names.push_back(device.name);
    return {Exit::NoDevice, "there is no device " + name, meantBy(name, names)};
}

std::variant<std::size_t, Trouble> chooseNamed(std::span<const Candidate> devices,
                                               const std::string& name, const Demand& demand) {
    for (std::size_t i = 0; i < devices.size(); ++i) {
        if (devices[i].name != name)
            continue;
        if (fits(devices[i], demand))
            return i;
        return Trouble{Exit::Usage,
                       name + " is a " + devices[i].kind->name + ", none that " + demand.what,
                       "name another device"};
    }
    return wrongName(devices, name);
}

} // namespace

std::variant<std::size_t, Trouble> chooseDevice(std::span<const Candidate> devices,
                                                const std::string& name, const Action& action) {
    const Demand demand = demandOf(action);
    if (!name.empty())
        return chooseNamed(devices, name, demand);
    std::vector<std::size_t> fitting;
    Names names;
    for (std::size_t i = 0; i < devices.size(); ++i) {
        if (!fits(devices[i], demand))
            continue;
        fitting.push_back(i);
        names.push_back(devices[i].name);
    }
    if (fitting.size() == 1)
        return fitting.front();
    if (fitting.empty())
        return Trouble{Exit::NoDevice,
                       std::string("there is no device") + (demand.sort ? " that " : "") +
                           demand.what,
                       "add one to the scenario"};
    return Trouble{Exit::Usage, "several devices may be meant", kHowToName + listed(names)};
}

} // namespace zel::sim
