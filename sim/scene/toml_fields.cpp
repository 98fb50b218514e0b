// SPDX-License-Identifier: MIT
// Takes typed values from a table, and tells what is wrong with them.
#include "sim/scene/toml_fields.h"

#include <algorithm>
#include <cmath>

namespace zel::sim {

namespace {
constexpr double kMostSeconds = 1e6;
}

std::string whereOf(const std::string& file, const toml::node& node) {
    return file + ":" + std::to_string(node.source().begin.line);
}

void refuseAt(const std::string& where, const std::string& message, const std::string& hint) {
    throw Refusal{{Exit::DamagedFile, where + ": " + message, hint}};
}

Fields::Fields(const toml::table& table, const std::string& file, std::string what,
               const Names& known)
    : table_(table), file_(file), what_(std::move(what)) {
    for (const auto& [key, node] : table) {
        const std::string name(key.str());
        if (std::ranges::find(known, name) == known.end())
            refuseAt(whereOf(file, node), what_ + " has no key " + name, meantBy(name, known));
    }
}

std::string Fields::where() const { return whereOf(file_, table_); }

std::string Fields::where(const char* key) const { return whereOf(file_, node(key)); }

void Fields::refuse(const std::string& message, const std::string& hint) const {
    refuseAt(where(), what_ + " " + message, hint);
}

void Fields::refuse(const char* key, const std::string& message, const std::string& hint) const {
    refuseAt(where(key), message, hint);
}

const toml::node& Fields::demand(const char* key, const std::string& form) const {
    const toml::node* const node = table_.get(key);
    if (!node)
        refuse("has no " + std::string(key), "add " + std::string(key) + " = " + form);
    return *node;
}

std::string Fields::text(const char* key) const {
    const auto value = demand(key, "\"...\"").value_exact<std::string>();
    if (!value || value->empty())
        refuse(key, std::string(key) + " isn't a text", "write it in quotes");
    return *value;
}

std::string Fields::textOr(const char* key, const std::string& otherwise) const {
    return has(key) ? text(key) : otherwise;
}

int Fields::number(const char* key, int least, int most) const {
    const auto value = demand(key, "NUMBER").value_exact<std::int64_t>();
    if (!value || *value < least || *value > most)
        refuse(key, std::string(key) + " isn't a whole number in its range",
               "write one from " + std::to_string(least) + " to " + std::to_string(most));
    return static_cast<int>(*value);
}

double Fields::seconds(const char* key) const {
    const toml::node& found = demand(key, "SECONDS");
    const auto value = found.is_number() ? found.value<double>() : std::nullopt;
    if (!value || !std::isfinite(*value) || *value < 0 || *value > kMostSeconds)
        refuse(key, std::string(key) + " isn't a number of seconds", "write one such as 1.5");
    return *value;
}

void Fields::demandTrue(const char* key) const {
    if (node(key).value_exact<bool>() != true)
        refuse(key, std::string(key) + " can only be true", "leave it out where it is false");
}

std::vector<std::string> Fields::texts(const char* key) const {
    const toml::array* const array = node(key).as_array();
    std::vector<std::string> all;
    for (std::size_t i = 0; array && i < array->size(); ++i)
        if (const auto text = array->get(i)->value_exact<std::string>())
            all.push_back(*text);
    if (!array || all.size() != array->size())
        refuse(key, std::string(key) + " isn't a list of texts", "write [\"...\", \"...\"]");
    return all;
}

} // namespace zel::sim
