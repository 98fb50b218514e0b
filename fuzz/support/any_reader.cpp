// SPDX-License-Identifier: MIT
// A USB backend without any device behind it.
#include "fuzz/support/any_reader.h"

#include "transport/usb_backend.h"

#include <cstring>
#include <memory>

namespace zel::fuzz {

namespace {

constexpr std::uint8_t kNoAnswer = 255;
constexpr std::uint8_t kFewestFailures = 128;
constexpr int kFailures = 8;

Input* replies = nullptr;
int failingSends = 0;

int start() { return 1; }
void stop() {}
int list() { return 0; }
void ids(int, unsigned* vendor, unsigned* product) { *vendor = *product = 0; }
void* open(int, char*) { return nullptr; }
void unlist() {}
void close(void*) {}

int setFeature(void*, unsigned char, const unsigned char*, long) {
    if (failingSends == 0)
        return 1;
    --failingSends;
    return 0;
}

int getFeature(void*, unsigned char, unsigned char* data, long* size) {
    if (replies->isEmpty())
        return 0;
    const std::uint8_t fate = replies->byte();
    if (fate == kNoAnswer)
        return 0;
    if (fate >= kFewestFailures)
        failingSends = fate % kFailures + 1;
    else if (fate != 0)
        *size = std::min<long>(*size, fate);
    *size = static_cast<long>(replies->fill({data, static_cast<std::size_t>(*size)}));
    return 1;
}

constexpr UsbBackend kBackend = {start,  stop,  list,       ids,       open,
                                 unlist, close, setFeature, getFeature};

void* handle() { return &replies; }

// The record as the library holds it before any device.
const tsDevDat& clearRecord() {
    static const auto record = std::make_unique<tsDevDat>(DevDat[0]);
    return *record;
}

bool installBackend() { return UsbDriver_UseBackend(&kBackend) != 0; }

} // namespace

tsDevDat& plugAnyReader(std::uint32_t product, Input& answers) {
    static const bool isInstalled = installBackend();
    require(isInstalled);
    replies = &answers;
    failingSends = 0;
    std::memcpy(&DevDat[0], &clearRecord(), sizeof DevDat[0]);
    DevDat[0].hDev = handle();
    DevDat[0].iProduct = product;
    iActDev = 0;
    iDevsFnd = 1;
    return DevDat[0];
}

void failFirstSend() { failingSends = kFailures; }

} // namespace zel::fuzz
