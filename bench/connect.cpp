// SPDX-License-Identifier: MIT
// What a whole connect costs over a transport that does nothing: exchanges, and time of the
// library's own. Prints `readers sends gets least microseconds` for 1, 16 and 127 plain readers.
#include "frame/zelTagAPI.h"
#include "transport/usb_backend.h"

#include <chrono>
#include <cstdio>
#include <cstring>

namespace {

constexpr int kRounds = 20;
constexpr unsigned char kPage = 0x85;
constexpr unsigned char kOldHeader = 12;

// A plain reader's reports: ID pair, four blocks, twelve pages of field data, 8 + 3 + 3 characters
// of texts, and the question whether it holds several configurations, which the connect asks device
// 0 once more.
constexpr int kLeastEach = 1 + 4 + 12 + 14 + 1;
constexpr int kLeastOnce = 1;

int readers = 0;
long sends = 0;
long gets = 0;
unsigned char command[8] = {};

const UsbBackend kReaders = {
    [] { return 1; },
    [] {},
    [] { return readers; },
    [](int, unsigned* vendor, unsigned* product) {
        *vendor = ZELTAG_USB_VENDOR;
        *product = ZELTAG_USB_PRODUCT;
    },
    [](int index, char* name) {
        std::snprintf(name, 512, "bench:%d", index);
        return reinterpret_cast<void*>(static_cast<std::intptr_t>(index) + 1);
    },
    [] {},
    [](void*) {},
    [](void*, unsigned char, const unsigned char* data, long size) {
        std::memcpy(command, data, static_cast<std::size_t>(size));
        ++sends;
        return 1;
    },
    [](void*, unsigned char, unsigned char* data, long*) {
        data[0] = command[0] == kPage ? kOldHeader : 0;
        ++gets;
        return 1;
    },
};

double connectMicroseconds() {
    const auto start = std::chrono::steady_clock::now();
    USBConnect(nullptr);
    const auto end = std::chrono::steady_clock::now();
    return std::chrono::duration<double, std::micro>(end - start).count();
}

bool measure(int count) {
    readers = count;
    double best = 0;
    for (int round = 0; round < kRounds; ++round) {
        sends = gets = 0;
        const double time = connectMicroseconds();
        best = round == 0 || time < best ? time : best;
        const bool complete = GetDevCnt() == count;
        USBDisconnect();
        if (!complete)
            return false;
    }
    std::printf("%d %ld %ld %d %.1f\n", count, sends, gets, kLeastEach * count + kLeastOnce, best);
    return true;
}

} // namespace

int main() {
    if (UsbDriver_UseBackend(&kReaders) != 1)
        return 1;
    SetDevTypeSrch(0);
    return measure(1) && measure(16) && measure(127) ? 0 : 1;
}
