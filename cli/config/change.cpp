// SPDX-License-Identifier: MIT
// Checks changes before anything is sent, and lets the library check them too.
#include "cli/config/change.h"

#include "cli/command/whole_number.h"
#include "cli/config/word_search.h"
#include "frame/zelTagAPI.h"

#include <algorithm>
#include <fmt/format.h>

namespace zel::cli {

namespace {

Failure refusal(std::string message, std::string hint) {
    return {ExitCode::Usage, std::move(message), std::move(hint), ""};
}

Failure outside(const Word& word, std::string_view value) {
    const auto [least, most] = rangeOf(word);
    const char* const unit = isTime(word) ? " ms" : "";
    return refusal(fmt::format("{} can't be {}", word.name, value),
                   fmt::format("it takes {} to {}{}", least, most, unit));
}

std::optional<Failure> whyFixed(const Word& word) {
    if (word.kind == WordKind::pad)
        return refusal(fmt::format("{} is padding and can't be set", fullName(word)),
                       "`zeltag config show` lists the settings");
    if (isReadOnly(word))
        return refusal(fmt::format("{} is read-only", word.name),
                       "it tells what the reader is or follows from other settings");
    return {};
}

std::variant<Change, Failure> parseChange(const std::string& assignment) {
    const std::size_t sign = assignment.find('=');
    if (sign == std::string::npos)
        return refusal(assignment + " sets nothing", "write NAME=VALUE");
    const auto found = findWord(std::string_view(assignment).substr(0, sign));
    if (const auto* const failure = std::get_if<Failure>(&found))
        return *failure;
    const Word& word = *std::get<const Word*>(found);
    if (auto failure = whyFixed(word))
        return *failure;
    const std::string value = assignment.substr(sign + 1);
    const auto number = numberIn(value);
    if (!number)
        return refusal(
            fmt::format("{}: {} is no whole number", word.name, value.empty() ? "nothing" : value),
            "write a number such as 16 or 0x10");
    return Change{&word, *number};
}

bool isSameWord(const Change& a, const Change& b) { return a.word == b.word; }

bool marksVolatile(const Change& change) {
    return isVolatileMark(*change.word) && change.wanted != 0;
}

// Volatile changes act at once and the others are stored: their blocks would carry one another.
bool mixesVolatile(const Changes& changes) {
    return isVolatile(changes) &&
           !std::all_of(changes.begin(), changes.end(), [&changes](const Change& change) {
               return std::any_of(changes.begin(), changes.end(), [&change](const Change& mark) {
                   return marksVolatile(mark) && mark.word->record == change.word->record;
               });
           });
}

// The library takes any flag, and any number below its limit.
bool fits(const Change& change) {
    const int most = change.word->kind == WordKind::flag ? 1 : INT16_MAX;
    return change.wanted >= 0 && change.wanted <= most;
}

// The new values of a record, without its volatile mark: a marked record would be sent.
Values merged(const Changes& changes, std::size_t record, Values values) {
    for (const Change& change : changes)
        if (change.word->record == record && !isVolatileMark(*change.word))
            values[change.word->index] = static_cast<std::int16_t>(change.wanted);
    return values;
}

bool touches(const Changes& changes, std::size_t record) {
    return std::any_of(changes.begin(), changes.end(), [record](const Change& change) {
        std::size_t companion = 0;
        return change.word->record == record ||
               (travelsWith(*change.word, companion) && companion == record);
    });
}

Outcome prepareRecord(Changes& changes, std::size_t record) {
    Values values = {};
    if (!readRecord(record, values))
        return explainRefusal(record, values);
    for (Change& change : changes)
        if (change.word->record == record)
            change.old = values[change.word->index];
    values = merged(changes, record, values);
    return writeRecord(record, values) ? Outcome() : explainRefusal(record, values);
}

std::string keptText(const Change& change) {
    if (!change.kept || *change.kept == change.wanted || isVolatileMark(*change.word))
        return "";
    return keptOtherwiseText(valueText(*change.word, *change.kept),
                             isTime(*change.word) ? change.word->unit : 0);
}

} // namespace

std::optional<int> numberIn(std::string_view text) {
    const bool hexadecimal = text.starts_with("0x") || text.starts_with("0X");
    if (hexadecimal)
        text.remove_prefix(2);
    return wholeNumber<int>(text, hexadecimal ? 16 : 10);
}

// The low digit of the library's code is the word's index in its record.
Failure explainRefusal(std::size_t record, const Values& values) {
    const std::int64_t error = GetLastLibErr();
    const auto index = static_cast<std::size_t>(error & 0xF);
    for (const Word& word : allWords())
        if ((error & 0xFFFF) >= 0x1000 && word.record == record && word.index == index)
            return outside(word, std::to_string(values[index]));
    return {ExitCode::Failed,
            fmt::format("the library refuses {} (library error 0x{:X})", recordName(record),
                        static_cast<std::uint64_t>(error)),
            "", ""};
}

std::variant<Changes, Failure> parseChanges(const std::vector<std::string>& assignments) {
    Changes changes;
    for (const std::string& assignment : assignments) {
        auto parsed = parseChange(assignment);
        if (const auto* const failure = std::get_if<Failure>(&parsed))
            return *failure;
        const Change& change = std::get<Change>(parsed);
        if (std::any_of(changes.begin(), changes.end(),
                        [&change](const Change& other) { return isSameWord(change, other); }))
            return refusal(fmt::format("{} is set twice", change.word->name), "set it once");
        changes.push_back(change);
    }
    if (mixesVolatile(changes))
        return refusal("a volatile change acts at once and can't go with changes that are kept",
                       "set them in two steps");
    return changes;
}

Outcome prepare(Changes& changes) {
    for (const Change& change : changes)
        if (!fits(change))
            return outside(*change.word, std::to_string(change.wanted));
    for (std::size_t record = 0; record < recordCount(); ++record)
        if (touches(changes, record))
            if (auto failure = prepareRecord(changes, record))
                return failure;
    return {};
}

bool isVolatile(const Changes& changes) {
    return std::any_of(changes.begin(), changes.end(), marksVolatile);
}

void actNow(const Changes& changes) {
    for (const Change& change : changes) {
        Values values = {};
        if (!marksVolatile(change) || !readRecord(change.word->record, values))
            continue;
        values[change.word->index] = 1;
        writeRecord(change.word->record, values);
    }
}

void fillKept(Changes& changes) {
    for (Change& change : changes) {
        Values values = {};
        if (readRecord(change.word->record, values))
            change.kept = values[change.word->index];
    }
}

std::string changeLine(const Change& change) {
    return fmt::format("{}  {} -> {}{}", fullName(*change.word),
                       valueText(*change.word, change.old), valueText(*change.word, change.wanted),
                       keptText(change));
}

} // namespace zel::cli
