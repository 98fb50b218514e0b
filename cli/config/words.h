// SPDX-License-Identifier: MIT
// The words of a reader's ten records: what they are called, and how they are read and set.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>

namespace zel::cli {

enum class WordKind { flag, number, pad };

struct Word {
    std::size_t record; // index of recordName()
    std::size_t index;  // in the record
    const char* name;
    WordKind kind;
    const char* description;
    int unit; // what the reader counts the word in; above 1: milliseconds
};

// Every word in the order of the records.
std::span<const Word> allWords();
std::size_t recordCount();
std::string recordName(std::size_t record);

// "RECORD.NAME"
std::string fullName(const Word& word);

// Told by the reader, or made from other words: a set doesn't reach the reader.
bool isReadOnly(const Word& word);
bool isTime(const Word& word);
// A word that lets its record act on the outputs at once, and not last.
bool isVolatileMark(const Word& word);
// A word that the reader gets with the block of another record; that record's index.
bool travelsWith(const Word& word, std::size_t& record);

using Values = std::array<std::int16_t, 8>; // of a record

// The records of the active device's active configuration, in the library's memory. False: the
// library's error word says why not.
bool readRecord(std::size_t record, Values& values);
bool writeRecord(std::size_t record, const Values& values);

struct Range {
    int least;
    int most;
};

// What a word may be, a word without limits of its own as the records hold it.
Range rangeOf(const Word& word);

// "1", "1000 ms"
std::string valueText(const Word& word, int value);

// What stands behind a change when the reader kept another value. `step` is what it counts a time
// in, in milliseconds; 0 for what is no time.
std::string keptOtherwiseText(const std::string& kept, int step);

} // namespace zel::cli
