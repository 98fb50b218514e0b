// SPDX-License-Identifier: MIT
// Checks a serial line's path and speed before anything looks at the line.
#include "cli/command/line_words.h"

#include <algorithm>
#include <fmt/format.h>
#include <iterator>
#include <string_view>

namespace zel::cli {

namespace {

constexpr std::string_view kFolder = "/dev/";
constexpr std::size_t kLongestPath = 128; // that SetComLinux() keeps
constexpr std::string_view kSpeeds[] = {"9600", "19200", "38400", "57600", "115200"};

} // namespace

std::string checkLinePath(const std::string& path) {
    if (!path.starts_with(kFolder) || path.size() == kFolder.size())
        return fmt::format("\"{}\" is no path of a device; write it as /dev/ttyUSB0", path);
    return path.size() > kLongestPath
               ? fmt::format("the path is longer than {} characters", kLongestPath)
               : "";
}

std::string checkSpeed(const std::string& speed) {
    const bool isKnown =
        std::find(std::begin(kSpeeds), std::end(kSpeeds), speed) != std::end(kSpeeds);
    return isKnown ? "" : speed + " is none of 9600, 19200, 38400, 57600, 115200";
}

} // namespace zel::cli
