// SPDX-License-Identifier: MIT
// A scenario as a file tells it: which devices there are, which cards, and what happens when.
#pragma once

#include "sim/scene/action.h"
#include "sim/scene/kinds.h"
#include "sim/scene/trouble.h"

#include <map>
#include <string>
#include <variant>
#include <vector>

namespace zel::sim {

// Of a proximity card the bits, of a card with a stripe the tracks.
struct NamedCard {
    std::optional<Card> card = {};
    std::optional<BandCard> stripe = {};
};

using Cards = std::map<std::string, NamedCard, std::less<>>;

// The card of a name or of the text that cardIn() reads.
std::variant<Card, Trouble> findCard(const Cards& cards, const std::string& text);
std::variant<BandCard, Trouble> findStripe(const Cards& cards, const std::string& name);

struct ScenarioSetting {
    std::string name;
    int value;
    std::string where; // "FILE:LINE"
};

struct ScenarioDevice {
    std::string name;
    const Kind* kind;
    std::string at;
    DeviceMake make;
    std::vector<ScenarioSetting> settings;
    std::string where;
};

struct ScenarioEvent {
    double at;          // seconds since the start
    std::string device; // empty: the only one that it fits
    Action action;
    std::string where;
};

struct Scenario {
    double repeat = 0; // seconds from one start to the next; 0: once
    Cards cards;
    std::vector<ScenarioDevice> devices;
    std::vector<ScenarioEvent> events;
};

// Reads a file. What is wrong is told with its line and with what is allowed.
std::variant<Scenario, Trouble> readScenario(const std::string& file);
std::variant<Scenario, Trouble> parseScenario(std::string_view text, const std::string& file);

} // namespace zel::sim
