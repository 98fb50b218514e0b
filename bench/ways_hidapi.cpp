// SPDX-License-Identifier: MIT
// The same read and the same scan by hidapi.
#include "bench/standin.h"
#include "bench/ways.h"
#include "frame/zelTagAPI.h"

#include <hidapi.h>

namespace zel::bench {

namespace {

hid_device* device = nullptr;

bool openDevice() {
    device = hid_init() == 0 ? hid_open_path("/dev/hidraw0") : nullptr;
    return device != nullptr;
}

void closeDevice() {
    hid_close(device);
    hid_exit();
}

bool query(unsigned char command, unsigned char* reply) {
    const unsigned char request[kReportSize] = {0, command};
    return hid_send_feature_report(device, request, sizeof request) >= 0 &&
           hid_get_feature_report(device, reply, kReportSize) >= 0;
}

int readByHidapi() {
    unsigned char id[kReportSize] = {};
    unsigned char bits[kReportSize] = {};
    const bool isRead = query(kIdCommand, id) && query(kBitCountCommand, bits);
    return isRead && isStandinCard(id + 1) ? bits[1] : 0;
}

bool start() { return hid_init() == 0; }

int scanByHidapi() {
    hid_device_info* const list = hid_enumerate(ZELTAG_USB_VENDOR, ZELTAG_USB_PRODUCT);
    int readers = 0;
    for (const hid_device_info* entry = list; entry; entry = entry->next)
        ++readers;
    hid_free_enumeration(list);
    return readers;
}

void finish() { hid_exit(); }

constexpr Way kWays[] = {
    {"read-by-hidapi", openDevice, readByHidapi, closeDevice},
    {"scan-by-hidapi", start, scanByHidapi, finish},
};

} // namespace

std::span<const Way> hidapiWays() { return kWays; }

} // namespace zel::bench
