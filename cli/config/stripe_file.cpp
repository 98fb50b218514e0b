// SPDX-License-Identifier: MIT
// Reads the lines as the library does, and lets the library read them too.
#include "cli/config/stripe_file.h"

#include "cli/config/untouched_memory.h"
#include "cli/file/input_file.h"
#include "frame/zelTagAPI.h"

#include <cstdlib>
#include <map>
#include <sstream>

namespace zel::cli {

namespace {

constexpr std::size_t kLongestLine = 256;
constexpr char kLastLine[] = "\n//##END##: ";

// Stripe settings are the last ones of the table.
std::size_t firstStripeSetting() { return allSettings().size() - allStripeSettings().size(); }

std::map<std::string, std::size_t> makePlaces() {
    std::map<std::string, std::size_t> places;
    for (std::size_t i = firstStripeSetting(); i < allSettings().size(); ++i)
        places[allSettings()[i].name] = i;
    return places;
}

// What follows the number doesn't count.
void take(const std::string& line, SettingValues& values) {
    static const std::map<std::string, std::size_t> places = makePlaces();
    const std::size_t colon = line.find(':');
    const auto found = places.find(line.substr(0, colon));
    if (colon == std::string::npos || found == places.end())
        return;
    const char* const text = line.c_str() + colon + 1;
    char* end = nullptr;
    const long number = std::strtol(text, &end, 10);
    if (end != text)
        values[found->second] = asStored(*allSettings()[found->second].stripe, number);
}

} // namespace

bool isStripeFile(const std::string& name) { return hasTitle(textOf(name), FileKind::Band); }

bool isStripeFileWhole(const std::string& name) {
    return textOf(name).rfind(kLastLine) != std::string::npos;
}

// The library begins a new line behind so many characters.
SettingValues toldByStripeFile(const std::string& name) {
    SettingValues values(allSettings().size());
    std::istringstream text(textOf(name));
    for (std::string line; std::getline(text, line);)
        for (std::size_t at = 0; at < line.size(); at += kLongestLine)
            take(line.substr(at, kLongestLine), values);
    return values;
}

SettingValues activeStripeValues() {
    SettingValues values(allSettings().size());
    for (std::size_t i = firstStripeSetting(); i < values.size(); ++i)
        values[i] = allSettings()[i].stripe->get(*allSettings()[i].stripe);
    return values;
}

std::optional<SettingValues> importedStripeValues(const std::string& name) {
    const UntouchedMemory memory;
    return ReadDevCfgFmFile(name.c_str()) == 1 ? std::optional(activeStripeValues()) : std::nullopt;
}

Failure noSealedStripeFile() {
    return {ExitCode::Usage, "a magnetic stripe reader's file has no checksum form",
            "leave --sealed out", ""};
}

} // namespace zel::cli
