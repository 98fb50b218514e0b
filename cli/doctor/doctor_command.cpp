// SPDX-License-Identifier: MIT
// `zeltag doctor`: why a reader can't be used, and what to do.
#include "cli/command/command.h"
#include "cli/device/configuration.h"
#include "cli/device/connection.h"
#include "cli/device/device.h"
#include "cli/device/place.h"
#include "cli/doctor/line_checks.h"
#include "cli/doctor/usb_checks.h"
#include "cli/network/bridge.h"
#include "frame/zelTagAPI.h"

#include <CLI/CLI.hpp>
#include <cstdlib>
#include <fmt/format.h>
#include <nlohmann/json.hpp>
#include <string_view>

namespace zel::cli {

namespace {

void append(Findings& all, const Findings& more) {
    all.insert(all.end(), more.begin(), more.end());
}

Finding checkVersions() {
    short major = 0;
    short minor = 0;
    short build = 0;
    GetLibVersion(&major, &minor, &build);
    const std::string library = fmt::format("{}.{}.{}", major, minor, build);
    const std::string header = fmt::format("{}.{}.{}", ZELTAGAPI_VERSION_MAJOR,
                                           ZELTAGAPI_VERSION_MINOR, ZELTAGAPI_VERSION_BUILD);
    if (library == header)
        return ok("version", "library and program are both " + library);
    const std::string text =
        fmt::format("the library is {}, the program was made for {}", library, header);
    constexpr char kFix[] = "install both from one release; `ldd $(command -v zeltag)` shows which "
                            "library is taken";
    return major == ZELTAGAPI_VERSION_MAJOR ? warning("version", text, kFix)
                                            : fault("version", ExitCode::Failed, text, kFix);
}

// The place in the network that the user named, a step after the other.
Findings checkBridge(const Options& options) {
    const auto endpoint = endpointIn(options.tcp).value_or(Endpoint{options.tcp, 0});
    const auto found = addressOf(endpoint.host);
    if (const auto* const failure = std::get_if<Failure>(&found))
        return {fault("address", *failure)};
    const std::string told = asText(std::get<Ipv4>(found));
    Findings findings = {ok("address", endpoint.host == told ? told + " is an address"
                                                             : endpoint.host + " is " + told)};
    Ipv4 address = {};
    if (const auto failure = useBridge(endpoint, address))
        findings.push_back(fault("connection", *failure));
    else
        findings.push_back(
            ok("connection", fmt::format("port {} takes connections", endpoint.port)));
    return findings;
}

// Readers and lines then come from it, and those of the system aren't seen.
bool hasPreloadedSimulator() {
    const char* const preloaded = std::getenv("LD_PRELOAD");
    return preloaded && std::string_view(preloaded).find("libzelsim") != std::string_view::npos;
}

Findings checkPlace(const Options& options) {
    if (options.sim || (options.tcp.empty() && hasPreloadedSimulator()))
        return {ok("simulator", "a simulated reader needs neither a driver nor permission")};
    if (!options.port.empty())
        return checkLine(options.port, {});
    return options.tcp.empty() ? checkUsb({}) : checkBridge(options);
}

Finding checkActive() {
    const Device device = activeDevice();
    const std::string name = nameAndPath(device) + ", a " + activeProduct() + ",";
    if ((isTag() || isStripe()) && checkSettings())
        return fault("answer", ExitCode::Failed, name + " doesn't tell its settings",
                     unreadableHint(device));
    const auto time = pingTime();
    if (!time)
        return fault("answer", ExitCode::Failed, name + " doesn't answer",
                     "unplug it and plug it in again");
    return ok("answer", fmt::format("{} answers in {} ms", name, *time));
}

Findings checkAnswers(const Options& options) {
    const Connection connection(options, Need::Each);
    if (connection.failure())
        return {fault("answer", *connection.failure())};
    if (options.device)
        return {checkActive()};
    Findings findings;
    for (int index = 0; index < GetDevCnt(); ++index) {
        SetActDev(static_cast<short>(index));
        findings.push_back(checkActive());
    }
    return findings;
}

class DoctorCommand : public Command {
public:
    CommandText text() const override {
        return {"doctor", "Diagnose", "Find out why a reader can't be used, and what to do",
                "zeltag doctor --port /dev/ttyUSB0"};
    }

    Outcome run(const Options& options, Output& output) override {
        Findings findings = {checkVersions()};
        append(findings, checkPlace(options));
        if (!hasFault(findings))
            append(findings, checkAnswers(options));
        return options.json ? tellJson(findings, output) : tell(findings, output);
    }

private:
    static Outcome tell(const Findings& findings, Output& output) {
        print(findings, output);
        const Outcome outcome = outcomeOf(findings);
        return outcome ? alreadyTold(outcome->exit) : outcome;
    }

    // The failure is told here: one object holds all.
    static Outcome tellJson(const Findings& findings, Output& output) {
        Json object = {{"findings", toJson(findings)}};
        const Outcome outcome = outcomeOf(findings);
        if (outcome)
            object.update(Json::parse(asJson(*outcome)));
        output.object(object);
        return outcome ? alreadyTold(outcome->exit) : outcome;
    }
};

} // namespace

std::unique_ptr<Command> command::doctor() { return std::make_unique<DoctorCommand>(); }

} // namespace zel::cli
