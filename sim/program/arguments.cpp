// SPDX-License-Identifier: MIT
// The subcommands and their options.
#include "sim/program/arguments.h"

#include "frame/zelTagAPI.h"
#include "sim/bridge/address_text.h"
#include "sim/program/commands.h"
#include "sim/scene/kinds.h"
#include "sim/scene/place.h"

#include <algorithm>
#include <charconv>
#include <functional>
#include <string_view>

namespace zel::sim {

namespace {

constexpr std::size_t kHelpColumn = 28;
// An option whose text `read` understands, or isn't what is demanded.
void addText(CLI::App& app, const std::string& option, const std::string& form,
             const std::string& help, const std::string& demand,
             const std::function<bool(const std::string&)>& read) {
    const auto take = [=](const std::string& text) {
        if (!read(text))
            throw CLI::ValidationError(option, "\"" + text + "\" is " + demand);
    };
    app.add_option_function<std::string>(option, take, help)->option_text(form)->type_name(form);
}

template <class Address> bool take(const std::optional<Address>& told, Address& into) {
    into = told.value_or(into);
    return told.has_value();
}

// "10001" or "127.0.0.2:10001"
bool takeEndpoint(const std::string& text, BridgeOptions& bridge) {
    if (take(ipv4In(text), bridge.address))
        return true;
    const std::size_t colon = text.rfind(':');
    const std::string_view port =
        std::string_view(text).substr(colon == std::string::npos ? 0 : colon + 1);
    if (colon != std::string::npos && !take(ipv4In(text.substr(0, colon)), bridge.address))
        return false;
    const auto [end, error] = std::from_chars(port.data(), port.data() + port.size(), bridge.port);
    return error == std::errc() && end == port.data() + port.size();
}

void addRun(CLI::App& app, Arguments& arguments) {
    CLI::App& sub =
        addCommand(app, arguments, "run",
                   "Simulate the devices of a scenario, or a demonstration reader", runCommand);
    sub.add_option("SCENARIO", arguments.scenario, "A file such as examples/scenario.toml")
        ->option_text(" ");
    addSocket(sub, arguments, "Where programs and commands find it");
    const auto bridge = [&arguments](const std::string& text) {
        arguments.wantsBridge = true;
        return takeEndpoint(text, arguments.bridge);
    };
    addText(sub, "--bridge", "ADDR[:PORT]",
            "Also a network bridge, with the device at = \"bridge\" or the first proximity reader "
            "behind it",
            "no address such as 127.0.0.2 or 127.0.0.2:10001, and no port", bridge);
    sub.add_flag("--uhid", arguments.wantsUhid,
                 "Also HID devices that every program sees; needs the kernel's uhid and leave to "
                 "use it");
    sub.add_option("--lifeline", arguments.lifeline)->group("");
    sub.footer("A command behind -- runs with libzelsim.so preloaded, and its exit code is the\n"
               "program's. Its simulator is its own, unless --socket is given.\n\n"
               "Examples:\n  zelsim run examples/scenario.toml -- zeltag list\n"
               "  zelsim run --socket /tmp/mine.sock");
}

Names bridgeFaults() {
    Names names = faultsAt("bridge", *findKind("zelTag")->make({}));
    std::erase(names, rowOf(FaultKind::None).name);
    return names;
}

bool takeFault(const std::string& name, Arguments& arguments) {
    const Names names = bridgeFaults();
    arguments.fault = std::ranges::find(names, name) == names.end() ? nullptr : findFault(name);
    return arguments.fault != nullptr;
}

void addBridge(CLI::App& app, Arguments& arguments) {
    CLI::App& sub = addCommand(app, arguments, "bridge",
                               "Simulate a network bridge with a reader behind it", bridgeCommand);
    BridgeOptions& bridge = arguments.bridge;
    sub.add_option("SCENARIO", arguments.scenario,
                   "A file whose device at \"bridge\" it is; a demonstration reader when left out")
        ->option_text(" ");
    addText(sub, "--listen", "A.B.C.D", "The IPv4 address of the bridge; 127.0.0.1 when left out",
            "no host's address such as 127.0.0.1",
            [&bridge](const std::string& text) { return take(ipv4In(text), bridge.address); });
    sub.add_option("--port", bridge.port, "Its TCP port, 0 for any free one; 10001 when left out")
        ->option_text("N")
        ->type_name("N")
        ->check(CLI::Range(0, 65535));
    addText(sub, "--mac", "XX:XX:XX:XX:XX:XX",
            "Its MAC address; hosts know bridges by 00:20:4A and 00:1D:4B",
            "no MAC address such as 00:20:4A:00:00:07",
            [&bridge](const std::string& text) { return take(macIn(text), bridge.mac); });
    sub.add_flag_callback(
        "--no-discovery", [&bridge] { bridge.servesDiscovery = bridge.servesMacQuery = false; },
        "Leave the UDP ports 11000 and 30718 alone");
    const std::string faults = listed(bridgeFaults());
    addText(sub, "--fault", "KIND", "What goes wrong: " + faults, "none of " + faults,
            [&arguments](const std::string& name) { return takeFault(name, arguments); });
    sub.footer("Example:\n  zelsim bridge --listen 127.0.0.2 --fault dribble");
}

void addCheck(CLI::App& app, Arguments& arguments) {
    CLI::App& sub = addCommand(app, arguments, "check", "Check a scenario", checkCommand);
    sub.add_option("SCENARIO", arguments.scenario, "The file")->required()->option_text(" ");
}

} // namespace

std::vector<std::string> takeProgram(int& argc, const char* const* argv) {
    std::vector<std::string> program;
    if (argc < 2 || argv[1] != std::string_view("run"))
        return program;
    const char* const* const end = argv + argc;
    const char* const* const dashes = std::find(argv, end, std::string_view("--"));
    if (dashes == end)
        return program;
    program.assign(dashes + 1, end);
    argc = static_cast<int>(dashes - argv);
    return program;
}

std::unique_ptr<CLI::App> describeProgram(Arguments& arguments) {
    auto app = std::make_unique<CLI::App>(
        "Readers, stripe readers, presence sensors and bridges without hardware.", "zelsim");
    app->set_help_flag("--help,-h", "Print this help");
    app->set_version_flag("--version",
                          "zelsim " + std::to_string(ZELTAGAPI_VERSION_MAJOR) + "." +
                              std::to_string(ZELTAGAPI_VERSION_MINOR) + "." +
                              std::to_string(ZELTAGAPI_VERSION_BUILD),
                          "Print the version");
    app->get_formatter()->column_width(kHelpColumn);
    app->require_subcommand(1);
    addRun(*app, arguments);
    addBridge(*app, arguments);
    addControlCommands(*app, arguments);
    addCheck(*app, arguments);
    app->footer(
        "Examples:\n  zelsim run examples/scenario.toml -- zeltag list\n  zelsim tap 26:3512");
    return app;
}

} // namespace zel::sim
