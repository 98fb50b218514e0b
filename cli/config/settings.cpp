// SPDX-License-Identifier: MIT
// The table of settings, and what differs between two lists of their values.
#include "cli/config/settings.h"

#include <algorithm>
#include <fmt/format.h>
#include <iterator>
#include <nlohmann/json.hpp>

namespace zel::cli {

namespace {

constexpr int kFieldData = 128; // bytes

std::vector<Setting> makeSettings() {
    std::vector<Setting> all = {{"AZERTYShiftLock", nullptr, false},
                                {"ExtendedPrecisionMath", nullptr, false}};
    for (const Word& word : allWords())
        if (word.kind != WordKind::pad && !isReadOnly(word))
            all.push_back({fullName(word), &word, false});
    for (int i = 0; i < kFieldData; ++i)
        all.push_back({fmt::format("uSFD[{}]", i), nullptr, true});
    all.push_back({"CardType", nullptr, false});
    all.push_back({"CardPriority", nullptr, false});
    for (const StripeSetting& setting : allStripeSettings())
        all.push_back({setting.name, nullptr, false, &setting});
    return all;
}

const Setting& settingOf(const Difference& difference) { return allSettings()[difference.setting]; }

std::string text(const Setting& setting, std::optional<int> value) {
    if (!value)
        return "-";
    if (setting.isByte)
        return fmt::format("0x{:02X}", static_cast<unsigned>(*value));
    if (setting.stripe)
        return valueText(*setting.stripe, *value);
    return setting.word ? valueText(*setting.word, *value) : std::to_string(*value);
}

// Milliseconds in a step of what the reader counts in; 0 for what is no time.
int stepOf(const Setting& setting) {
    if (setting.stripe)
        return setting.stripe->kind == StripeSetting::Kind::time ? kStripeTimeUnit : 0;
    return setting.word && isTime(*setting.word) ? setting.word->unit : 0;
}

std::string keptText(const Difference& difference) {
    const Setting& setting = settingOf(difference);
    const bool isMark = setting.word && isVolatileMark(*setting.word);
    if (!difference.kept || difference.kept == difference.after || isMark)
        return "";
    return keptOtherwiseText(text(setting, difference.kept), stepOf(setting));
}

std::string lineOf(const Difference& difference) {
    const Setting& setting = settingOf(difference);
    return fmt::format("{}  {} -> {}{}", setting.name, text(setting, difference.before),
                       text(setting, difference.after), keptText(difference));
}

Json orNull(std::optional<int> value) { return value ? Json(*value) : Json(); }

Json toJson(const Difference& difference) {
    const Setting& setting = settingOf(difference);
    Json json = {{"config", difference.configuration}};
    if (setting.word)
        json["record"] = recordName(setting.word->record);
    json["name"] = setting.word ? setting.word->name : setting.name;
    json["old"] = orNull(difference.before);
    json["new"] = orNull(difference.after);
    if (difference.kept)
        json["kept"] = *difference.kept;
    return json;
}

} // namespace

const std::vector<Setting>& allSettings() {
    static const std::vector<Setting> all = makeSettings();
    return all;
}

Differences compare(const Configurations& before, const Configurations& after, Untold untold) {
    Differences found;
    const std::size_t common = std::min(before.size(), after.size());
    for (std::size_t i = 0; i < common; ++i)
        for (std::size_t setting = 0; setting < allSettings().size(); ++setting) {
            const auto old = before[i][setting];
            const auto wanted = after[i][setting];
            if (old != wanted && (untold == Untold::Differs || (old && wanted)))
                found.push_back({i, setting, old, wanted});
        }
    return found;
}

void fillKept(Differences& differences, const Configurations& now) {
    for (Difference& difference : differences)
        difference.kept = now.at(difference.configuration).at(difference.setting);
}

Differences keptOtherwise(const Differences& differences) {
    Differences others;
    std::copy_if(differences.begin(), differences.end(), std::back_inserter(others),
                 [](const Difference& difference) { return !keptText(difference).empty(); });
    return others;
}

void print(const Differences& differences, bool several, Output& output) {
    std::optional<std::size_t> configuration;
    for (const Difference& difference : differences) {
        if (several && configuration != difference.configuration)
            output.line(fmt::format("configuration {}", difference.configuration));
        configuration = difference.configuration;
        output.line((several ? "  " : "") + lineOf(difference));
    }
}

Json toJson(const Differences& differences) {
    Json list = Json::array();
    for (const Difference& difference : differences)
        list.push_back(toJson(difference));
    return list;
}

} // namespace zel::cli
