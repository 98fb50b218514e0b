// SPDX-License-Identifier: MIT
// The files of the working directory and what they hold, and a disk that is full.
#pragma once

#include <csignal>
#include <filesystem>
#include <fstream>
#include <map>
#include <string>
#include <sys/resource.h>

namespace zel::test {

using Files = std::map<std::string, std::string>;

inline std::string contentOf(const std::string& name) {
    std::ifstream file(name, std::ios::binary);
    return {std::istreambuf_iterator(file), {}};
}

inline Files filesHere() {
    Files files;
    for (const auto& entry : std::filesystem::directory_iterator("."))
        files[entry.path().filename()] = contentOf(entry.path());
    return files;
}

// Files end after so many bytes, as on a full disk.
class FullDisk {
public:
    explicit FullDisk(rlim_t size) {
        getrlimit(RLIMIT_FSIZE, &before_);
        const rlimit limit = {size, before_.rlim_max};
        handler_ = std::signal(SIGXFSZ, SIG_IGN);
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~FullDisk() {
        setrlimit(RLIMIT_FSIZE, &before_);
        std::signal(SIGXFSZ, handler_);
    }
    FullDisk(const FullDisk&) = delete;
    FullDisk& operator=(const FullDisk&) = delete;

private:
    rlimit before_ = {};
    void (*handler_)(int) = nullptr;
};

} // namespace zel::test
