// SPDX-License-Identifier: MIT
// Joins payloads with the report ID and the USB transport.
#include "family/tag/feature_report.h"

#include "base/wipe.h"
#include "frame/zelTagState.h"
#include "transport/usb_driver.h"

#include <algorithm>

namespace zel::tag {

namespace {
// Report ID 0, then the payload, which may be a piece of a key.
using Report = std::array<unsigned char, 1 + kPayloadSize>;

constexpr int kLength = static_cast<int>(kPayloadSize);
} // namespace

bool send(const Payload& payload) {
    Wiped<Report> report;
    std::copy(payload.begin(), payload.end(), report.area.begin() + 1);
    return UsbDriver_SendFR(kLength, iActDev, report.area.data()) != 0;
}

bool fetch(Payload& payload) {
    Wiped<Report> report;
    const bool received = UsbDriver_RecvFR(kLength, iActDev, report.area.data()) != 0;
    std::copy(report.area.begin() + 1, report.area.end(), payload.begin());
    return received;
}

Written write(const Payload& request, const Payload& data) {
    if (!send(request))
        return Written::No;
    return send(data) ? Written::Yes : Written::CommandOnly;
}

bool query(const Payload& request, Payload& reply) { return send(request) && fetch(reply); }

} // namespace zel::tag
