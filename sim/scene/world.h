// SPDX-License-Identifier: MIT
// The simulated world of a scenario: its devices at their places, its cards, what happens by itself
// and what it is told.
//
// A process has one world at a time, since the bus and the lines are the process's own. It has no
// thread: time goes on in advance(), bytes of lines and bridges move in pump().
#pragma once

#include "sim/scene/choice.h"
#include "sim/scene/place.h"
#include "sim/scene/scenario.h"
#include "sim/scene/timeline.h"

namespace zel::sim {

class World {
public:
    explicit World(const Scenario& scenario);
    World(const World&) = delete;
    World& operator=(const World&) = delete;

    // The bench of the demonstration: one reader on USB, or behind a bridge, and its cards.
    static std::unique_ptr<World> demo(bool isBehindBridge = false);

    // Lets the events begin.
    void start();

    // Carries out what is due; microseconds until the next event, nothing when there is none.
    void advance();
    std::optional<std::uint64_t> untilNextEvent() const { return timeline_.untilNext(); }

    // Does something to a device; without a name to the only one that it fits. The result is its
    // name.
    std::variant<std::string, Trouble> perform(const std::string& device, const Action& action);

    const Cards& cards() const { return cards_; }

    // The sizes of the feature reports of the devices on the bus, by port.
    std::vector<std::size_t> reportSizes() const;

    std::vector<DeviceState> states();

    // Moves the bytes of lines and bridges; what that waits for; whether some dribble out in time.
    void pump();
    void addTo(std::vector<pollfd>& ends) const;
    bool dribbles() const;

    // The device behind a bridge; where there is none, one is put before the first proximity
    // reader. Null: there is no such reader either.
    BridgePlace* bridge() const { return bridge_; }
    BridgePlace* demandBridge();
    Outcome failBridge(const FaultOrder& order) { return fail(bridged_, order); }

    // What went over the wire since the last call; the oldest is left out where it gets too long.
    std::string takeTrace();

private:
    struct Resident {
        std::string name;
        const Kind* kind;
        std::unique_ptr<Apparatus> device;
        std::string at;
        std::unique_ptr<Place> place;
        bool isPlugged = true;
    };
    struct Performer;

    World() = default;
    static void clear();
    void add(std::string name, const Kind& kind, std::unique_ptr<Apparatus> device, std::string at);
    std::unique_ptr<Place> placeFor(Apparatus& device, const std::string& name,
                                    const std::string& at);
    Outcome carryOut(std::size_t index, const Action& action);
    Outcome fail(std::size_t index, const FaultOrder& order);
    void setPlugged(Resident& resident, bool isPlugged);
    DeviceState stateOf(const Resident& resident) const;
    void keepTrace();

    std::vector<Resident> residents_;
    std::unique_ptr<BridgePlace> extraBridge_; // of a reader that is somewhere else as well
    BridgePlace* bridge_ = nullptr;
    std::size_t bridged_ = 0; // the device behind it
    Cards cards_;
    std::uint64_t turn_ = 0;
    Timeline timeline_;
    std::string trace_;
};

} // namespace zel::sim
