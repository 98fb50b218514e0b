// SPDX-License-Identifier: MIT
// Turns the library's configurations into lists of settings.
#include "cli/config/template_file.h"

#include "cli/config/stripe_file.h"
#include "cli/device/device.h"
#include "cli/file/input_file.h"
#include "frame/zelTagAPI.h"
#include "frame/zelTagFiles.h"

#include <algorithm>
#include <cstring>
#include <fmt/format.h>

namespace zel::cli {

namespace {

using Records = std::vector<tsTagCfg>;

constexpr std::size_t kMost = ZELTAGAPI_MAX_CONFIGS;

int valueOf(const Word& word, const tsTagCfg& config) {
    const void* const records[] = {
#define ZEL_RECORD(record, table, calls) &config.s##record,
#define ZEL_WORD(record, index, name, label, kind, description, place)
#include "frame/records.def"
#undef ZEL_RECORD
#undef ZEL_WORD
    };
    Values values = {};
    std::memcpy(values.data(), records[word.record], sizeof values);
    const int value = values[word.index];
    return word.kind == WordKind::flag ? static_cast<int>(value != 0) : value;
}

// In the order of allSettings().
SettingValues valuesOf(const tsTagCfg& config) {
    SettingValues values = {static_cast<std::uint16_t>(config.AZERTYShiftLock),
                            static_cast<std::uint16_t>(config.ExtendedPrecisionMath)};
    for (const Setting& setting : allSettings())
        if (setting.word)
            values.emplace_back(valueOf(*setting.word, config));
    for (const std::uint8_t byte : config.uSFD.bytes)
        values.emplace_back(byte);
    values.emplace_back(config.iCardType);
    values.emplace_back(static_cast<std::int16_t>(config.iCardPriority));
    values.resize(allSettings().size());
    return values;
}

Configurations valuesOf(const Records& records) {
    Configurations all;
    for (const tsTagCfg& record : records)
        all.push_back(valuesOf(record));
    return all;
}

Records activeRecords() {
    const tsTagCfg* const first = DevDat[GetActDev()].Cfg;
    return {first, first + std::min(static_cast<std::size_t>(GetMaxConfig()) + 1, kMost)};
}

// A reader of one configuration has no card type.
Configurations ofReader(const Records& records) {
    Configurations all = valuesOf(records);
    const auto behindCardType = allSettings().size() - allStripeSettings().size();
    for (std::size_t setting = behindCardType - 2; all.size() == 1 && setting < behindCardType;
         ++setting)
        all[0][setting].reset();
    return all;
}

// The file's configurations over bytes that are all the same.
Configurations over(int filling, const std::string& name) {
    Records records(kMost);
    std::memset(records.data(), filling, records.size() * sizeof(tsTagCfg));
    records.resize(
        static_cast<std::size_t>(zelTagAPI_readTemplate(name.c_str(), records.data(), kMost, 0)));
    return valuesOf(records);
}

bool tellsNothing(const SettingValues& values) {
    return std::none_of(values.begin(), values.end(), [](auto value) { return value.has_value(); });
}

// How the text of a file's settings ends.
const char* lastLine(std::size_t configurations) {
    return configurations == 1 ? "\nEND sFldSepData\n" : "\n##NEXTCONFIG##\n";
}

std::string withoutTrailer(const std::string& text) {
    return text.substr(0, text.find("/--- iEndOfHwgFile \n"));
}

std::variant<Configurations, Failure> importedStripe(const std::string& name) {
    const auto values = importedStripeValues(name);
    if (!values)
        return unreadable(name);
    return Configurations{*values};
}

} // namespace

Outcome whyUnfit(const std::string& name) {
    if (isStripeFile(name) == isStripe())
        return {};
    const std::string device = activeDevice().name;
    return Failure{ExitCode::DamagedFile,
                   fmt::format("{} is of a {} reader, and {} is a {}", name,
                               isStripe() ? "proximity" : "magnetic stripe", device,
                               activeProduct()),
                   "take a file that `zeltag config export` wrote of such a reader", device};
}

// A setting is told where the filling doesn't show. What follows the last configuration, such as a
// trailer, counts as one that tells nothing.
std::variant<Configurations, Failure> configurationsIn(const std::string& name) {
    if (isStripeFile(name))
        return Configurations{toldByStripeFile(name)};
    Configurations all = over(0, name);
    const Configurations other = over(0xFF, name);
    if (all.size() != other.size())
        return unreadable(name);
    for (std::size_t i = 0; i < all.size(); ++i)
        for (std::size_t setting = 0; setting < all[i].size(); ++setting)
            if (all[i][setting] != other[i][setting])
                all[i][setting].reset();
    while (!all.empty() && tellsNothing(all.back()))
        all.pop_back();
    if (all.empty())
        return noTemplate(name);
    return all;
}

Configurations activeConfigurations() {
    return isStripe() ? Configurations{activeStripeValues()} : ofReader(activeRecords());
}

std::variant<Configurations, Failure> importedConfigurations(const std::string& name) {
    if (isStripe())
        return importedStripe(name);
    Records records = activeRecords();
    const auto count = static_cast<int>(records.size());
    if (zelTagAPI_readTemplate(name.c_str(), records.data(), count, 1) == 0)
        return unreadable(name);
    return ofReader(records);
}

// A configuration that couldn't be read has no settings in the file and so isn't counted.
bool tellsAll(const std::string& name, const Configurations& held) {
    const auto told = configurationsIn(name);
    const auto* const all = std::get_if<Configurations>(&told);
    if (isStripe())
        return all && *all == held && isStripeFileWhole(name);
    return all && all->size() == held.size() && compare(*all, held, Untold::Passes).empty() &&
           withoutTrailer(textOf(name)).ends_with(lastLine(held.size()));
}

bool showsKeys() {
    if (isStripe())
        return false;
    const Records records = activeRecords();
    return std::any_of(records.begin(), records.end(),
                       [](const tsTagCfg& config) { return zelTagAPI_showsKeys(&config) != 0; });
}

} // namespace zel::cli
