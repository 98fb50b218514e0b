// SPDX-License-Identifier: MIT
// What a fuzz target stands on: its input as a file, and facts that have to hold.
#pragma once

#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>
#include <sys/mman.h>
#include <unistd.h>

namespace zel::fuzz {

// Has a path and stands on no disk.
class InputFile {
public:
    explicit InputFile(std::string_view text)
        : file_(memfd_create("input", MFD_CLOEXEC)),
          path_("/proc/self/fd/" + std::to_string(file_)) {
        if (write(file_, text.data(), text.size()) != static_cast<ssize_t>(text.size()))
            std::abort();
    }
    ~InputFile() { close(file_); }
    InputFile(const InputFile&) = delete;
    InputFile& operator=(const InputFile&) = delete;

    const char* path() const { return path_.c_str(); }

private:
    int file_;
    std::string path_;
};

inline std::string_view textOf(const std::uint8_t* data, std::size_t size) {
    return {reinterpret_cast<const char*>(data), size};
}

// Ends the process where a fact doesn't hold.
inline void require(bool holds) {
    if (!holds)
        std::abort();
}

} // namespace zel::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);
