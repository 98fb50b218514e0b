// SPDX-License-Identifier: MIT
// Tells how far a dump has come, from what stands in its file.
#pragma once

#include <condition_variable>
#include <mutex>
#include <string>
#include <thread>

namespace zel::cli {

// How many reports of a dump file are complete; 0 for a file that isn't there.
int reportsIn(const std::string& path);

// "N of TOTAL reports" on stderr while the library writes the file line by line, for as long as
// this object lives. It looks from a thread of its own, since the library's call returns only when
// all is done; the thread makes no call of the library.
class DumpProgress {
public:
    DumpProgress(std::string path, int total);
    ~DumpProgress();
    DumpProgress(const DumpProgress&) = delete;
    DumpProgress& operator=(const DumpProgress&) = delete;

private:
    void watch();
    void look();

    const std::string path_;
    const int total_;
    int told_ = 0;
    bool ended_ = false;
    std::mutex mutex_;
    std::condition_variable end_;
    std::thread thread_; // none when nobody is told
};

} // namespace zel::cli
