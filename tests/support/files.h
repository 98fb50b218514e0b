// SPDX-License-Identifier: MIT
// Text files of a test's own, and a disk that is full.
#pragma once

#include <csignal>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <sys/resource.h>

namespace zel::test {

inline std::string textOf(const std::string& name) {
    std::ostringstream text;
    text << std::ifstream(name, std::ios::binary).rdbuf();
    return text.str();
}

// Made anew: some file systems flush a file that is written over.
inline void writeText(const std::string& name, const std::string& text) {
    std::filesystem::remove(name);
    std::ofstream(name, std::ios::binary) << text;
}

// Files end after so many bytes, as on a full disk.
class FullDisk {
public:
    explicit FullDisk(rlim_t size) : handler_(std::signal(SIGXFSZ, SIG_IGN)) {
        getrlimit(RLIMIT_FSIZE, &before_);
        const rlimit limit = {size, before_.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~FullDisk() {
        setrlimit(RLIMIT_FSIZE, &before_);
        std::signal(SIGXFSZ, handler_);
    }
    FullDisk(const FullDisk&) = delete;
    FullDisk& operator=(const FullDisk&) = delete;

private:
    void (*handler_)(int);
    rlimit before_ = {};
};

} // namespace zel::test
