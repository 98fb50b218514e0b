// SPDX-License-Identifier: MIT
// The thread that looks into the file.
#include "cli/command/file_progress.h"

#include "cli/command/output.h"

#include <chrono>
#include <fmt/format.h>
#include <fstream>

namespace zel::cli {

namespace {
constexpr std::chrono::milliseconds kEvery{100};
}

int partsIn(const std::string& path, const char* mark) {
    std::ifstream file(path);
    int parts = 0;
    for (std::string line; std::getline(file, line);)
        parts += line.starts_with(mark) && !file.eof();
    return parts;
}

FileProgress::FileProgress(std::string path, const FileParts& parts)
    : path_(std::move(path)), parts_(parts) {
    if (showsProgress())
        thread_ = std::thread([this] { watch(); });
}

FileProgress::~FileProgress() {
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

void FileProgress::watch() {
    std::unique_lock lock(mutex_);
    while (!end_.wait_for(lock, kEvery, [this] { return ended_; }))
        look();
}

// A dump that failed has no file any more.
void FileProgress::look() {
    const int parts = partsIn(path_, parts_.mark);
    if (parts <= told_)
        return;
    told_ = parts;
    showProgressInPlace(fmt::format("{} of {} {}", parts, parts_.total, parts_.name));
}

} // namespace zel::cli
