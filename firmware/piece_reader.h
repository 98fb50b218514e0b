// SPDX-License-Identifier: MIT
// A text file in the pieces in which fgets() returns it.
#pragma once

#include <cstddef>
#include <cstdio>
#include <memory>
#include <string_view>

namespace zel::firmware {

struct CloseFile {
    void operator()(std::FILE* file) const { std::fclose(file); }
};
using File = std::unique_ptr<std::FILE, CloseFile>;

// Null for a file that can't be opened, and for a null name.
File openFile(const char* name, const char* mode);

// A file for a PieceReader, whose block is then the only one that its bytes pass.
File openSource(const char* name);

// A piece ends with its line feed, with `longest` bytes or with the file, whatever comes first, and
// is told as a C string: up to its first zero byte. Views hold until the next call.
class PieceReader {
public:
    // Reads the stream from where it stands and reads ahead.
    PieceReader(std::FILE* file, std::size_t longest);
    ~PieceReader(); // wipes what it read: a file of keys passes it too
    PieceReader(const PieceReader&) = delete;
    PieceReader& operator=(const PieceReader&) = delete;

    // False when nothing is left; then the piece is empty and its line stays.
    bool next();
    std::string_view piece() const { return piece_; }

    // The line that the piece is of, from 1; 0 before the first one.
    int line() const;

    // As many whole lines as can be told at once, none of them longer than a piece or with a zero
    // byte: next() would give them one by one. Maybe none; then next() goes on.
    std::string_view wholeLines();

    // Whether the file ended with a failed read.
    bool failed() const { return std::ferror(file_) != 0; }

private:
    void fill();
    std::size_t held() const { return end_ - begin_; }

    std::FILE* file_;
    std::size_t longest_;
    std::unique_ptr<char[]> block_;
    std::size_t begin_ = 0; // of what isn't told yet
    std::size_t end_ = 0;
    std::size_t most_ = 0; // the most that the block held
    std::size_t line_ = 0;
    bool hasZeroByte_ = false;
    bool startsLine_ = true; // the next piece is the first of its line
    std::string_view piece_;
};

} // namespace zel::firmware
