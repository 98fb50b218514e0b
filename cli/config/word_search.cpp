// SPDX-License-Identifier: MIT
// Compares names without regard to case, and counts letters when none is equal.
#include "cli/config/word_search.h"

#include <algorithm>
#include <fmt/format.h>
#include <numeric>
#include <vector>

namespace zel::cli {

namespace {

constexpr std::size_t kOffered = 3;

char lower(char letter) {
    return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
}

bool same(std::string_view a, std::string_view b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](char left, char right) { return lower(left) == lower(right); });
}

std::vector<const Word*> wordsNamed(std::string_view name) {
    std::vector<const Word*> found;
    for (const Word& word : allWords())
        if (same(name, word.name) || same(name, fullName(word)))
            found.push_back(&word);
    return found;
}

struct Candidate {
    std::size_t distance;
    const Word* word;
};

// Pads and names that have hardly a letter in common are no help.
std::vector<Candidate> nearest(std::string_view name) {
    const bool full = name.find('.') != std::string_view::npos;
    std::vector<Candidate> all;
    for (const Word& word : allWords()) {
        const std::size_t away = distance(name, full ? fullName(word) : std::string(word.name));
        if (word.kind != WordKind::pad && away <= std::max<std::size_t>(3, name.size() / 2))
            all.push_back({away, &word});
    }
    std::stable_sort(all.begin(), all.end(), [](const Candidate& a, const Candidate& b) {
        return a.distance < b.distance;
    });
    all.resize(std::min(all.size(), kOffered));
    return all;
}

// "a, b or c"
std::string choice(const std::vector<std::string>& names) {
    std::string text;
    for (std::size_t i = 0; i < names.size(); ++i)
        text += (i == 0 ? "" : i + 1 < names.size() ? ", " : " or ") + names[i];
    return text;
}

Failure unknown(std::string_view name) {
    std::vector<std::string> names;
    for (const Candidate& candidate : nearest(name))
        names.emplace_back(candidate.word->name);
    return {ExitCode::Usage, fmt::format("there is no setting {}", name),
            names.empty() ? "`zeltag config show` lists them"
                          : fmt::format("did you mean {}?", choice(names)),
            ""};
}

Failure ambiguous(const std::vector<const Word*>& words) {
    if (words.front()->kind == WordKind::pad)
        return {ExitCode::Usage, fmt::format("{} is padding and can't be set", words.front()->name),
                "`zeltag config show` lists the settings", ""};
    std::vector<std::string> names;
    names.reserve(words.size());
    for (const Word* const word : words)
        names.push_back(fullName(*word));
    return {ExitCode::Usage, fmt::format("several records have a word {}", words.front()->name),
            fmt::format("write {}", choice(names)), ""};
}

} // namespace

std::size_t distance(std::string_view a, std::string_view b) {
    std::vector<std::size_t> row(b.size() + 1);
    std::iota(row.begin(), row.end(), std::size_t{0});
    for (std::size_t i = 0; i < a.size(); ++i) {
        std::size_t diagonal = row[0];
        row[0] = i + 1;
        for (std::size_t j = 0; j < b.size(); ++j) {
            const std::size_t replaced = diagonal + (lower(a[i]) == lower(b[j]) ? 0 : 1);
            diagonal = row[j + 1];
            row[j + 1] = std::min({replaced, row[j] + 1, row[j + 1] + 1});
        }
    }
    return row.back();
}

std::variant<const Word*, Failure> findWord(std::string_view name) {
    const std::vector<const Word*> found = wordsNamed(name);
    if (found.empty())
        return unknown(name);
    if (found.size() > 1)
        return ambiguous(found);
    return found.front();
}

} // namespace zel::cli
