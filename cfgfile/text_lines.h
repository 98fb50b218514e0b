// SPDX-License-Identifier: MIT
// The lines of a template file, and what those with "=" between key and value hold.
#pragma once

#include <cstdint>
#include <cstdio>
#include <cstring>

namespace zel::cfgfile {

// Lines of fewer than Size characters; the rest of a longer one is a line of its own.
template <std::size_t Size> class Pieces {
public:
    explicit Pieces(std::FILE* file) : file_(file) {}

    // The next piece, null at the end of the file.
    char* next() {
        number_ += beginsLine_ ? 1 : 0;
        std::memset(piece_, 0, Size);
        char* const piece = std::fgets(piece_, Size, file_);
        beginsLine_ = std::memchr(piece_, '\n', Size) != nullptr;
        return piece;
    }

    // Of the piece's line in the file, from 1.
    int number() const { return number_; }

private:
    std::FILE* file_;
    char piece_[Size] = {};
    bool beginsLine_ = true;
    int number_ = 0;
};

// Lines of at most 127 characters.
class Lines {
public:
    explicit Lines(std::FILE* file) : pieces_(file) {}

    // The next line without its leading blanks; null at the end of the file. Control characters and
    // all bytes above 0x7F count as blanks.
    char* next();

    int number() const { return pieces_.number(); }

private:
    Pieces<128> pieces_;
};

// A name or a description of an exported table, which an application may have set to null.
inline const char* textOf(const char* text) { return text ? text : ""; }

// Whether a line has nothing to take.
bool isComment(const char* text);

struct KeyValue {
    const char* key = nullptr; // null: the line has no value
    std::uint16_t value = 0;
};

// Whether two keys are equal but for the case of the letters A to Z, whatever the locale: in the
// Turkish one "I" isn't the capital of "i".
bool isSameKey(const char* a, const char* b);

// Takes a line apart, in place: a key, then a number, with commas, blanks, equals signs or tabs
// between them.
KeyValue keyValueIn(char* text);

} // namespace zel::cfgfile
