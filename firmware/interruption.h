// SPDX-License-Identifier: MIT
// What a signal does to a flash: the handler only notes it, and the flash acts between two lines.
#pragma once

namespace zel::firmware {

// Marks a flash as under way; while one is, signals wait for actOnSignal() or for its end.
class FlashUnderWay {
public:
    FlashUnderWay();
    ~FlashUnderWay();
    FlashUnderWay(const FlashUnderWay&) = delete;
    FlashUnderWay& operator=(const FlashUnderWay&) = delete;
};

// Installs the handler for SIGINT, SIGABRT and SIGTERM; it is never taken back.
void catchSignals();

// Acts on a signal that came: closes all devices; then SIGINT ends the process with exit code 1,
// the others pause for two seconds and let the flash go on, which finds no device any more.
void actOnSignal();

} // namespace zel::firmware
