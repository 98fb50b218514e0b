// SPDX-License-Identifier: MIT
// Chooses among a reader's configurations, writes them and reads them back.
#include "cli/device/configuration.h"

#include "cli/command/output.h"
#include "cli/device/device.h"
#include "cli/device/failures.h"
#include "frame/zelTagAPI.h"

#include <CLI/CLI.hpp>
#include <fmt/format.h>

namespace zel::cli {

namespace {

constexpr int kLastConfiguration = 10;
constexpr char kCheckCable[] = "check its cable, then look at `zeltag config show`";

} // namespace

bool isConfigurationRead() {
    const int active = GetActConfig();
    bool isRead = true;
    for (int index = 0; index <= GetMaxConfig(); ++index) {
        SetActConfig(static_cast<short>(index));
        sCfgFlags flags = {};
        isRead = GetFlags(&flags) == 1 && isRead;
    }
    SetActConfig(static_cast<short>(active));
    return isRead;
}

void addConfigurationOption(CLI::App& app, std::optional<int>& configuration) {
    app.add_option("--config", configuration, "Use configuration N of a reader that has several")
        ->option_text("N")
        ->type_name("N")
        ->check(CLI::Range(0, kLastConfiguration));
}

ChosenConfiguration::ChosenConfiguration(std::optional<int> configuration)
    : before_(GetActConfig()) {
    if (!configuration || SetActConfig(static_cast<short>(*configuration)) == 1)
        return;
    const Device device = activeDevice();
    const int highest = GetMaxConfig();
    failure_ = Failure{
        ExitCode::Usage, fmt::format("{} has no configuration {}", device.name, *configuration),
        highest == 0 ? "its only one is 0" : fmt::format("it has 0 to {}", highest), device.name};
}

ChosenConfiguration::~ChosenConfiguration() { SetActConfig(static_cast<short>(before_)); }

Outcome writeAndReadBack() {
    showProgress("writing to " + activeDevice().name + ", which takes a moment");
    if (WriteCfg() != 1)
        return deviceFailed("writing", kCheckCable);
    return readBack();
}

Outcome readBack() {
    return ReadCfg() == 1 ? Outcome() : deviceFailed("reading back", kCheckCable);
}

} // namespace zel::cli
