// SPDX-License-Identifier: MIT
// A handler tells of the time before the first line, an exit handler of the time behind it.
#include "cli/firmware/flash_interruption.h"

#include "cli/firmware/flash_progress.h"

#include <atomic>
#include <cstdlib>
#include <string>
#include <unistd.h>

namespace zel::cli {

namespace {

struct Notice {
    std::string line;
    std::string json; // empty when it isn't asked for
};

// Written only while no handler of ours is installed.
Notice gUncertain;
Notice gLeftThere;

std::atomic<bool> gIsArmed = false;
static_assert(std::atomic<bool>::is_always_lock_free);

Notice noticeOf(const Failure& failure, bool json) {
    return {"zeltag: " + asLine(failure) + '\n', json ? asJson(failure) + '\n' : ""};
}

void writeAll(int to, const std::string& text) {
    [[maybe_unused]] const auto written = write(to, text.data(), text.size());
}

void tell(const Notice& notice) {
    if (hasOpenBar()) [[maybe_unused]]
        const auto written = write(STDERR_FILENO, "\n", 1);
    writeAll(STDERR_FILENO, notice.line);
    writeAll(STDOUT_FILENO, notice.json);
}

// Ends as the library's own handler does; the system closes the devices.
void endWhileEntering(int) {
    tell(gUncertain);
    _exit(static_cast<int>(ExitCode::Failed));
}

void tellAtExit() {
    if (gIsArmed)
        tell(isAllTold() ? gUncertain : gLeftThere);
}

} // namespace

FlashInterruption::FlashInterruption(const Failure& uncertain, const Failure& leftThere,
                                     bool json) {
    gUncertain = noticeOf(uncertain, json);
    gLeftThere = noticeOf(leftThere, json);
    [[maybe_unused]] static const int registered = std::atexit(tellAtExit);
    gIsArmed = true;
    struct sigaction action = {};
    action.sa_handler = endWhileEntering;
    for (std::size_t i = 0; i < std::size(kSignals); ++i)
        sigaction(kSignals[i], kSignals[i] == SIGABRT ? nullptr : &action, &before_[i]);
}

FlashInterruption::~FlashInterruption() {
    gIsArmed = false;
    for (std::size_t i = 0; i < std::size(kSignals); ++i)
        sigaction(kSignals[i], &before_[i], nullptr);
}

} // namespace zel::cli
