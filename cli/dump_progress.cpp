// SPDX-License-Identifier: MIT
// The thread that looks into the file.
#include "cli/dump_progress.h"

#include "cli/output.h"

#include <chrono>
#include <fmt/format.h>
#include <fstream>

namespace zel::cli {

namespace {
constexpr std::chrono::milliseconds kEvery{100};
}

int reportsIn(const std::string& path) {
    std::ifstream file(path);
    int reports = 0;
    for (std::string line; std::getline(file, line);)
        reports += line.starts_with("Rx: ") && !file.eof();
    return reports;
}

DumpProgress::DumpProgress(std::string path, int total) : path_(std::move(path)), total_(total) {
    if (showsProgress())
        thread_ = std::thread([this] { watch(); });
}

DumpProgress::~DumpProgress() {
    if (!thread_.joinable())
        return;
    {
        const std::lock_guard lock(mutex_);
        ended_ = true;
    }
    end_.notify_one();
    thread_.join();
    look();
    if (told_ > 0)
        endProgress();
}

void DumpProgress::watch() {
    std::unique_lock lock(mutex_);
    while (!end_.wait_for(lock, kEvery, [this] { return ended_; }))
        look();
}

// A dump that failed has no file any more.
void DumpProgress::look() {
    const int reports = reportsIn(path_);
    if (reports <= told_)
        return;
    told_ = reports;
    showProgressInPlace(fmt::format("{} of {} reports", reports, total_));
}

} // namespace zel::cli
