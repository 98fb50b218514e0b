// SPDX-License-Identifier: MIT
// Connects to the readers on USB, or to the simulated one.
#include "cli/connection.h"

#include "cli/device.h"
#include "cli/diagnosis.h"
#include "frame/zelTagAPI.h"
#include "sim/demo.h"

#include <fmt/format.h>

namespace zel::cli {

namespace {

Outcome installSimulator() {
    if (sim::installDemo())
        return {};
    return Failure{ExitCode::Failed, "the simulated reader can't be put in place of the real ones",
                   "a device is still open in this process", ""};
}

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

Outcome connect(const Options& options) {
    if (options.sim)
        if (auto failure = installSimulator())
            return failure;
    zeltag_USBDeviceConnect(ZELTAG_USB_VENDOR, ZELTAG_USB_PRODUCT, nullptr);
    if (GetDevCnt() == 0)
        return explainNoReader(systemReaders());
    return options.device ? choose(*options.device) : Outcome();
}

} // namespace

Connection::Connection(const Options& options) : failure_(connect(options)) {}

Connection::~Connection() { USBDisconnect(); }

} // namespace zel::cli
