// SPDX-License-Identifier: MIT
// Signal handling of the commands that wait.
#include "cli/command/interrupt.h"

#include "cli/command/failure.h"

#include <atomic>
#include <csignal>
#include <ctime>
#include <unistd.h>

namespace zel::cli {

namespace {

volatile std::sig_atomic_t gInterrupted = 0;

std::atomic<const char*> gUnfinishedFile = nullptr;
static_assert(std::atomic<const char*>::is_always_lock_free);

void remember(int) {
    if (gInterrupted != 0) {
        if (const char* const path = gUnfinishedFile)
            unlink(path);
        _exit(static_cast<int>(ExitCode::Interrupted));
    }
    gInterrupted = 1;
}

} // namespace

void catchInterrupts() {
    struct sigaction action = {};
    action.sa_handler = remember; // without SA_RESTART: sleeps end early
    for (const int signal : {SIGINT, SIGTERM})
        sigaction(signal, &action, nullptr);
}

bool interrupted() { return gInterrupted != 0; }

void removeAtSecondInterrupt(const char* path) { gUnfinishedFile = path; }

void pauseFor(std::chrono::milliseconds time) {
    const auto count = time.count();
    timespec span = {};
    span.tv_sec = static_cast<time_t>(count / 1000);
    span.tv_nsec = static_cast<long>(count % 1000) * 1'000'000;
    if (!interrupted())
        nanosleep(&span, nullptr);
}

} // namespace zel::cli
