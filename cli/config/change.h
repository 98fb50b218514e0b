// SPDX-License-Identifier: MIT
// Changes of settings: from NAME=VALUE to the library's memory and to the reader.
#pragma once

#include "cli/command/failure.h"
#include "cli/config/words.h"

#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace zel::cli {

struct Change {
    const Word* word;
    int wanted = 0;
    std::int16_t old = 0;
    std::optional<std::int16_t> kept = {}; // what the reader has after the write
};

using Changes = std::vector<Change>;

// A whole number, decimal or hexadecimal behind 0x.
std::optional<int> numberIn(std::string_view text);

// Takes NAME=VALUE apart. No device is needed to refuse a name, a pad, a word that can't be set or
// a number that isn't one.
std::variant<Changes, Failure> parseChanges(const std::vector<std::string>& assignments);

// Fills in the old values and sets the new ones in the library's memory, one record after another;
// nothing is sent. A value out of range is refused by its name and range.
Outcome prepare(Changes& changes);

// Why the library has just refused these values of a record.
Failure explainRefusal(std::size_t record, const Values& values);

// Whether the changes act on the reader's outputs at once and aren't kept.
bool isVolatile(const Changes& changes);

// Sends prepared changes that are volatile.
void actNow(const Changes& changes);

// Fills in what the library's memory has now.
void fillKept(Changes& changes);

// "TimeParms.iIDHoldTO  1000 ms -> 1030 ms", with what the reader made of it.
std::string changeLine(const Change& change);

} // namespace zel::cli
