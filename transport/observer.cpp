// SPDX-License-Identifier: MIT
// Keeps the observer and completes its events.
#include "transport/observer.h"

#include <sys/time.h>

namespace zel {

constinit Observer observer = {};

unsigned long long microsecondsNow() {
    timeval now = {};
    gettimeofday(&now, nullptr);
    constexpr unsigned long long kSecond = 1'000'000;
    return static_cast<unsigned long long>(now.tv_sec) * kSecond +
           static_cast<unsigned long long>(now.tv_usec);
}

void Observed::report(zelTraceKind kind, bool result, const void* bytes, long size) const {
    const zelTraceEvent event = {.kind = kind,
                                 .transport = transport_,
                                 .product = product_,
                                 .result = result ? 1 : 0,
                                 .device = device_,
                                 .bytes = static_cast<const unsigned char*>(bytes),
                                 .size = size,
                                 .began = began_,
                                 .ended = microsecondsNow()};
    observer.call(&event, observer.context);
}

} // namespace zel

void zelTagAPI_observe(zelObserver function, void* context) { zel::observer = {function, context}; }
