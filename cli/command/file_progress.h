// SPDX-License-Identifier: MIT
// Tells how far a file has come that the library writes.
#pragma once

#include <condition_variable>
#include <mutex>
#include <string>
#include <thread>

namespace zel::cli {

// What a file is made of: complete lines that begin like this.
struct FileParts {
    const char* mark;
    const char* name; // such as "reports"
    int total;
};

// How many of them a file has; 0 for a file that isn't there.
int partsIn(const std::string& path, const char* mark);

// "N of TOTAL reports" on stderr while the library writes the file, for as long as this object
// lives. It looks from a thread of its own, since the library's call returns only when all is done;
// the thread makes no call of the library.
class FileProgress {
public:
    FileProgress(std::string path, const FileParts& parts);
    ~FileProgress();
    FileProgress(const FileProgress&) = delete;
    FileProgress& operator=(const FileProgress&) = delete;

private:
    void watch();
    void look();

    const std::string path_;
    const FileParts parts_;
    int told_ = 0;
    bool ended_ = false;
    std::mutex mutex_;
    std::condition_variable end_;
    std::thread thread_; // none when nobody is told
};

} // namespace zel::cli
