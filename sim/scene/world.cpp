// SPDX-License-Identifier: MIT
// Puts the devices of a scenario up and does to them what is due or told.
#include "sim/scene/world.h"

#include "sim/wire/line.h"

#include <cmath>

namespace zel::sim {

namespace {

constexpr double kSecond = 1e6; // microseconds
constexpr std::size_t kLongestTrace = 1U << 20;

std::uint64_t microsecondsOf(double seconds) {
    return static_cast<std::uint64_t>(std::llround(seconds * kSecond));
}

void apply(const std::vector<ScenarioSetting>& changes, Apparatus& device) {
    const Settings words = device.settings();
    for (const ScenarioSetting& change : changes)
        if (const Setting* const word = findSetting(words, change.name))
            word->set(change.value);
    device.keepSettings();
}

} // namespace

void World::clear() {
    usbBus().clear();
    lines().clear();
    usbBus().startTrace();
}

World::World(const Scenario& scenario) : cards_(scenario.cards) {
    clear();
    std::vector<Candidate> names;
    for (const ScenarioDevice& device : scenario.devices) {
        add(device.name, *device.kind, device.kind->make(device.make), device.at);
        apply(device.settings, *residents_.back().device);
        names.push_back({device.name, device.kind});
    }
    for (const ScenarioEvent& event : scenario.events) {
        const auto index = chooseDevice(names, event.device, event.action);
        if (const auto* const device = std::get_if<std::size_t>(&index))
            timeline_.script(microsecondsOf(event.at), *device, event.action);
    }
    turn_ = microsecondsOf(scenario.repeat);
}

std::unique_ptr<World> World::demo(bool isBehindBridge) {
    clear();
    std::unique_ptr<World> world(new World);
    world->add("zeltag-0", *findKind("zelTag"), demoApparatus(), isBehindBridge ? "bridge" : "usb");
    return world;
}

void World::add(std::string name, const Kind& kind, std::unique_ptr<Apparatus> device,
                std::string at) {
    auto place = placeFor(*device, name, at);
    residents_.push_back(
        {std::move(name), &kind, std::move(device), std::move(at), std::move(place)});
}

std::unique_ptr<Place> World::placeFor(Apparatus& device, const std::string& name,
                                       const std::string& at) {
    if (at == "usb")
        return std::make_unique<UsbPlace>(device, name);
    if (at != "bridge")
        return std::make_unique<LinePlace>(device, at);
    auto bridge = std::make_unique<BridgePlace>(device);
    bridge_ = bridge.get();
    bridged_ = residents_.size();
    return bridge;
}

BridgePlace* World::demandBridge() {
    for (std::size_t index = 0; index < residents_.size() && !bridge_; ++index) {
        if (residents_[index].kind->sort != Sort::Proximity)
            continue;
        extraBridge_ = std::make_unique<BridgePlace>(*residents_[index].device);
        bridge_ = extraBridge_.get();
        bridged_ = index;
    }
    return bridge_;
}

void World::start() { timeline_.start(turn_); }

// An event that can't be carried out any more, such as a fault of a bridge that has no port, is
// over as well.
void World::advance() {
    while (const auto event = timeline_.takeDue())
        carryOut(event->device, event->action);
}

std::variant<std::string, Trouble> World::perform(const std::string& device, const Action& action) {
    std::vector<Candidate> candidates;
    for (const Resident& resident : residents_)
        candidates.push_back({resident.name, resident.kind});
    const auto chosen = chooseDevice(candidates, device, action);
    if (const auto* const trouble = std::get_if<Trouble>(&chosen))
        return *trouble;
    const auto index = std::get<std::size_t>(chosen);
    if (auto trouble = carryOut(index, action))
        return *trouble;
    return residents_[index].name;
}

struct World::Performer {
    World& world;
    std::size_t index;
    Resident& resident = world.residents_[index];

