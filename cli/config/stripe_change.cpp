// SPDX-License-Identifier: MIT
// Checks all of the changes before the first one is made.
#include "cli/config/stripe_change.h"

#include "cli/config/change.h"
#include "cli/device/device.h"

#include <algorithm>
#include <fmt/format.h>

namespace zel::cli {

namespace {

Failure refusal(std::string message, std::string hint) {
    return {ExitCode::Usage, std::move(message), std::move(hint), ""};
}

std::string nameIn(const std::string& assignment) {
    return assignment.substr(0, assignment.find('='));
}

std::size_t placeOf(const StripeSetting& setting) {
    const auto& all = allSettings();
    return static_cast<std::size_t>(
        std::find_if(all.begin(), all.end(),
                     [&setting](const Setting& other) { return other.stripe == &setting; }) -
        all.begin());
}

const StripeSetting& settingOf(const Difference& change) {
    return *allSettings()[change.setting].stripe;
}

std::variant<Difference, Failure> parse(const std::string& assignment) {
    const std::string name = nameIn(assignment);
    if (name.size() == assignment.size())
        return refusal(assignment + " sets nothing", "write NAME=VALUE");
    const StripeSetting* const setting = findStripeSetting(name);
    if (!setting)
        return noStripeSetting(name);
    const std::string value = assignment.substr(name.size() + 1);
    const auto number = numberIn(value);
    if (!number)
        return refusal(fmt::format("{}: {} is no whole number", setting->name,
                                   value.empty() ? "nothing" : value),
                       "write a number such as 16 or 0x10");
    if (*number < 0 || *number > setting->most)
        return refusal(fmt::format("{} can't be {}", setting->name, *number),
                       "it takes 0 to " + valueText(*setting, setting->most));
    return Difference{0, placeOf(*setting), {}, *number};
}

} // namespace

bool meansStripe(const std::vector<std::string>& assignments) {
    return !assignments.empty() && findStripeSetting(nameIn(assignments.front()));
}

std::variant<Differences, Failure> parseStripeChanges(const std::vector<std::string>& assignments) {
    Differences changes;
    for (const std::string& assignment : assignments) {
        const auto parsed = parse(assignment);
        if (const auto* const failure = std::get_if<Failure>(&parsed))
            return *failure;
        const auto& change = std::get<Difference>(parsed);
        if (std::any_of(changes.begin(), changes.end(), [&change](const Difference& other) {
                return other.setting == change.setting;
            }))
            return refusal(settingOf(change).name + " is set twice", "set it once");
        changes.push_back(change);
    }
    return changes;
}

void prepareStripe(Differences& changes) {
    for (Difference& change : changes) {
        const StripeSetting& setting = settingOf(change);
        change.before = setting.get(setting);
        setting.set(setting, *change.after);
    }
}

Failure wrongKind(const std::string& name) {
    const Device device = activeDevice();
    return {ExitCode::Usage,
            fmt::format("{} has no setting {}: it is a {}", device.name, name, activeProduct()),
            "`zeltag config show` lists its settings", device.name};
}

} // namespace zel::cli
