// SPDX-License-Identifier: MIT
// [[card]] of a scenario.
#include "sim/scene/card_text.h"
#include "sim/scene/scenario_parts.h"
#include "sim/scene/stripe_text.h"

#include <algorithm>

namespace zel::sim {

namespace {

Card cardOf(const Fields& fields) {
    const auto card = cardIn(fields.text("id"));
    if (!card)
        fields.refuse("id", "id isn't a card's number", kCardForms);
    return *card;
}

void addData(Card& card, const Fields& fields) {
    const std::string data = fields.text("data");
    if (data.size() > card.data.size())
        fields.refuse("data", "data is too long",
                      "a card holds " + std::to_string(card.data.size()) + " bytes");
    std::copy(data.begin(), data.end(), card.data.begin());
}

BandCard tracksOf(const Fields& fields) {
    const auto stripe = stripeOf(fields.texts("tracks"));
    if (const auto* const trouble = std::get_if<Trouble>(&stripe))
        fields.refuse("tracks", trouble->message, trouble->hint);
    return std::get<BandCard>(stripe);
}

} // namespace

std::vector<const toml::table*> tablesIn(const Fields& fields, const char* key) {
    std::vector<const toml::table*> tables;
    if (!fields.has(key))
        return tables;
    const toml::array* const array = fields.node(key).as_array();
    for (std::size_t i = 0; array && i < array->size(); ++i)
        if (const toml::table* const table = array->get(i)->as_table())
            tables.push_back(table);
    if (!array || tables.size() != array->size())
        fields.refuse(key, std::string(key) + " isn't a list of tables",
                      "write each as [[" + std::string(key) + "]]");
    return tables;
}

void addCard(Scenario& scenario, const toml::table& table, const std::string& file) {
    const Fields fields(table, file, "[[card]]", {"name", "id", "data", "tracks"});
    const std::string name = fields.text("name");
    NamedCard card;
    if (fields.has("id"))
        card.card = cardOf(fields);
    if (fields.has("tracks"))
        card.stripe = tracksOf(fields);
    if (!card.card && !card.stripe)
        fields.refuse("has neither id nor tracks", kCardForms);
    if (fields.has("data") && !card.card)
        fields.refuse("data", "data without an id", "add id, or leave data out");
    if (fields.has("data"))
        addData(*card.card, fields);
    if (!scenario.cards.emplace(name, std::move(card)).second)
        fields.refuse("name", "there are two cards " + name, "give one another name");
}

} // namespace zel::sim
