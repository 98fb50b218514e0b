// SPDX-License-Identifier: MIT
// Chooses the transport that the library looks on, and speaks for it.
#include "cli/device/place.h"

#include "cli/command/output.h"
#include "cli/device/diagnosis.h"
#include "cli/device/serial_line.h"
#include "cli/network/bridge.h"
#include "frame/zelTagAPI.h"
#include "sim/demo/bench.h"

#include <fmt/format.h>

namespace zel::cli {

namespace {

constexpr short kUsb = 0; // of SetDevTypeSrch()

Outcome installSimulator() {
    if (sim::installDemo())
        return {};
    return Failure{ExitCode::Failed, "the simulated reader can't be put in place of the real ones",
                   "a device is still open in this process", ""};
}

// The option was checked when it was parsed.
Endpoint bridgeOf(const Options& options) {
    return endpointIn(options.tcp).value_or(Endpoint{options.tcp, 0});
}

Outcome chooseUsb(bool isSimulated) {
    setDevicePlace({});
    SetDevTypeSrch(kUsb);
    return isSimulated ? installSimulator() : Outcome();
}

Outcome chooseLine(const Options& options) {
    setDevicePlace({"port", options.port});
    return useLine(options);
}

Outcome chooseBridge(const Options& options) {
    const Endpoint endpoint = bridgeOf(options);
    showProgress(fmt::format("connecting to {} port {}", endpoint.host, endpoint.port));
    Ipv4 address = {};
    if (auto failure = useBridge(endpoint, address))
        return failure;
    setDevicePlace({"address", fmt::format("{}:{}", asText(address), endpoint.port)});
    return {};
}

} // namespace

Outcome choosePlace(const Options& options) {
    zeltag_UseAsciiCommandProtocol(options.ascii ? 1 : 0);
    if (options.isUsb())
        return chooseUsb(options.sim);
    return options.port.empty() ? chooseBridge(options) : chooseLine(options);
}

std::string whatIsAwaited(const Options& options) {
    if (options.isUsb())
        return "reading the configuration of each reader";
    return fmt::format("asking for a reader {}, then for its configuration; it takes some seconds",
                       options.port.empty() ? "behind " + options.tcp : "on " + lineText(options));
}

Failure explainNothing(const Options& options) {
    if (options.isUsb())
        return explainNoReader(systemReaders());
    return options.port.empty() ? explainSilentBridge(bridgeOf(options)) : explainNoLine(options);
}

std::string unreadableHint(const Device& device) {
    return device.place.key.empty()
               ? "unplug it and plug it in again, then try `zeltag list`"
               : "try again; with --ascii where it speaks lines of text, without where it doesn't";
}

} // namespace zel::cli
