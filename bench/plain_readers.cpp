// SPDX-License-Identifier: MIT
// The backend's functions.
#include "bench/plain_readers.h"

#include "frame/zelTagAPI.h"
#include "transport/usb_driver.h"

#include <cstdint>
#include <cstring>

namespace zel::bench {

namespace {

constexpr unsigned char kPage = 0x85;
constexpr unsigned char kOldHeader = 12;

int attached = 0;
ExchangeCount count = {};
unsigned char lastCommand = 0;

void tellIds(int, unsigned* vendor, unsigned* product) {
    *vendor = ZELTAG_USB_VENDOR;
    *product = ZELTAG_USB_PRODUCT;
}

void* open(int index, char* name) {
    std::memcpy(name, "plain", sizeof "plain");
    return reinterpret_cast<void*>(static_cast<std::intptr_t>(index) + 1);
}

int send(void*, unsigned char, const unsigned char* data, long) {
    ++count.sends;
    lastCommand = data[0];
    return 1;
}

int get(void*, unsigned char, unsigned char* data, long*) {
    ++count.gets;
    data[0] = lastCommand == kPage ? kOldHeader : 0;
    return 1;
}

constexpr UsbBackend kReaders = {
    [] { return 1; }, [] {}, [] { return attached; }, tellIds, open, [] {}, [](void*) {}, send, get,
};

} // namespace

ExchangeCount exchangeCount() { return count; }

const UsbBackend& plainReaders() { return kReaders; }

void attachPlainReaders(int number) { attached = number; }

bool connectPlainReaders(int number) {
    USBDisconnect();
    if (UsbDriver_UseBackend(&kReaders) != 1)
        return false;
    attachPlainReaders(number);
    SetDevTypeSrch(0);
    return USBConnect(nullptr) == 1 && GetDevCnt() == number;
}

} // namespace zel::bench
