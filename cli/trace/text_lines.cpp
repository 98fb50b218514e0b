// SPDX-License-Identifier: MIT
// Which lines of text are settings, and so hold nothing of a card.
#include "cli/trace/text_lines.h"

#include <algorithm>
#include <iterator>
#include <string>
#include <string_view>

namespace zel::cli {

namespace {

constexpr std::string_view kPrompt = "Norvanex>";

// What follows "ZTAG:".
constexpr std::string_view kKnown[] = {"cmd.",  "chr.",  "dev.", "disp.",   "op.",    "out.",
                                       "time.", "wieg.", "VAR",  "DEV.VER", "QID.ID", "CFG.RESET"};

bool startsAsCommand(std::string_view text) {
    return text.starts_with("ZTAG:") || text.starts_with("ztag:");
}

bool isKnown(std::string_view command) {
    return std::any_of(std::begin(kKnown), std::end(kKnown), [&](std::string_view start) {
        return command.substr(5).starts_with(start);
    });
}

// A version has dots; an identifier has commas and a semicolon.
bool isVersion(std::string_view line) {
    return line.starts_with('{') && line.ends_with('}') && line.size() < 12 &&
           std::count(line.begin(), line.end(), '.') == 2 && line.find_first_of(",;") == line.npos;
}

bool isHarmless(std::string_view line) {
    while (line.starts_with(kPrompt))
        line.remove_prefix(kPrompt.size());
    if (line.empty() || line == "Error" || isVersion(line))
        return true;
    return startsAsCommand(line) && isKnown(line);
}

} // namespace

bool areLines(ByteView bytes) {
    const std::string text(bytes.begin(), bytes.end());
    const std::size_t first = text.find_first_not_of('\r');
    return first != text.npos && startsAsCommand(std::string_view(text).substr(first));
}

Message messageOfLines(ByteView bytes) {
    Message message = allShown(bytes);
    message.isText = true;
    const std::string text(bytes.begin(), bytes.end());
    for (std::size_t begin = 0; begin < text.size();) {
        const std::size_t end = std::min(text.find_first_of("\r\n", begin), text.size());
        const bool isSecret = !isHarmless(std::string_view(text).substr(begin, end - begin));
        std::fill(message.isSecret.begin() + static_cast<std::ptrdiff_t>(begin),
                  message.isSecret.begin() + static_cast<std::ptrdiff_t>(end), isSecret);
        begin = end + 1;
    }
    return message;
}

} // namespace zel::cli
