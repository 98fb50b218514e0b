// SPDX-License-Identifier: MIT
// Lets the library read a firmware file and ask the rules.
#include "cli/firmware/firmware_file.h"

#include "cli/device/description.h"
#include "cli/device/device.h"
#include "cli/device/failures.h"
#include "cli/file/input_file.h"
#include "frame/zelTagFiles.h"

#include <cstdlib>
#include <fmt/format.h>
#include <nlohmann/json.hpp>

namespace zel::cli {

namespace {

Failure withoutLines(const std::string& path) {
    return {ExitCode::DamagedFile, path + " holds no line of firmware",
            "take a fresh copy of it from the maker", ""};
}

// Some of the library's texts end like a sentence.
std::string withoutPeriod(std::string text) {
    if (text.ends_with('.'))
        text.pop_back();
    return text;
}

std::string hintFor(const FirmwareFile& file) {
    if (tellsItsFirmware())
        return fmt::format("take a file made for its firmware {}", activeFirmware().file);
    return fmt::format("it tells no firmware of its own: if it waits in its boot loader, "
                       "`zeltag firmware load --recover {}` loads the file",
                       file.path);
}

} // namespace

std::variant<FirmwareFile, Failure> readFirmwareFile(const std::string& path) {
    if (auto failure = whyUnreadable(path))
        return *failure;
    const Trailer trailer = trailerOf(path, FileKind::Firmware);
    if (!trailer.holds)
        return damaged(path, trailer);
    zelFirmwareFile told = {};
    if (zelTagAPI_readFirmware(path.c_str(), &told) != 1 || told.lines == 0)
        return withoutLines(path);
    return FirmwareFile{path, trailer.computed, printable(told.name), told.micro, told.lines};
}

Json toJson(const FirmwareFile& file) {
    const bool isNamed = !file.name.empty();
    return {{"name", isNamed ? Json(file.name) : Json()},
            {"family", isNamed ? Json(file.family()) : Json()},
            {"micro", file.micro >= 0 ? Json(file.micro) : Json()},
            {"lines", file.lines}};
}

std::optional<Refusal> refusalOf(const FirmwareFile& file) {
    const char* const text = zelTagAPI_checkFirmware(file.path.c_str());
    return text ? std::optional(Refusal{std::atoi(text), text}) : std::nullopt;
}

Failure explain(const Refusal& refusal, const FirmwareFile& file) {
    const Device device = activeDevice();
    return {ExitCode::DamagedFile,
            fmt::format("{} may not go into {}: {}", file.path, device.name,
                        withoutPeriod(refusal.text)),
            hintFor(file), device.name};
}

Outcome whyNoFirmware() { return isTag() ? Outcome() : wrongProduct("it takes no firmware"); }

bool tellsItsFirmware() { return !activeFirmware().file.empty(); }

} // namespace zel::cli
