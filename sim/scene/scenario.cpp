// SPDX-License-Identifier: MIT
// Reads a scenario: its head, then its tables by scenario_parts.h.
#include "sim/scene/scenario.h"

#include "sim/scene/card_text.h"
#include "sim/scene/scenario_parts.h"

#include <cerrno>
#include <cstring>
#include <fstream>
#include <sstream>

namespace zel::sim {

namespace {

constexpr int kFormat = 1;
constexpr double kShortestTurn = 0.1; // seconds

Scenario scenarioIn(const toml::table& root, const std::string& file) {
    const Fields fields(root, file, "a scenario", {"format", "repeat", "device", "card", "event"});
    fields.number("format", kFormat, kFormat);
    Scenario scenario;
    if (fields.has("repeat") && (scenario.repeat = fields.seconds("repeat")) < kShortestTurn)
        fields.refuse("repeat", "repeat is too short", "write 0.1 seconds or more");
    for (const toml::table* const card : tablesIn(fields, "card"))
        addCard(scenario, *card, file);
    for (const toml::table* const device : tablesIn(fields, "device"))
        addDevice(scenario, *device, file);
    if (scenario.devices.empty())
        refuseAt(file, "a scenario has no device", "add [[device]]");
    for (const toml::table* const event : tablesIn(fields, "event"))
        addEvent(scenario, *event, file);
    for (const ScenarioEvent& event : scenario.events)
        if (fields.has("repeat") && event.at >= scenario.repeat)
            refuseAt(event.where, "this event comes behind the end of a turn",
                     "let repeat be more than its time, or leave repeat out");
    return scenario;
}

Trouble notToml(const toml::parse_error& error, const std::string& file) {
    return {Exit::DamagedFile,
            file + ":" + std::to_string(error.source().begin.line) + ": " +
                std::string(error.description()),
            "a scenario is written in TOML; examples/scenario.toml is one"};
}

} // namespace

std::variant<Card, Trouble> findCard(const Cards& cards, const std::string& text) {
    if (const auto named = cards.find(text); named != cards.end() && named->second.card)
        return *named->second.card;
    if (const auto card = cardIn(text))
        return *card;
    return Trouble{Exit::Usage, "\"" + text + "\" is no card of the scenario and no number of one",
                   kCardForms};
}

std::variant<BandCard, Trouble> findStripe(const Cards& cards, const std::string& name) {
    if (const auto named = cards.find(name); named != cards.end() && named->second.stripe)
        return *named->second.stripe;
    return Trouble{Exit::Usage, "\"" + name + "\" is no card with tracks of the scenario",
                   "write the tracks, such as \"%B0000^SIMULATED?\" \";0000=0?\""};
}

std::variant<Scenario, Trouble> parseScenario(std::string_view text, const std::string& file) {
    try {
        return scenarioIn(toml::parse(text, file), file);
    } catch (const Refusal& refusal) {
        return refusal.trouble;
    } catch (const toml::parse_error& error) {
        return notToml(error, file);
    }
}

std::variant<Scenario, Trouble> readScenario(const std::string& file) {
    std::ifstream stream(file);
    std::ostringstream text;
    if (!stream || !(text << stream.rdbuf()))
        return Trouble{Exit::MissingFile, file + ": " + std::strerror(errno != 0 ? errno : ENOENT),
                       "name a scenario that can be read"};
    return parseScenario(text.str(), file);
}

} // namespace zel::sim
