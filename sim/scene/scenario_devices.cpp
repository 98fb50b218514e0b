// SPDX-License-Identifier: MIT
// [[device]] of a scenario.
#include "sim/scene/place.h"
#include "sim/scene/scenario_parts.h"

#include <algorithm>
#include <cctype>

namespace zel::sim {

namespace {

constexpr int kMostConfigurations = 11;
constexpr std::size_t kSerialNumberSize = 32;
constexpr std::size_t kVersionDigits = 4;

Names kindNames() {
    Names names;
    for (const Kind& kind : allKinds())
        names.emplace_back(kind.name);
    return names;
}

const Kind& kindOf(const Fields& fields) {
    const std::string name = fields.text("kind");
    const Kind* const kind = findKind(name);
    if (!kind)
        fields.refuse("kind", "there is no kind " + name, "write one of " + listed(kindNames()));
    return *kind;
}

bool isLine(const std::string& at) { return at.starts_with("/dev/") && at.size() > 5; }

void checkPlace(const Scenario& scenario, const ScenarioDevice& device, const Fields& fields) {
    if (device.at == "usb")
        return;
    const std::string kind = device.kind->name;
    if (!isLine(device.at) && device.at != "bridge")
        fields.refuse("at", "\"" + device.at + "\" is no place",
                      "write \"usb\", \"bridge\" or the path of a line such as \"/dev/ttySIM1\"");
    if (device.at == "bridge" && device.kind->sort != Sort::Proximity)
        fields.refuse("at", "a " + kind + " can't be behind a bridge",
                      device.kind->sort == Sort::Sensor ? "write \"usb\""
                                                        : "write \"usb\" or the path of a line");
    if (device.kind->sort == Sort::Sensor)
        fields.refuse("at", "a " + kind + " has no serial line", "write \"usb\"");
    for (const ScenarioDevice& other : scenario.devices)
        if (other.at == device.at)
            fields.refuse("at", other.name + " is at " + device.at + " already",
                          "give one of them another place");
}

std::string firmwareOf(const Fields& fields, const Kind& kind) {
    std::string version = fields.textOr("firmware", "");
    const bool isFourDigits =
        version.size() == kVersionDigits &&
        std::ranges::all_of(version, [](unsigned char digit) { return std::isdigit(digit) != 0; });
    if (!version.empty() && kind.sort != Sort::Proximity && !isFourDigits)
        fields.refuse("firmware", std::string("firmware of a ") + kind.name + " has four digits",
                      "write it as \"0123\"");
    return version;
}

std::string serialNumberOf(const Fields& fields, const Kind& kind) {
    std::string number = fields.textOr("serial", "");
    if (!number.empty() && kind.sort != Sort::Proximity)
        fields.refuse("serial", std::string("a ") + kind.name + " tells no serial number",
                      "leave serial out");
    if (number.size() > kSerialNumberSize)
        fields.refuse("serial", "serial is too long",
                      std::to_string(kSerialNumberSize) + " characters find room");
    return number;
}

int configurationsOf(const Fields& fields, const Kind& kind) {
    if (!fields.has("configurations"))
        return 0;
    if (std::string(kind.name) != "TagPlus")
        fields.refuse("configurations", std::string("a ") + kind.name + " has one configuration",
                      "leave configurations out, or let kind be \"TagPlus\"");
    return fields.number("configurations", 1, kMostConfigurations);
}

DeviceMake makeOf(const Fields& fields, const Kind& kind) {
    DeviceMake make;
    if (fields.has("luid"))
        make.luid = static_cast<std::uint16_t>(fields.number("luid", 0, UINT16_MAX));
    make.firmware = firmwareOf(fields, kind);
    make.serialNumber = serialNumberOf(fields, kind);
    make.configurations = configurationsOf(fields, kind);
    return make;
}

// Checks changes against the words of a device that is made for this alone.
class SettingsReader {
public:
    SettingsReader(const ScenarioDevice& device, const std::string& file)
        : kind_(device.kind->name), device_(device.kind->make(device.make)),
          words_(device_->settings()), file_(file) {}

    // A table in the table is a record, and its words have names of two parts.
    void read(const toml::table& table, const std::string& record) {
        for (const auto& [key, node] : table) {
            const std::string name = record + std::string(key.str());
            if (const toml::table* const words = node.as_table())
                read(*words, name + ".");
            else
                add(name, node);
        }
    }

    std::vector<ScenarioSetting> take() { return std::move(changes_); }

private:
    void add(const std::string& name, const toml::node& node) {
        const std::string where = whereOf(file_, node);
        const Setting* const word = findSetting(words_, name);
        if (!word)
            refuseAt(where, "a " + kind_ + " has no setting " + name,
                     meantBy(name, namesFor(name)));
        changes_.push_back({word->name, valueOf(*word, node, where), where});
    }

    static int valueOf(const Setting& word, const toml::node& node, const std::string& where) {
        auto value = node.value_exact<std::int64_t>();
        if (const auto flag = node.value_exact<bool>())
            value = *flag ? 1 : 0;
        const std::string range = "from 0 to " + std::to_string(word.most);
        if (!value || *value < 0 || *value > word.most)
            refuseAt(where, word.name + " isn't a whole number in its range", "write one " + range);
        if (*value % word.step != 0)
            refuseAt(where, word.name + " counts in steps of " + std::to_string(word.step),
                     "write a multiple of it " + range);
        return static_cast<int>(*value);
    }

    // With the record's name or without it, as the name was written.
    Names namesFor(const std::string& name) const {
        const bool isFull = name.find('.') != std::string::npos;
        Names names;
        for (const Setting& word : words_)
            names.push_back(isFull ? word.name : word.name.substr(word.name.rfind('.') + 1));
        return names;
    }

    std::string kind_;
    std::unique_ptr<Apparatus> device_;
    Settings words_;
    const std::string& file_;
    std::vector<ScenarioSetting> changes_;
};

std::vector<ScenarioSetting> settingsOf(const Fields& fields, const ScenarioDevice& device,
                                        const std::string& file) {
    if (!fields.has("settings"))
        return {};
    const toml::table* const table = fields.node("settings").as_table();
    if (!table)
        fields.refuse("settings", "settings isn't a table", "write { WORD = NUMBER }");
    SettingsReader reader(device, file);
    reader.read(*table, "");
    return reader.take();
}

} // namespace

void addDevice(Scenario& scenario, const toml::table& table, const std::string& file) {
    const Fields fields(
        table, file, "[[device]]",
        {"name", "kind", "at", "luid", "firmware", "serial", "configurations", "settings"});
    ScenarioDevice device = {.name = fields.text("name"),
                             .kind = &kindOf(fields),
                             .at = fields.textOr("at", "usb"),
                             .make = {},
                             .settings = {},
                             .where = fields.where()};
    for (const ScenarioDevice& other : scenario.devices)
        if (other.name == device.name)
            fields.refuse("name", "there are two devices " + device.name, "give one another name");
    checkPlace(scenario, device, fields);
    device.make = makeOf(fields, *device.kind);
    device.settings = settingsOf(fields, device, file);
    scenario.devices.push_back(std::move(device));
}

} // namespace zel::sim
