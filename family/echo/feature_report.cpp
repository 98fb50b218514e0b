// SPDX-License-Identifier: MIT
// Joins payloads with the report ID and the pause that the sensor needs.
#include "family/echo/feature_report.h"

#include "base/pause.h"
#include "frame/zelTagState.h"
#include "transport/usb_driver.h"

#include <algorithm>
#include <unistd.h>

namespace zel::echo {

namespace {
using Report = std::array<unsigned char, 1 + std::tuple_size_v<Payload>>;

constexpr int kLength = std::tuple_size_v<Payload>;
constexpr useconds_t kDataPause = 250'000; // µs
} // namespace

bool send(const Payload& payload) {
    Report report = {};
    std::copy(payload.begin(), payload.end(), report.begin() + 1);
    return UsbDriver_SendFR(kLength, iActDev, report.data()) != 0;
}

bool fetch(Payload& payload) {
    Report report = {};
    const bool received = UsbDriver_RecvFR(kLength, iActDev, report.data()) != 0;
    std::copy(report.begin() + 1, report.end(), payload.begin());
    return received;
}

void pauseForData() { pauseFor(kDataPause); }

bool query(const Payload& request, Payload& reply) {
    if (!send(request))
        return false;
    pauseForData();
    return fetch(reply);
}

bool write(const Payload& request, const Payload& data) {
    if (!send(request))
        return false;
    pauseForData();
    return send(data);
}

} // namespace zel::echo
