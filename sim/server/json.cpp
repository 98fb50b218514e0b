// SPDX-License-Identifier: MIT
// Troubles and states as JSON.
#include "sim/server/json.h"

#include "sim/scene/card_text.h"

namespace zel::sim {

namespace {

// A word of a record, or of a field, stands in an object of its own.
Json settingsOf(const DeviceState& state) {
    Json settings = Json::object();
    for (const auto& [name, value] : state.settings) {
        const std::size_t point = name.find('.');
        if (point == std::string::npos)
            settings[name] = value;
        else
            settings[name.substr(0, point)][name.substr(point + 1)] = value;
    }
    return settings;
}

template <class Value>
void addIfTold(Json& object, const char* key, const std::optional<Value>& value) {
    if (value)
        object[key] = *value;
}

} // namespace

Json toJson(const Trouble& trouble) {
    Json error = {{"code", codeName(trouble.exit)},
                  {"exit", static_cast<int>(trouble.exit)},
                  {"message", trouble.message}};
    if (!trouble.hint.empty())
        error["hint"] = trouble.hint;
    return {{"error", error}};
}

Json toJson(const DeviceState& state) {
    Json device = {{"name", state.name},
                   {"kind", state.kind},
                   {"at", state.place},
                   {"plugged", state.isPlugged}};
    if (state.card)
        device["card"] = {{"bits", state.card->bits}, {"id", cardText(*state.card)}};
    addIfTold(device, "inches", state.inches);
    for (const auto& [led, colour] : state.leds)
        device["leds"][led] = colour;
    addIfTold(device, "relay", state.relay);
    addIfTold(device, "beeps", state.beeps);
    device["settings"] = settingsOf(state);
    device["exchanges"] = state.exchanges;
    device["violations"] = state.violations;
    if (!state.lastViolation.empty())
        device["last_violation"] = state.lastViolation;
    return device;
}

std::string toLine(const Json& object) {
    return object.dump(-1, ' ', false, Json::error_handler_t::replace);
}

} // namespace zel::sim
