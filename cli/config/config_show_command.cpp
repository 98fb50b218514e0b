// SPDX-License-Identifier: MIT
// `zeltag config show`: all settings of a reader.
#include "cli/command/command.h"
#include "cli/config/stripe_settings.h"
#include "cli/config/words.h"
#include "cli/device/configuration.h"
#include "cli/device/connection.h"
#include "cli/device/device.h"
#include "cli/device/failures.h"
#include "frame/zelTagAPI.h"

#include <algorithm>
#include <fmt/format.h>
#include <nlohmann/json.hpp>

namespace zel::cli {

namespace {

const char* kindText(const Word& word) {
    return word.kind == WordKind::flag ? "flag" : isTime(word) ? "time" : "number";
}

std::string_view describe(const Word& word) {
    const std::string_view text = word.description;
    return text.substr(std::min(text.find_first_not_of(' '), text.size()));
}

std::string lineOf(const Word& word, const Values& values) {
    std::string line = fmt::format("  {:18} {:>9}  {:6}", word.name,
                                   valueText(word, values[word.index]), kindText(word));
    if (isReadOnly(word))
        line += "  (read-only)";
    if (!describe(word).empty())
        line += fmt::format("  {}", describe(word));
    line.erase(line.find_last_not_of(' ') + 1);
    return line;
}

Json jsonOf(const Word& word, const Values& values) {
    Json json = {{"value", values[word.index]}, {"kind", kindText(word)}};
    if (isTime(word))
        json["unit"] = "ms";
    if (isReadOnly(word))
        json["read_only"] = true;
    json["description"] = describe(word);
    return json;
}

// Pads have no effect and are left out.
template <class Use> bool forRecord(std::size_t record, Use use) {
    Values values = {};
    if (!readRecord(record, values))
        return false;
    for (const Word& word : allWords())
        if (word.record == record && word.kind != WordKind::pad)
            use(word, values);
    return true;
}

std::string lineOf(const StripeSetting& setting) {
    return fmt::format("  {:26} {:>7}  {}", setting.name, valueText(setting, setting.get(setting)),
                       kindText(setting));
}

Json jsonOf(const StripeSetting& setting) {
    Json json = {{"value", setting.get(setting)}, {"kind", kindText(setting)}};
    if (setting.kind == StripeSetting::Kind::time)
        json["unit"] = "ms";
    return json;
}

class ConfigShowCommand : public Command {
public:
    CommandText text() const override {
        return {"config show", "Configure", "Print all settings", "zeltag config show --sim"};
    }

    void addOptions(CLI::App& app) override { addConfigurationOption(app, configuration_); }

    Outcome run(const Options& options, Output& output) override {
        const Connection connection(options, Need::Settings);
        if (connection.failure())
            return connection.failure();
        const ChosenConfiguration chosen(configuration_);
        if (chosen.failure())
            return chosen.failure();
        if (isStripe())
            return options.json ? printStripeJson(output) : printStripe(output);
        return options.json ? printJson(output) : print(output);
    }

private:
    static Outcome print(Output& output) {
        const int highest = GetMaxConfig();
        output.line(highest == 0 ? activeDevice().name
                                 : fmt::format("{}, configuration {} of 0 to {}",
                                               activeDevice().name, GetActConfig(), highest));
        for (std::size_t record = 0; record < recordCount(); ++record) {
            output.line(recordName(record));
            if (!forRecord(record, [&output](const Word& word, const Values& values) {
                    output.line(lineOf(word, values));
                }))
                return deviceFailed("showing", "");
        }
        return {};
    }

    static Outcome printJson(Output& output) {
        Json records = Json::object();
        for (std::size_t record = 0; record < recordCount(); ++record) {
            Json& words = records[recordName(record)] = Json::object();
            if (!forRecord(record, [&words](const Word& word, const Values& values) {
                    words[word.name] = jsonOf(word, values);
                }))
                return deviceFailed("showing", "");
        }
        output.object(Json{{"device", toJson(activeDevice())},
                           {"config", GetActConfig()},
                           {"configurations", GetMaxConfig() + 1},
                           {"records", records}});
        return {};
    }

    static Outcome printStripe(Output& output) {
        output.line(activeDevice().name);
        for (const StripeSetting& setting : allStripeSettings())
            output.line(lineOf(setting));
        return {};
    }

    static Outcome printStripeJson(Output& output) {
        Json settings = Json::object();
        for (const StripeSetting& setting : allStripeSettings())
            settings[setting.name] = jsonOf(setting);
        output.object(Json{{"device", toJson(activeDevice())},
                           {"config", GetActConfig()},
                           {"configurations", GetMaxConfig() + 1},
                           {"settings", settings}});
        return {};
    }

    std::optional<int> configuration_;
};

} // namespace

std::unique_ptr<Command> command::config_show() { return std::make_unique<ConfigShowCommand>(); }

} // namespace zel::cli
