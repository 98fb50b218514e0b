// SPDX-License-Identifier: MIT
// The tables that a scenario consists of. Each call throws a Refusal where one is wrong.
#pragma once

#include "sim/scene/scenario.h"
#include "sim/scene/toml_fields.h"

namespace zel::sim {

// The tables of [[key]], in their order; none where there is no such key.
std::vector<const toml::table*> tablesIn(const Fields& fields, const char* key);

void addCard(Scenario& scenario, const toml::table& table, const std::string& file);
void addDevice(Scenario& scenario, const toml::table& table, const std::string& file);

// Behind the devices and the cards, which it names.
void addEvent(Scenario& scenario, const toml::table& table, const std::string& file);

} // namespace zel::sim
