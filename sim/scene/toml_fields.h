// SPDX-License-Identifier: MIT
// The keys of a table of a scenario, each of its type or refused with its line.
#pragma once

#include "sim/scene/names.h"
#include "sim/scene/trouble.h"

#include <limits>
#include <optional>
#include <string>
#include <toml++/toml.h>

namespace zel::sim {

// Thrown where a scenario is wrong, and caught by parseScenario().
struct Refusal {
    Trouble trouble;
};

class Fields {
public:
    // Refuses a key that isn't known.
    Fields(const toml::table& table, const std::string& file, std::string what, const Names& known);

    bool has(const char* key) const { return table_.contains(key); }
    std::string text(const char* key) const;
    std::string textOr(const char* key, const std::string& otherwise) const;
    int number(const char* key, int least, int most = std::numeric_limits<int>::max()) const;
    double seconds(const char* key) const;
    void demandTrue(const char* key) const;
    std::vector<std::string> texts(const char* key) const;
    const toml::node& node(const char* key) const { return *table_.get(key); }

    // "FILE:LINE"
    std::string where() const;
    std::string where(const char* key) const;

    [[noreturn]] void refuse(const std::string& message, const std::string& hint) const;
    [[noreturn]] void refuse(const char* key, const std::string& message,
                             const std::string& hint) const;

private:
    const toml::node& demand(const char* key, const std::string& form) const;

    const toml::table& table_;
    const std::string& file_;
    std::string what_;
};

std::string whereOf(const std::string& file, const toml::node& node);
[[noreturn]] void refuseAt(const std::string& where, const std::string& message,
                           const std::string& hint);

} // namespace zel::sim
