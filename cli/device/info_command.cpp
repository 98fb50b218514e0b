// SPDX-License-Identifier: MIT
// `zeltag info`: all that one reader tells of itself.
#include "cli/command/command.h"
#include "cli/device/configuration.h"
#include "cli/device/connection.h"
#include "cli/device/description.h"
#include "cli/device/device.h"
#include "frame/zelTagAPI.h"

#include <algorithm>
#include <fmt/format.h>
#include <nlohmann/json.hpp>
#include <span>

namespace zel::cli {

namespace {

constexpr int kUnits = 3;
constexpr int kSlots = 5;
constexpr std::size_t kSerialNumberSize = 32;
constexpr int kUncountedBits = 0xF0; // of a card type

struct Fact {
    const char* key;   // in JSON
    const char* title; // for people
    Json value;        // null: the reader has none
};

Json textOrNull(const std::string& text) { return text.empty() ? Json() : Json(text); }

Json numberOrNull(int number) { return number < 0 ? Json() : Json(number); }

// A reader that told no list counts as knowing every type.
Json cardTypeCount() {
    int known = 0;
    int asked = 0;
    for (int type = 1; type <= UINT16_MAX; ++type) {
        if ((type & kUncountedBits) != 0)
            continue;
        ++asked;
        known += IsCardTypeInList(static_cast<std::uint16_t>(type));
    }
    return known == asked ? Json() : Json(known);
}

Json versionWords() {
    Json words = Json::array();
    for (short unit = 0; unit < kUnits; ++unit)
        for (short slot = 0; slot < kSlots; ++slot)
            if (const unsigned word = GetFirmwareVersion(unit, slot))
                words.push_back(fmt::format("{:08X}", word));
    return words.empty() ? Json() : words;
}

// As text where it is one, else two digits a byte.
Json serialNumber() {
    const unsigned char* const bytes = getESN();
    if (!bytes)
        return {};
    const std::string all(bytes, bytes + kSerialNumberSize);
    const std::string text = all.substr(0, all.find('\0'));
    if (std::all_of(all.begin() + static_cast<std::ptrdiff_t>(text.size()), all.end(),
                    [](char byte) { return byte == 0; }) &&
        printable(text) == text)
        return textOrNull(text);
    std::string digits;
    for (const char byte : all)
        digits += fmt::format("{:02X}", static_cast<unsigned char>(byte));
    return digits;
}

Json filterName() {
    const char* const name = GetVidPidVendorName();
    return textOrNull(printable(name ? name : ""));
}

constexpr int kCounters = 4;

Json counters() {
    Json all = Json::array();
    for (int index = 0; index < kCounters; ++index)
        all.push_back(zelBandGetSystemInternalCount(index));
    return all;
}

std::vector<Fact> stripeFacts() {
    return {{"product", "product", activeProduct()},
            {"luid", "LUID", static_cast<std::uint16_t>(GetLUID())},
            {"device_id", "device ID", static_cast<std::uint16_t>(GetDID())},
            {"part_number", "part number", textOrNull(partNumber())},
            {"firmware_version", "firmware", textOrNull(activeFirmware().version)},
            {"uptime", "uptime", zelBandGetSystemUptime()},
            {"cards_read", "cards read", zelBandGetSystemCardsRead()},
            {"counters", "counters", counters()}};
}

std::vector<Fact> facts() {
    if (isStripe())
        return stripeFacts();
    const Firmware firmware = activeFirmware();
    return {{"product", "product", activeProduct()},
            {"filter_list", "filter list", filterName()},
            {"luid", "LUID", static_cast<std::uint16_t>(GetLUID())},
            {"device_id", "device ID", static_cast<std::uint16_t>(GetDID())},
            {"part_number", "part number", textOrNull(partNumber())},
            {"firmware_version", "firmware", textOrNull(firmware.version)},
            {"firmware_file", "firmware file", textOrNull(firmware.file)},
            {"version_words", "version words", versionWords()},
            {"configurations", "configurations", GetMaxConfig() + 1},
            {"card_types", "card types", cardTypeCount()},
            {"beeper_volume", "beeper volume", numberOrNull(GetBeeperVolume())},
            {"radio", "radio", numberOrNull(GetBTLEConfiguration())},
            {"serial_number", "serial number", serialNumber()}};
}

std::string shown(const Json& value) {
    if (value.is_null())
        return "-";
    if (value.is_string())
        return value.get<std::string>();
    if (!value.is_array())
        return value.dump();
    std::string text;
    for (const Json& word : value)
        text +=
            (text.empty() ? "" : " ") + (word.is_string() ? word.get<std::string>() : word.dump());
    return text;
}

class InfoCommand : public Command {
public:
    CommandText text() const override {
        return {"info", "Look", "Print all that one reader tells of itself", "zeltag info --sim"};
    }

    Outcome run(const Options& options, Output& output) override {
        const Connection connection(options, Need::Settings);
        if (connection.failure())
            return connection.failure();
        options.json ? printJson(output) : print(output);
        return {};
    }

private:
    static void print(Output& output) {
        output.line(fmt::format("{:15} {}", "name", nameAndPath(activeDevice())));
        for (const Fact& fact : facts())
            output.line(fmt::format("{:15} {}", fact.title, shown(fact.value)));
    }

    static void printJson(Output& output) {
        Json object = {{"device", toJson(activeDevice())}};
        for (const Fact& fact : facts())
            object[fact.key] = fact.value;
        output.object(object);
    }
};

} // namespace

std::unique_ptr<Command> command::info() { return std::make_unique<InfoCommand>(); }

} // namespace zel::cli
