// SPDX-License-Identifier: MIT
// Where results and remarks go: results to stdout, everything else to stderr.
#pragma once

#include "cli/command/terminal.h"

#include <cstdio>
#include <nlohmann/json_fwd.hpp>
#include <optional>
#include <string>
#include <string_view>

namespace zel::cli {

using Json = nlohmann::ordered_json;

// One line; a byte that isn't UTF-8 becomes the replacement character.
std::string toText(const Json& object);

// Results, a line at a time. Each line is flushed, so that a program reading along sees it at once;
// the first line that can't be written is remembered and silences those behind it.
class Output {
public:
    explicit Output(std::FILE* stream) : stream_(stream) {}

    void line(std::string_view text);
    void object(const Json& object) { line(toText(object)); }

    // The errno of the line that couldn't be written, 0 while all went well.
    int error() const { return error_; }

    // As terminalColumns() tells; and whether colours are shown.
    std::optional<std::size_t> columns() const;
    std::string coloured(std::string_view text, Colour colour) const;

    // Whether results still have somewhere to go: nothing failed, and no pipe lost its reader.
    bool isOpen();

private:
    std::FILE* stream_;
    int error_ = 0;
};

// A remark on stderr that a user should see in any case; "warning:" at its start is yellow.
void warn(std::string_view text);

// The same with the program's name in red: what ended the command.
void warnOfEnd(std::string_view text);

// Whether remarks on progress go to stderr when it is no terminal too.
void demandProgress(bool demanded);

// Whether remarks on progress are shown: on a terminal or on demand.
bool showsProgress();

// A remark on stderr while something is awaited, where remarks on progress are shown.
void showProgress(std::string_view text);

// One that takes the place of the one before it on a terminal; its end, nothing where none is.
void showProgressInPlace(std::string_view text);
void endProgress();

// Occupies the standard descriptors that the caller left closed: a device opened as descriptor 1
// would receive the results as its data. Writing to the occupied ones still fails.
void occupyStandardDescriptors();

} // namespace zel::cli
