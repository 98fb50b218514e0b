// SPDX-License-Identifier: MIT
// A text file in pieces, read in blocks: a call of fgets() for each line took longer than the
// checksum.
#include "firmware/piece_reader.h"

#include "base/runtime.h"
#include "base/wipe.h"

#include <algorithm>
#include <climits>
#include <cstring>

namespace zel::firmware {

namespace {

constexpr std::size_t kBlock = 65536;

// The length of the line at `at` with its line feed; 0 for none within `room` bytes.
std::size_t lineLength(const char* at, std::size_t room) {
    const void* const feed = std::memchr(at, '\n', room);
    return feed ? static_cast<std::size_t>(static_cast<const char*>(feed) - at) + 1 : 0;
}

} // namespace

File openFile(const char* name, const char* mode) {
    std::FILE* file = nullptr;
    return File(name && fopen_s(&file, name, mode) == 0 ? file : nullptr);
}

File openSource(const char* name) {
    File file = openFile(name, "rb");
    if (file)
        std::setvbuf(file.get(), nullptr, _IONBF, 0);
    return file;
}

PieceReader::PieceReader(std::FILE* file, std::size_t longest)
    : file_(file), longest_(longest), block_(new char[kBlock]) {}

PieceReader::~PieceReader() { wipe(block_.get(), most_); }

int PieceReader::line() const { return static_cast<int>(std::min<std::size_t>(line_, INT_MAX)); }

void PieceReader::fill() {
    std::memmove(block_.get(), block_.get() + begin_, held());
    end_ = held();
    begin_ = 0;
    end_ += std::fread(block_.get() + end_, 1, kBlock - end_, file_);
    most_ = std::max(most_, end_);
    hasZeroByte_ = std::memchr(block_.get(), '\0', end_) != nullptr;
}

bool PieceReader::next() {
    if (held() < longest_)
        fill();
    const char* const at = block_.get() + begin_;
    const std::size_t room = std::min(longest_, held());
    const std::size_t length = lineLength(at, room);
    const std::size_t size = length ? length : room;
    piece_ = {at, strnlen(at, size)};
    if (size == 0)
        return false;
    line_ += startsLine_;
    startsLine_ = length != 0;
    begin_ += size;
    return true;
}

std::string_view PieceReader::wholeLines() {
    if (held() < longest_)
        fill();
    if (hasZeroByte_ || !startsLine_)
        return {};
    const char* const first = block_.get() + begin_;
    const char* const end = block_.get() + end_;
    const char* at = first;
    while (static_cast<std::size_t>(end - at) >= longest_) {
        const std::size_t length = lineLength(at, longest_);
        if (length == 0)
            break;
        at += length;
        ++line_;
    }
    begin_ = static_cast<std::size_t>(at - block_.get());
    return {first, static_cast<std::size_t>(at - first)};
}

} // namespace zel::firmware
