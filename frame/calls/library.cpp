// SPDX-License-Identifier: MIT
// What the library says of itself: version, error word, unsupported value, marker hook.
#include "frame/calls/library.h"

#include "frame/state/state.h"
#include "frame/zelTagAPI.h"

#include <cstdlib>

using namespace zel;

namespace {

constinit zelMarkerFunction gMarkerFn = nullptr;
constexpr char kBetaMark[] = "";

void store(short* target, short value) {
    if (target)
        *target = value;
}

} // namespace

zelMarkerFunction zel::markerFunction() { return gMarkerFn; }

void initialize() {}

int GetLibVersion(short* major, short* minor, short* build) {
    store(major, ZELTAGAPI_VERSION_MAJOR);
    store(minor, ZELTAGAPI_VERSION_MINOR);
    store(build, ZELTAGAPI_VERSION_BUILD);
    return 1;
}

int getLibraryVersion_Major() {
    short major = 0;
    GetLibVersion(&major, nullptr, nullptr);
    return major;
}

int getLibraryVersion_Minor() {
    short minor = 0;
    GetLibVersion(nullptr, &minor, nullptr);
    return minor;
}

int getLibraryVersion_Build() {
    short build = 0;
    GetLibVersion(nullptr, nullptr, &build);
    return build;
}

const char* getLibraryVersion_Beta() { return kBetaMark; }

bool isLoggingEnabled() { return std::getenv("ZELTAGAPI_LOGGING") != nullptr; }

zelMarkerFunction SetMarkerFunction(zelMarkerFunction function) {
    if (!isLoggingEnabled())
        return nullptr;
    gMarkerFn = function;
    return function;
}

void Debug() {}

void _DPrintf(const char*, ...) {}

void DebugDump() {}

std::int64_t GetLastLibErr() {
    return hasActiveDevice() ? activeRecord().lLastErr : unsupportedValue();
}

int SetUnsupportedProductErrorCode(int code) {
    setUnsupportedValue(static_cast<std::int16_t>(code));
    return unsupportedValue();
}

int GetUnsupportedProductErrorCode() { return unsupportedValue(); }
