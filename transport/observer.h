// SPDX-License-Identifier: MIT
// Tells an application's observer of what a transport did.
#pragma once

#include "frame/zelTagTrace.h"

namespace zel {

struct Observer {
    zelObserver call;
    void* context;
};

extern constinit Observer observer;

// Microseconds of the time of day.
unsigned long long microsecondsNow();

// An open, a close or an exchange under way; it tells nothing unless somebody observes.
class Observed {
public:
    Observed(zelTraceTransport transport, const char* device, int product = 0)
        : device_(device), transport_(transport), product_(product),
          began_(observer.call ? microsecondsNow() : 0) {}

    void tell(zelTraceKind kind, bool result, const void* bytes = nullptr, long size = 0) const {
        if (observer.call)
            report(kind, result, bytes, size);
    }

private:
    void report(zelTraceKind kind, bool result, const void* bytes, long size) const;

    const char* device_;
    zelTraceTransport transport_;
    int product_;
    unsigned long long began_; // microseconds
};

} // namespace zel