    Outcome operator()(const Tap& tap) const {
        world.timeline_.forget(index);
        resident.device->tap(tap.card);
        if (tap.seconds)
            world.timeline_.add(microsecondsOf(*tap.seconds), index, Remove{});
        return {};
    }
    Outcome operator()(const Remove&) const {
        world.timeline_.forget(index);
        resident.device->tap({});
        return {};
    }
    Outcome operator()(const Swipe& swipe) const {
        resident.device->swipe(swipe.card);
        return {};
    }
    Outcome operator()(const Approach& approach) const {
        resident.device->place(approach.inches);
        return {};
    }
    Outcome operator()(const Unplug&) const {
        world.setPlugged(resident, false);
        return {};
    }
    Outcome operator()(const Plug&) const {
        world.setPlugged(resident, true);
        return {};
    }
    Outcome operator()(const FaultOrder& order) const { return world.fail(index, order); }
};

Outcome World::carryOut(std::size_t index, const Action& action) {
    return std::visit(Performer{*this, index}, action);
}

void World::setPlugged(Resident& resident, bool isPlugged) {
    if (resident.isPlugged == isPlugged)
        return;
    resident.isPlugged = isPlugged;
    if (!isPlugged)
        return resident.place->unplug();
    resident.device->powerUp();
    resident.place->plug();
}

// The way to the device goes first, and `none` ends the faults of all. By USB alone a device has
// none of its own.
Outcome World::fail(std::size_t index, const FaultOrder& order) {
    const Resident& resident = residents_[index];
    const bool isBridged = bridge_ && bridged_ == index;
    bool isTaken = resident.place->fail(order);
    if (extraBridge_ && isBridged && (!isTaken || order.kind == FaultKind::None))
        isTaken = extraBridge_->fail(order) || isTaken;
    const bool hasStream = resident.at != "usb" || isBridged;
    if (hasStream && (!isTaken || order.kind == FaultKind::None))
        isTaken = resident.device->fail(order) || isTaken;
    if (isTaken)
        return {};
    return Trouble{Exit::Usage,
                   resident.name + " has no fault " + rowOf(order.kind).name + " at " + resident.at,
                   "write one of " + listed(faultsAt(resident.at, *resident.device))};
}

std::vector<DeviceState> World::states() {
    std::vector<DeviceState> states;
    for (const Resident& resident : residents_)
        states.push_back(stateOf(resident));
    return states;
}

DeviceState World::stateOf(const Resident& resident) const {
    DeviceState state;
    state.name = resident.name;
    state.kind = resident.kind->name;
    state.place = resident.place->text();
    state.isPlugged = resident.isPlugged;
    resident.device->describe(state);
    for (const Setting& setting : resident.device->settings())
        state.settings.emplace_back(setting.name, setting.get());
    state.exchanges = resident.place->exchanges().value_or(resident.device->streamCommands());
    return state;
}

std::vector<std::size_t> World::reportSizes() const {
    std::vector<std::size_t> sizes;
    for (const Resident& resident : residents_)
        if (resident.at == "usb")
            sizes.push_back(resident.device->reportSize());
    return sizes;
}

void World::pump() {
    lines().pump();
    if (bridge_ && bridge_->isStarted())
        bridge_->bridge().pump(0);
    keepTrace();
}

void World::addTo(std::vector<pollfd>& ends) const {
    lines().addTo(ends);
    if (bridge_ && bridge_->isStarted())
        bridge_->bridge().addTo(ends);
}

bool World::dribbles() const {
    for (const Resident& resident : residents_)
        if (resident.place->dribbles())
            return true;
    return bridge_ && bridge_->dribbles();
}

void World::keepTrace() {
    trace_ += usbBus().takeTrace();
    if (trace_.size() > kLongestTrace)
        trace_.erase(0, trace_.find('\n', trace_.size() - kLongestTrace / 2) + 1);
}

std::string World::takeTrace() {
    keepTrace();
    return std::exchange(trace_, {});
}

} // namespace zel::sim
