// SPDX-License-Identifier: MIT
// The handler runs wherever the signal meets the process: perhaps with the library's lock held, or
// in the middle of an exchange. So it frees nothing and waits for no lock.
#include "firmware/interruption.h"

#include "base/pause.h"
#include "firmware/flash.h"
#include "frame/state/state.h"
#include "frame/zelTagAPI.h"

#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <unistd.h>

namespace {

constexpr int kInterrupted = 1; // exit code of the process
constexpr unsigned kPause = 2'000'000;

// Without locks inside, so that a handler may touch them.
constinit std::atomic<int> flashesUnderWay = 0;
constinit std::atomic<bool> interruptCame = false; // SIGINT
constinit std::atomic<bool> endCame = false;       // SIGABRT or SIGTERM
static_assert(std::atomic<int>::is_always_lock_free && std::atomic<bool>::is_always_lock_free);

// The interrupted code goes on as if nothing had been called.
void pauseInHandler() {
    const int before = errno;
    usleep(kPause);
    errno = before;
}

// _exit() runs no code of the process; the kernel closes its devices.
void handleWithoutFlash(int signal) {
    if (signal == SIGINT)
        _exit(kInterrupted);
    zel::requestDisconnect();
    pauseInHandler();
}

// A second interruption ends an exit handler that hangs.
[[noreturn]] void endProcess() {
    flashesUnderWay = 0;
    std::exit(kInterrupted);
}

} // namespace

namespace zel::firmware {

FlashUnderWay::FlashUnderWay() { ++flashesUnderWay; }

// A signal that came behind the last line waits no longer.
FlashUnderWay::~FlashUnderWay() {
    --flashesUnderWay;
    actOnSignal();
}

void catchSignals() {
    for (const int signal : {SIGINT, SIGABRT, SIGTERM})
        std::signal(signal, FlashReader::controlHandler);
}

void actOnSignal() {
    const bool isInterrupted = interruptCame.exchange(false);
    const bool isEnded = endCame.exchange(false);
    if (!isInterrupted && !isEnded)
        return;
    USBDisconnect();
    if (isInterrupted)
        endProcess();
    pauseFor(kPause);
}

} // namespace zel::firmware

void FlashReader::controlHandler(int signal) {
    if (signal != SIGINT && signal != SIGABRT && signal != SIGTERM)
        return;
    if (flashesUnderWay == 0)
        handleWithoutFlash(signal);
    else
        (signal == SIGINT ? interruptCame : endCame) = true;
}
