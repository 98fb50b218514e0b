// SPDX-License-Identifier: MIT
// Counts the letters in which two names differ.
#include "sim/scene/names.h"

#include <algorithm>
#include <cctype>
#include <numeric>

namespace zel::sim {

namespace {

constexpr std::size_t kNear = 3; // letters

bool isSame(char a, char b) {
    return std::tolower(static_cast<unsigned char>(a)) ==
           std::tolower(static_cast<unsigned char>(b));
}

// Changes of one letter that lead from one name to the other.
std::size_t distance(std::string_view a, std::string_view b) {
    std::vector<std::size_t> row(b.size() + 1);
    std::iota(row.begin(), row.end(), std::size_t{0});
    for (std::size_t i = 0; i < a.size(); ++i) {
        std::size_t diagonal = row[0];
        row[0] = i + 1;
        for (std::size_t j = 0; j < b.size(); ++j) {
            const std::size_t replaced = diagonal + (isSame(a[i], b[j]) ? 0 : 1);
            diagonal = row[j + 1];
            row[j + 1] = std::min({replaced, row[j] + 1, row[j + 1] + 1});
        }
    }
    return row.back();
}

} // namespace

std::string listed(const Names& names) {
    std::string text;
    for (const std::string& name : names)
        text += (text.empty() ? "" : ", ") + name;
    return text;
}

std::string meantBy(std::string_view name, const Names& known) {
    std::vector<std::size_t> away;
    for (const std::string& each : known)
        away.push_back(distance(name, each));
    const auto nearest = std::min_element(away.begin(), away.end());
    if (nearest != away.end() && *nearest <= std::min(kNear, name.size() / 2 + 1))
        return "did you mean " + known[static_cast<std::size_t>(nearest - away.begin())] + "?";
    return known.empty() ? "there is none" : "write one of " + listed(known);
}

} // namespace zel::sim
