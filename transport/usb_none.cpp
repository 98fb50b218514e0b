// SPDX-License-Identifier: MIT
// USB on a platform without HID services: always ready, finds nothing.
#include "transport/usb_platform.h"

namespace {

int start() { return 1; }
void stop() {}
int list() { return 0; }
void ids(int, unsigned* vendor, unsigned* product) { *vendor = *product = 0; }
void* open(int, char*) { return nullptr; }
void unlist() {}
void close(void*) {}
int setFeature(void*, unsigned char, const unsigned char*, long) { return 0; }
int getFeature(void*, unsigned char, unsigned char*, long*) { return 0; }

constexpr UsbBackend kBackend = {start,  stop,  list,       ids,       open,
                                 unlist, close, setFeature, getFeature};

} // namespace

const UsbBackend& zel::noUsbBackend() { return kBackend; }
