// SPDX-License-Identifier: MIT
// The library's signal carries no value, so its texts are made beforehand and taken in turn.
#include "cli/firmware/flash_progress.h"

#include <atomic>
#include <fmt/format.h>
#include <string>
#include <unistd.h>

namespace zel::cli {

namespace {

constexpr int kTenth = 10;
constexpr int kMarksATenth = 2;

// Written only while no handler of ours is installed.
std::vector<std::string> gTexts;
bool gIsBar = false;
std::size_t gToTell = 0;

std::atomic<std::size_t> gTold = 0;
static_assert(std::atomic<std::size_t>::is_always_lock_free);

// Whatever a signal handler may do, and no more.
void tellNext(int) {
    const std::size_t next = gTold++;
    if (next < gTexts.size()) [[maybe_unused]]
        const auto written = write(STDERR_FILENO, gTexts[next].data(), gTexts[next].size());
}

std::string barOf(int percentage) {
    const auto done = static_cast<std::size_t>(percentage / kTenth * kMarksATenth);
    const std::size_t whole = 100 / kTenth * kMarksATenth;
    return fmt::format("\rzeltag: [{}{}] {:3} %", std::string(done, '#'),
                       std::string(whole - done, '.'), percentage);
}

std::string textOf(int percentage, int lines) {
    return gIsBar ? barOf(percentage)
                  : fmt::format("zeltag: {} % of {} line{}\n", percentage, lines,
                                lines == 1 ? "" : "s");
}

} // namespace

std::vector<int> toldPercentages(int lines) {
    std::vector<int> told = {0};
    for (long long line = 1; line <= lines; ++line) {
        const int percentage = static_cast<int>(100 * line / lines);
        if (percentage % kTenth == 0 && percentage != told.back())
            told.push_back(percentage);
    }
    return told;
}

FlashProgress::FlashProgress(int lines, bool shown) {
    gTold = 0;
    gTexts.clear();
    const std::vector<int> percentages = toldPercentages(lines);
    gToTell = percentages.size();
    gIsBar = shown && isatty(STDERR_FILENO) != 0;
    if (shown)
        for (const int percentage : percentages)
            gTexts.push_back(textOf(percentage, lines));
    struct sigaction action = {};
    action.sa_handler = tellNext;
    action.sa_flags = SA_RESTART;
    sigaction(SIGUSR1, &action, &before_);
}

FlashProgress::~FlashProgress() {
    sigaction(SIGUSR1, &before_, nullptr);
    if (hasOpenBar()) [[maybe_unused]]
        const auto written = write(STDERR_FILENO, "\n", 1);
}

bool hasOpenBar() { return gIsBar && gTold > 0; }

bool isAllTold() { return gTold >= gToTell; }

} // namespace zel::cli
