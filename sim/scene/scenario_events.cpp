// SPDX-License-Identifier: MIT
// [[event]] of a scenario.
#include "sim/scene/choice.h"
#include "sim/scene/place.h"
#include "sim/scene/scenario_parts.h"
#include "sim/scene/stripe_text.h"

#include <algorithm>

namespace zel::sim {

namespace {

constexpr int kMostInches = 73; // what the sensor's byte can tell

const Names kActions = {"tap", "remove", "swipe", "distance", "unplug", "plug", "fail"};

Names faultNames() {
    Names names;
    for (const FaultRow& row : allFaults())
        names.emplace_back(row.name);
    return names;
}

// What a search found, or a refusal at the key that named it.
template <class Found>
Found foundOrRefused(const std::variant<Found, Trouble>& found, const Fields& fields,
                     const char* key) {
    if (const auto* const trouble = std::get_if<Trouble>(&found))
        fields.refuse(key, trouble->message, trouble->hint);
    return std::get<Found>(found);
}

Action tapOf(const Scenario& scenario, const Fields& fields) {
    Tap tap = {foundOrRefused(findCard(scenario.cards, fields.text("tap")), fields, "tap")};
    if (fields.has("for"))
        tap.seconds = fields.seconds("for");
    return tap;
}

Action swipeOf(const Scenario& scenario, const Fields& fields) {
    if (fields.node("swipe").is_array())
        return Swipe{foundOrRefused(stripeOf(fields.texts("swipe")), fields, "swipe")};
    return Swipe{foundOrRefused(findStripe(scenario.cards, fields.text("swipe")), fields, "swipe")};
}

Action faultOf(const Fields& fields) {
    const std::string name = fields.text("fail");
    const FaultRow* const row = findFault(name);
    if (!row)
        fields.refuse("fail", "there is no fault " + name, meantBy(name, faultNames()));
    FaultOrder order = {row->kind};
    for (const char* const key : {"count", "after"})
        if (row->lasts && fields.has(key))
            fields.refuse(key, name + " lasts until none", std::string("leave ") + key + " out");
    if (fields.has("count"))
        order.count = fields.number("count", 1);
    if (fields.has("after"))
        order.after = fields.number("after", 0);
    return order;
}

Action actionOf(const Scenario& scenario, const Fields& fields, const std::string& what) {
    if (what == "tap")
        return tapOf(scenario, fields);
    if (what == "swipe")
        return swipeOf(scenario, fields);
    if (what == "distance")
        return Approach{fields.number("distance", 0, kMostInches)};
    if (what == "fail")
        return faultOf(fields);
    fields.demandTrue(what.c_str());
    if (what == "remove")
        return Remove{};
    return what == "plug" ? Action(Plug{}) : Action(Unplug{});
}

std::string onlyActionOf(const Fields& fields) {
    Names found;
    std::ranges::copy_if(kActions, std::back_inserter(found),
                         [&](const std::string& action) { return fields.has(action.c_str()); });
    if (found.empty())
        fields.refuse("tells nothing that happens", "add one of " + listed(kActions));
    if (found.size() > 1)
        fields.refuse(found[1].c_str(), "an event is one thing, and this one is " + listed(found),
                      "make several events of it");
    return found.front();
}

void refuseStrayKeys(const Fields& fields, const std::string& action) {
    if (fields.has("for") && action != "tap")
        fields.refuse("for", "for belongs to tap", "leave it out");
    for (const char* const key : {"count", "after"})
        if (fields.has(key) && action != "fail")
            fields.refuse(key, std::string(key) + " belongs to fail", "leave it out");
}

void checkFault(const ScenarioDevice& device, const FaultOrder& order, const Fields& fields) {
    const std::string name = rowOf(order.kind).name;
    const Names known = faultsAt(device.at, *device.kind->make(device.make));
    if (std::ranges::find(known, name) == known.end())
        fields.refuse("fail", device.name + " has no fault " + name + " at " + device.at,
                      "write one of " + listed(known));
}

const ScenarioDevice& deviceOf(const Scenario& scenario, const Fields& fields,
                               const Action& action) {
    std::vector<Candidate> candidates;
    for (const ScenarioDevice& device : scenario.devices)
        candidates.push_back({device.name, device.kind});
    const auto chosen = chooseDevice(candidates, fields.textOr("device", ""), action);
    if (const auto* const trouble = std::get_if<Trouble>(&chosen))
        refuseAt(fields.has("device") ? fields.where("device") : fields.where(), trouble->message,
                 trouble->hint);
    return scenario.devices[std::get<std::size_t>(chosen)];
}

} // namespace

void addEvent(Scenario& scenario, const toml::table& table, const std::string& file) {
    Names known = kActions;
    known.insert(known.begin(), {"at", "device"});
    known.insert(known.end(), {"for", "count", "after"});
    const Fields fields(table, file, "[[event]]", known);
    const std::string what = onlyActionOf(fields);
    refuseStrayKeys(fields, what);
    const Action action = actionOf(scenario, fields, what);
    const ScenarioDevice& device = deviceOf(scenario, fields, action);
    if (const auto* const order = std::get_if<FaultOrder>(&action))
        checkFault(device, *order, fields);
    scenario.events.push_back({fields.seconds("at"), device.name, action, fields.where()});
}

} // namespace zel::sim
