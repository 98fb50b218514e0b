// SPDX-License-Identifier: MIT
// The options of zelsim-bridge.
#include "sim/bridge/arguments.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <charconv>
#include <climits>
#include <cstdio>
#include <functional>
#include <string_view>

namespace zel::sim {

namespace {

constexpr int kWrongUsage = 64;
constexpr std::uint16_t kDefaultPort = 10001;
constexpr std::size_t kHelpColumn = 28;
constexpr std::size_t kWithinAnAnswer = 3; // bytes; the shortest answer with data has four

constexpr FaultKind kFaults[] = {
    {"dribble", [](Bridge& bridge, TagStream&) { bridge.streamFaults().dribble = 1; }},
    {"silence", [](Bridge& bridge, TagStream&) { bridge.streamFaults().silent = true; }},
    {"close",
     [](Bridge& bridge, TagStream&) { bridge.streamFaults().endsAfter = kWithinAnAnswer; }},
    {"reset",
     [](Bridge& bridge, TagStream&) {
         bridge.streamFaults().endsAfter = kWithinAnAnswer;
         bridge.streamFaults().endsWithReset = true;
     }},
    {"wrong-status",
     [](Bridge&, TagStream& reader) { reader.fail(StreamFault::WrongStatus, INT_MAX); }},
    {"wrong-procedure",
     [](Bridge&, TagStream& reader) { reader.fail(StreamFault::WrongProcedureByte, INT_MAX); }},
    {"short-data",
     [](Bridge&, TagStream& reader) { reader.fail(StreamFault::ShortData, INT_MAX); }},
    {"garbage", [](Bridge&, TagStream& reader) { reader.fail(StreamFault::Garbage, INT_MAX); }},
};

const FaultKind* findFault(const std::string& name) {
    const auto* const found = std::ranges::find(kFaults, name, &FaultKind::name);
    return found == std::end(kFaults) ? nullptr : found;
}

std::string faultNames() {
    std::string names;
    for (const FaultKind& kind : kFaults)
        names += (names.empty() ? "" : ", ") + std::string(kind.name);
    return names;
}

// Reads as many numbers as the array has, with the separator between them.
template <std::size_t kCount>
bool parseBytes(std::string_view text, char separator, int base,
                std::array<std::uint8_t, kCount>& bytes) {
    const char* at = text.data();
    const char* const end = at + text.size();
    for (std::size_t i = 0; i < kCount; ++i) {
        if (i > 0 && (at == end || *at++ != separator))
            return false;
        const auto [next, error] = std::from_chars(at, end, bytes[i], base);
        if (error != std::errc())
            return false;
        at = next;
    }
    return at == end;
}

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

void addNetwork(CLI::App& app, BridgeOptions& bridge) {
    addText(app, "--listen", "A.B.C.D", "The IPv4 address of the bridge; 127.0.0.1 when left out",
            "no host's address such as 127.0.0.1", [&bridge](const std::string& text) {
                return parseBytes(text, '.', 10, bridge.address) && bridge.address != Ipv4Address{};
            });
    app.add_option("--port", bridge.port, "Its TCP port, 0 for any free one; 10001 when left out")
        ->option_text("N")
        ->type_name("N")
        ->check(CLI::Range(0, 65535));
    addText(app, "--mac", "XX:XX:XX:XX:XX:XX",
            "Its MAC address; hosts know bridges by 00:20:4A and 00:1D:4B",
            "no MAC address such as 00:20:4A:00:00:07",
            [&bridge](const std::string& text) { return parseBytes(text, ':', 16, bridge.mac); });
    app.add_flag_callback(
        "--no-discovery", [&bridge] { bridge.servesDiscovery = bridge.servesMacQuery = false; },
        "Leave the UDP ports 11000 and 30718 alone");
}

} // namespace

std::optional<BridgeArguments::End> BridgeArguments::parse(int argc, const char* const* argv) {
    CLI::App app("A simulated reader behind a simulated network bridge.", "zelsim-bridge");
    bridge.port = kDefaultPort;
    // Also what is wrong with a command line that can't be parsed is told as JSON.
    json = std::find(argv, argv + argc, std::string_view("--json")) != argv + argc;
    app.set_help_flag("--help,-h", "Print this help");
    app.get_formatter()->column_width(kHelpColumn);
    addNetwork(app, bridge);
    addText(app, "--fault", "KIND", "What goes wrong: " + faultNames(), "none of " + faultNames(),
            [this](const std::string& name) { return (fault = findFault(name)) != nullptr; });
    app.add_flag("--json", json, "Print what it tells as JSON");
    app.footer("Example:\n  zelsim-bridge --listen 127.0.0.2 --fault dribble");
    try {
        app.parse(argc, argv);
    } catch (const CLI::CallForHelp&) {
        return End{0, app.help()};
    } catch (const CLI::ParseError& stop) {
        return End{kWrongUsage, stop.what()};
    }
    return {};
}

std::string toText(const Ipv4Address& address) {
    char text[16];
    std::snprintf(text, sizeof text, "%d.%d.%d.%d", address[0], address[1], address[2], address[3]);
    return text;
}

std::string toText(const MacAddress& mac) {
    char text[18];
    std::snprintf(text, sizeof text, "%02X:%02X:%02X:%02X:%02X:%02X", mac[0], mac[1], mac[2],
                  mac[3], mac[4], mac[5]);
    return text;
}

} // namespace zel::sim
