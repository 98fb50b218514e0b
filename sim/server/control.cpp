// SPDX-License-Identifier: MIT
// Reads the requests; what is wrong with one is told as an error and changes nothing.
#include "sim/server/control.h"

#include "sim/scene/stripe_text.h"
#include "sim/scene/world.h"

#include <algorithm>
#include <cmath>

namespace zel::sim {

namespace {

constexpr int kMostInches = 73; // what the sensor's byte can tell
constexpr double kMostSeconds = 1e6;

// Thrown in this file alone, and caught where a line is answered.
struct Refusal {
    Trouble trouble;
};

[[noreturn]] void refuse(const std::string& message, const std::string& hint) {
    throw Refusal{{Exit::Usage, message, hint}};
}

template <class Found> Found foundOrRefused(const std::variant<Found, Trouble>& found) {
    if (const auto* const trouble = std::get_if<Trouble>(&found))
        throw Refusal{*trouble};
    return std::get<Found>(found);
}

std::string text(const Json& request, const char* key) {
    if (!request.contains(key) || !request.at(key).is_string())
        refuse(std::string(key) + " isn't a text", std::string("add \"") + key + "\": \"...\"");
    return request.at(key).get<std::string>();
}

std::string textOr(const Json& request, const char* key, const std::string& otherwise) {
    return request.contains(key) ? text(request, key) : otherwise;
}

int number(const Json& request, const char* key, int least, int most) {
    const Json value = request.value(key, Json());
    if (!value.is_number_integer() || value < least || value > most)
        refuse(std::string(key) + " isn't a whole number in its range",
               "write one from " + std::to_string(least) + " to " + std::to_string(most));
    return value.get<int>();
}

double seconds(const Json& request, const char* key) {
    const Json& value = request.at(key);
    if (!value.is_number() || !(value.get<double>() >= 0 && value.get<double>() <= kMostSeconds))
        refuse(std::string(key) + " isn't a number of seconds", "write one such as 1.5");
    return value.get<double>();
}

std::vector<std::string> tracks(const Json& request) {
    const Json& list = request.at("tracks");
    if (!list.is_array() ||
        !std::ranges::all_of(list, [](const Json& track) { return track.is_string(); }))
        refuse("tracks isn't a list of texts", "write [\"...\", \"...\"]");
    return list.get<std::vector<std::string>>();
}

Action tapOf(const Json& request, const Cards& cards) {
    Tap tap = {foundOrRefused(findCard(cards, text(request, "card")))};
    if (request.contains("for"))
        tap.seconds = seconds(request, "for");
    return tap;
}

Action swipeOf(const Json& request, const Cards& cards) {
    if (request.contains("tracks"))
        return Swipe{foundOrRefused(stripeOf(tracks(request)))};
    return Swipe{foundOrRefused(findStripe(cards, text(request, "card")))};
}

Action faultOf(const Json& request, const Cards&) {
    const std::string name = text(request, "what");
    const FaultRow* const row = findFault(name);
    Names names;
    for (const FaultRow& each : allFaults())
        names.emplace_back(each.name);
    if (!row)
        refuse("there is no fault " + name, meantBy(name, names));
    const bool isCounted = request.contains("count") || request.contains("after");
    if (row->lasts && isCounted)
        refuse(name + " lasts until none", "leave count and after out");
    FaultOrder order = {row->kind};
    if (request.contains("count"))
        order.count = number(request, "count", 1, INT32_MAX);
    if (request.contains("after"))
        order.after = number(request, "after", 0, INT32_MAX);
    return order;
}

// A command that does something to a device, and the keys that it has beside "do" and "device".
struct Deed {
    const char* name;
    Names keys;
    Action (*read)(const Json& request, const Cards& cards);
};

const std::vector<Deed>& allDeeds() {
    static const std::vector<Deed> kAll = {
        {"tap", {"card", "for"}, tapOf},
        {"remove", {}, [](const Json&, const Cards&) -> Action { return Remove{}; }},
        {"swipe", {"card", "tracks"}, swipeOf},
        {"place",
         {"inches"},
         [](const Json& request, const Cards&) -> Action {
             return Approach{number(request, "inches", 0, kMostInches)};
         }},
        {"fail", {"what", "count", "after"}, faultOf},
        {"unplug", {}, [](const Json&, const Cards&) -> Action { return Unplug{}; }},
        {"plug", {}, [](const Json&, const Cards&) -> Action { return Plug{}; }},
    };
    return kAll;
}

void refuseUnknownKeys(const Json& request, const Names& known) {
    for (const auto& [key, value] : request.items())
        if (std::ranges::find(known, key) == known.end())
            refuse("there is no key " + key + " here", meantBy(key, known));
}

} // namespace

Json Control::answer(const std::string& line) {
    const Json request = Json::parse(line, nullptr, false);
    try {
        if (!request.is_object())
            refuse("a command is one JSON object", R"(write {"do": "state"} in one line)");
        return run(request);
    } catch (const Refusal& refusal) {
        return toJson(refusal.trouble);
    }
}

Json Control::run(const Json& request) {
    const std::string command = text(request, "do");
    if (command == "state") {
        Json devices = Json::array();
        for (const DeviceState& state : world_.states())
            devices.push_back(toJson(state));
        return {{"devices", devices}};
    }
    if (command == "trace")
        return {{"trace", world_.takeTrace()}};
    if (command == "stop") {
        isStopWanted_ = true;
        return {{"done", command}};
    }
    return act(request);
}

Json Control::act(const Json& request) {
    const std::string command = text(request, "do");
    Names names = {"state", "trace", "stop"};
    for (const Deed& deed : allDeeds()) {
        names.emplace_back(deed.name);
        if (command != deed.name)
            continue;
        Names known = deed.keys;
        known.insert(known.end(), {"do", "device"});
        refuseUnknownKeys(request, known);
        const Action action = deed.read(request, world_.cards());
        const std::string device = textOr(request, "device", "");
        return {{"done", command}, {"device", foundOrRefused(world_.perform(device, action))}};
    }
    refuse("there is no command " + command, meantBy(command, names));
}

} // namespace zel::sim
