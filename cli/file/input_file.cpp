// SPDX-License-Identifier: MIT
// Reads a file's text and asks the library for its trailer.
#include "cli/file/input_file.h"

#include "frame/zelTagFiles.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <fmt/format.h>
#include <fstream>
#include <sys/stat.h>
#include <unistd.h>

namespace zel::cli {

namespace {

struct Title {
    FileKind kind;
    const char* text;
    std::size_t within; // bytes of the file's begin
};

constexpr Title kTitles[] = {
    {FileKind::Template, "--- zelTag and OEM Reader Configuration Template File ---", 128},
    {FileKind::Band, "--- zelBand Configuration Template File ---", 257},
    {FileKind::Echo, "--- Sonar Configuration Template File ---", 128}};

constexpr char kFreshCopy[] = "take a fresh copy of it";

int numberOf(FileKind kind) {
    switch (kind) {
    case FileKind::Template:
        return ZELTAGAPI_FILE_TEMPLATE;
    case FileKind::Firmware:
        return ZELTAGAPI_FILE_FIRMWARE;
    case FileKind::Band:
        return ZELTAGAPI_FILE_BAND;
    case FileKind::Echo:
        return ZELTAGAPI_FILE_ECHO;
    case FileKind::Keys:
        break;
    }
    return ZELTAGAPI_FILE_KEYS;
}

std::string reasonOf(const zelFileCheck& check) {
    switch (check.fault) {
    case ZELTAGAPI_FAULT_NO_TRAILER:
        return "it has no trailer";
    case ZELTAGAPI_FAULT_TRAILER:
        return fmt::format("line {}: the trailer has another form", check.line);
    case ZELTAGAPI_FAULT_BEHIND:
        return fmt::format("line {} stands behind the trailer", check.line);
    case ZELTAGAPI_FAULT_CHECKSUM:
        return fmt::format("line {} tells the checksum {}, the text has {}", check.line, check.told,
                           check.computed);
    case ZELTAGAPI_FAULT_TITLE:
        return "it doesn't begin with its title";
    case ZELTAGAPI_FAULT_LINE:
        return fmt::format("line {} sets nothing", check.line);
    case ZELTAGAPI_FAULT_VALUE:
        return fmt::format("line {} tells a number that its setting can't have", check.line);
    case ZELTAGAPI_FAULT_MISSING:
        return "some settings have no line";
    default:
        return "it can't be opened";
    }
}

Failure missing(const std::string& name, const std::string& reason) {
    return {ExitCode::MissingFile, fmt::format("{} can't be read: {}", name, reason),
            "check its name", ""};
}

bool isEqual(char a, char b) {
    const auto lower = [](char c) { return c >= 'A' && c <= 'Z' ? c - 'A' + 'a' : c; };
    return lower(a) == lower(b);
}

// The header may begin with any text: two of its lines are known.
bool isFirmware(const std::string& text) {
    constexpr const char* kLines[] = {"\n#NEW FW", "\nM0\n", "\nM0\r", "\nM1\n", "\nM1\r"};
    const std::string_view begin = text;
    return begin.starts_with(':') || begin.starts_with('#') || begin.starts_with('M') ||
           std::any_of(std::begin(kLines), std::end(kLines),
                       [&](const char* line) { return text.find(line) != std::string::npos; });
}

} // namespace

const char* kindName(FileKind kind) {
    constexpr const char* kNames[] = {"template", "firmware", "key", "zelBand", "zelEcho"};
    return kNames[static_cast<std::size_t>(kind)];
}

Outcome whyUnreadable(const std::string& name) {
    struct stat found = {};
    if (stat(name.c_str(), &found) != 0)
        return missing(name, std::strerror(errno));
    if (S_ISDIR(found.st_mode))
        return missing(name, "it is a folder");
    if (!S_ISREG(found.st_mode)) // it is read more than once
        return missing(name, "it is no regular file");
    if (faccessat(AT_FDCWD, name.c_str(), R_OK, AT_EACCESS) != 0)
        return Failure{ExitCode::NoPermission,
                       fmt::format("{} can't be read: {}", name, std::strerror(errno)),
                       "ask its owner for the right to read it", ""};
    return {};
}

Failure unreadable(const std::string& name) {
    if (auto failure = whyUnreadable(name))
        return *failure;
    return {ExitCode::MissingFile, name + " can't be read to its end", "check its disk", ""};
}

std::string textOf(const std::string& name) {
    std::ifstream file(name, std::ios::binary);
    return {std::istreambuf_iterator(file), {}};
}

bool hasTitle(const std::string& text, FileKind kind) {
    return std::any_of(std::begin(kTitles), std::end(kTitles), [&](const Title& title) {
        return title.kind == kind && text.substr(0, title.within).find(title.text) != text.npos;
    });
}

std::optional<FileKind> kindOf(const std::string& text) {
    for (const Title& title : kTitles)
        if (hasTitle(text, title.kind))
            return title.kind;
    const std::string line = text.substr(0, text.find('\n'));
    if (line.starts_with("[Blob") || line.starts_with("[EOF]"))
        return FileKind::Keys;
    return isFirmware(text) ? std::optional(FileKind::Firmware) : std::nullopt;
}

bool hasTrailer(const std::string& text) {
    constexpr std::string_view kName = "iEndOfHwgFile";
    return std::search(text.begin(), text.end(), kName.begin(), kName.end(), isEqual) != text.end();
}

Trailer trailerOf(const std::string& name, FileKind kind) {
    zelFileCheck check = {};
    const bool holds = zelTagAPI_checkFile(name.c_str(), numberOf(kind), &check) == 1;
    return {holds,
            check.line,
            check.told,
            check.computed,
            holds ? "" : reasonOf(check),
            check.fault == ZELTAGAPI_FAULT_MISSING};
}

Outcome whyDamaged(const std::string& name, FileKind kind) {
    if (auto failure = whyUnreadable(name))
        return failure;
    const Trailer trailer = trailerOf(name, kind);
    return trailer.holds ? Outcome() : damaged(name, trailer);
}

Failure damaged(const std::string& name, const Trailer& trailer) {
    return {ExitCode::DamagedFile, fmt::format("{} is damaged: {}", name, trailer.reason),
            kFreshCopy, ""};
}

Failure noTemplate(const std::string& name) {
    return {ExitCode::DamagedFile, name + " is no template file",
            "`zeltag config export` writes one", ""};
}

} // namespace zel::cli
