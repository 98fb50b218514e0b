// SPDX-License-Identifier: MIT
// Connects to the readers and chooses among them.
#include "cli/device/connection.h"

#include "cli/command/output.h"
#include "cli/device/configuration.h"
#include "cli/device/device.h"
#include "cli/device/failures.h"
#include "cli/device/place.h"
#include "frame/zelTagAPI.h"

#include <fmt/format.h>

namespace zel::cli {

namespace {

bool gIsAllRead = false; // the connect read each device's configuration

std::string presentDevices() {
    const int count = GetDevCnt();
    return count == 1 ? fmt::format("the only one is 0, {}", activeDevice().name)
                      : fmt::format("there are 0 to {}", count - 1);
}

Outcome choose(int device) {
    if (SetActDev(static_cast<short>(device)) != 0)
        return {};
    return Failure{ExitCode::NoDevice,
                   fmt::format("there is no reader {}: {}", device, presentDevices()),
                   "`zeltag list` shows them", ""};
}

Failure severalReaders() {
    std::string names;
    for (int index = 0; index < GetDevCnt(); ++index) {
        SetActDev(static_cast<short>(index));
        names += fmt::format("{}{} is {}", index == 0 ? "" : ", ", index, activeDevice().name);
    }
    return {ExitCode::Usage, "there are several readers: " + names,
            "choose one with --device, such as --device 0", ""};
}

Failure unreadable() {
    const Device device = activeDevice();
    return {ExitCode::Failed, "the configuration of " + device.name + " can't be read",
            unreadableHint(device), device.name};
}

// The connect ends at the first configuration that it can't read; the devices behind it are asked
// here. A reader of several configurations that wasn't the first tells them all on a second read.
// Nothing marks a magnetic stripe reader that couldn't be read.
bool hasSettings() {
    if (isStripe())
        return gIsAllRead || ReadCfg() == 1;
    return isConfigurationRead() || (ReadCfg() == 1 && isConfigurationRead());
}

void warnOfUnreadable() {
    for (int index = 0; index < GetDevCnt(); ++index) {
        SetActDev(static_cast<short>(index));
        if ((isTag() || isStripe()) && !hasSettings())
            warn("warning: " + asLine(unreadable()));
    }
    SetActDev(0);
}

bool needsChoice(Need need) { return need == Need::Choice || need == Need::Change; }

bool needsSettings(Need need) { return need == Need::Settings || need == Need::Change; }

bool warnsOfUnreadable(Need need) { return need == Need::Presence || need == Need::Choice; }

Outcome connect(const Options& options, Need need) {
    if (auto failure = choosePlace(options))
        return failure;
    showProgress(whatIsAwaited(options));
    gIsAllRead = USBConnect(nullptr) == 1;
    if (GetDevCnt() == 0)
        return explainNothing(options);
    if (needsChoice(need) && !options.device && GetDevCnt() > 1)
        return severalReaders();
    if (!gIsAllRead && warnsOfUnreadable(need))
        warnOfUnreadable();
    if (options.device)
        if (auto failure = choose(*options.device))
            return failure;
    return needsSettings(need) ? checkSettings() : Outcome();
}

} // namespace

Outcome checkSettings() {
    if (!isTag() && !isStripe())
        return wrongProduct("its settings can't be shown");
    return hasSettings() ? Outcome() : unreadable();
}

Connection::Connection(const Options& options, Need need) : failure_(connect(options, need)) {}

Connection::~Connection() { USBDisconnect(); }

} // namespace zel::cli
