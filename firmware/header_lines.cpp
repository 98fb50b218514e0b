// SPDX-License-Identifier: MIT
// Looks values up in the header of a firmware file.
#include "firmware/header_lines.h"

#include <fstream>

namespace zel::firmware {

namespace {

constexpr std::ptrdiff_t kNowhere = -1;

// The first line from `start` on with this value.
std::ptrdiff_t find(const HeaderLines& lines, const std::string& value, std::ptrdiff_t start) {
    for (auto i = start; i < std::ssize(lines); ++i)
        if (valueOf(lines[static_cast<std::size_t>(i)]) == value)
            return i;
    return kNowhere;
}

} // namespace

HeaderLines headerLinesOf(std::istream& file) {
    HeaderLines lines;
    for (std::string line; std::getline(file, line);) {
        if (!line.empty() && line.back() == '\r')
            line.pop_back();
        if (line == "M0" || line == "M1")
            break;
        lines.push_back(line);
    }
    return lines;
}

std::optional<HeaderLines> headerOf(const std::string& name) {
    std::ifstream file(name);
    if (!file.is_open())
        return std::nullopt;
    file.exceptions(std::ios::badbit);
    return headerLinesOf(file);
}

std::string valueOf(const std::string& line) {
    const std::size_t blank = line.find(' ');
    return blank == std::string::npos ? "" : line.substr(blank);
}

std::string valueAt(const HeaderLines& lines, std::ptrdiff_t index) {
    const bool isThere = index >= 0 && index < std::ssize(lines);
    return isThere ? valueOf(lines[static_cast<std::size_t>(index)]) : "";
}

// The firmware stands two lines behind the part number, or the block isn't this reader's.
ReaderBlock::ReaderBlock(const HeaderLines& lines, const std::string& partNumber,
                         const std::string& firmware)
    : lines_(lines) {
    const std::ptrdiff_t part = find(lines, ' ' + partNumber, 0);
    const std::ptrdiff_t name = part == kNowhere ? kNowhere : find(lines, ' ' + firmware, part);
    if (name != kNowhere && name - part == 2)
        firmware_ = name;
}

std::string ReaderBlock::value(std::ptrdiff_t offset) const {
    return firmware_ == kNowhere ? "Not Found" : valueAt(lines_, firmware_ + offset);
}

} // namespace zel::firmware
