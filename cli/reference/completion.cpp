// SPDX-License-Identifier: MIT
// What the completions of all shells are written with.
#include "cli/reference/completion.h"

#include <algorithm>
#include <cctype>

namespace zel::cli {

std::string joined(const std::vector<std::string>& words, const std::string& between) {
    std::string text;
    for (const std::string& word : words)
        text += (&word == &words.front() ? "" : between) + word;
    return text;
}

std::string replaced(std::string text, const std::string& what, const std::string& by) {
    for (std::size_t at = 0; (at = text.find(what, at)) != text.npos; at += by.size())
        text.replace(at, what.size(), by);
    return text;
}

std::string quoted(const std::string& text) { return "'" + replaced(text, "'", "'\\''") + "'"; }

std::string asFunctionName(const std::string& place) {
    std::string name = place;
    std::ranges::replace_if(
        name, [](unsigned char c) { return !std::isalnum(c); }, '_');
    return name;
}

} // namespace zel::cli
