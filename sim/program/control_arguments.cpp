// SPDX-License-Identifier: MIT
// The subcommands that become requests to a simulator that runs.
#include "sim/program/commands.h"

#include <string_view>

namespace zel::sim {

namespace {

constexpr int kMostInches = 73;

// A command that sends {"do": NAME} and what its options add to it.
CLI::App& addControl(CLI::App& app, Arguments& arguments, const std::string& name,
                     const std::string& help, Command command = controlCommand) {
    CLI::App& sub = addCommand(app, arguments, name, help, command);
    addSocket(sub, arguments, "The simulator's; else that of ZELSIM_SOCKET, else the usual one");
    sub.preparse_callback([&arguments, name](std::size_t) { arguments.request["do"] = name; });
    return sub;
}

CLI::App& addDeed(CLI::App& app, Arguments& arguments, const std::string& name,
                  const std::string& help) {
    CLI::App& sub = addControl(app, arguments, name, help);
    sub.add_option_function<std::string>(
           "--device",
           [&arguments](const std::string& device) { arguments.request["device"] = device; },
           "The device, where several may be meant")
        ->option_text("NAME");
    return sub;
}

template <class Value>
CLI::Option* addKey(CLI::App& sub, Arguments& arguments, const std::string& option,
                    const std::string& key, const std::string& help) {
    return sub.add_option_function<Value>(
        option, [&arguments, key](const Value& value) { arguments.request[key] = value; }, help);
}

void addTap(CLI::App& app, Arguments& arguments) {
    CLI::App& sub = addDeed(app, arguments, "tap", "Put a card into a proximity reader's field");
    addKey<std::string>(sub, arguments, "CARD", "card",
                        "FACILITY:NUMBER of 26 bits, 0xID/BITS, or a card of the scenario")
        ->required()
        ->option_text(" ");
    addKey<double>(sub, arguments, "--for", "for", "Take it away after so long")
        ->option_text("SECONDS");
    sub.footer("Examples:\n  zelsim tap 26:3512\n  zelsim tap 0x123456789/37 --for 2");
}

// What begins as a track is one; anything else names a card.
void takeSwipe(const std::vector<std::string>& texts, Json& request) {
    const bool isTrack = texts.size() > 1 || texts[0].starts_with('%') || texts[0].starts_with(';');
    if (isTrack)
        request["tracks"] = texts;
    else
        request["card"] = texts[0];
}

void addSwipe(CLI::App& app, Arguments& arguments) {
    CLI::App& sub = addDeed(app, arguments, "swipe", "Swipe a card with a magnetic stripe");
    sub.add_option_function<std::vector<std::string>>(
           "TRACK", [&arguments](const auto& texts) { takeSwipe(texts, arguments.request); },
           "Its tracks, first track first, or a card of the scenario")
        ->required()
        ->expected(1, 3)
        ->option_text("...");
    sub.footer("Example:\n  zelsim swipe '%B0000^SIMULATED?' ';0000=11?'");
}

void addFail(CLI::App& app, Arguments& arguments) {
    CLI::App& sub = addDeed(app, arguments, "fail", "Let something go wrong");
    addKey<std::string>(sub, arguments, "WHAT", "what", "The fault; none ends those that last")
        ->required()
        ->option_text(" ");
    addKey<int>(sub, arguments, "--count", "count", "So many times; 1 when left out")
        ->option_text("N");
    addKey<int>(sub, arguments, "--after", "after", "Behind so many good ones")->option_text("N");
    std::string faults = "Faults:\n";
    for (const FaultRow& row : allFaults())
        faults += "  " + std::string(row.name) +
                  std::string(18 - std::string_view(row.name).size(), ' ') + row.meaning + "\n";
    sub.footer(faults + "\nExample:\n  zelsim fail next-write --count 6");
}

void addPlace(CLI::App& app, Arguments& arguments) {
    CLI::App& sub = addDeed(app, arguments, "place", "Place an object before a presence sensor");
    addKey<int>(sub, arguments, "INCHES", "inches", "Its distance; 0 takes it away")
        ->required()
        ->option_text(" ")
        ->check(CLI::Range(0, kMostInches));
}

} // namespace

CLI::App& addCommand(CLI::App& app, Arguments& arguments, const std::string& name,
                     const std::string& help, Command command) {
    CLI::App& sub = *app.add_subcommand(name, help);
    sub.add_flag("--json", arguments.json, "Print what it tells as JSON");
    sub.callback([&arguments, command] { arguments.command = command; });
    return sub;
}

void addSocket(CLI::App& sub, Arguments& arguments, const std::string& help) {
    sub.add_option("--socket", arguments.socket, help)->option_text("PATH");
}

void addControlCommands(CLI::App& app, Arguments& arguments) {
    addTap(app, arguments);
    addDeed(app, arguments, "remove", "Take the card away");
    addSwipe(app, arguments);
    addPlace(app, arguments);
    addFail(app, arguments);
    addDeed(app, arguments, "unplug", "Pull a device's plug");
    addDeed(app, arguments, "plug", "Plug a device in again");
    addControl(app, arguments, "state", "Show the devices: cards, LEDs, relays, settings",
               stateCommand)
        .add_flag("--settings", arguments.showsSettings,
                  "Also the settings of each device, which --json shows in any case");
    addControl(app, arguments, "trace", "Show what went over the wire since the last trace",
               traceCommand);
    addControl(app, arguments, "stop", "End the simulator");
}

} // namespace zel::sim
