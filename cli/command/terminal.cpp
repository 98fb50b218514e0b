// SPDX-License-Identifier: MIT
// Asks the terminal and the environment.
#include "cli/command/terminal.h"

#include "cli/command/whole_number.h"

#include <cstdlib>
#include <fmt/format.h>
#include <sys/ioctl.h>
#include <unistd.h>

namespace zel::cli {

namespace {

std::string_view setting(const char* name) {
    const char* const value = std::getenv(name);
    return value ? value : "";
}

} // namespace

std::optional<std::size_t> terminalColumns(std::FILE* stream) {
    if (isatty(fileno(stream)) == 0)
        return {};
    const auto columns = wholeNumber<std::size_t>(setting("COLUMNS"));
    if (columns && *columns > 0)
        return columns;
    winsize size = {};
    const bool isTold = ioctl(fileno(stream), TIOCGWINSZ, &size) == 0 && size.ws_col > 0;
    return isTold ? std::optional<std::size_t>(size.ws_col) : std::nullopt;
}

bool showsColours(std::FILE* stream) {
    return isatty(fileno(stream)) != 0 && setting("NO_COLOR").empty() && setting("TERM") != "dumb";
}

std::string coloured(std::string_view text, Colour colour, std::FILE* stream) {
    return showsColours(stream) ? fmt::format("\x1B[{}m{}\x1B[0m", static_cast<int>(colour), text)
                                : std::string(text);
}

} // namespace zel::cli
