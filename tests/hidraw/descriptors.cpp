// SPDX-License-Identifier: MIT
// Reads the process's own descriptor table.
#include "tests/hidraw/descriptors.h"

#include <fcntl.h>
#include <filesystem>
#include <system_error>

namespace zel::test {

namespace fs = std::filesystem;

std::map<int, std::string> openDescriptors(const fs::path& root) {
    std::map<int, std::string> open;
    for (const fs::directory_entry& entry : fs::directory_iterator("/proc/self/fd")) {
        std::error_code gone; // another thread's, closed meanwhile
        const std::string target = fs::read_symlink(entry.path(), gone).string();
        if (!gone && target.starts_with(root.string() + '/'))
            open.emplace(std::stoi(entry.path().filename()), target.substr(root.string().size()));
    }
    return open;
}

bool isClosedOnExec(int descriptor) { return (fcntl(descriptor, F_GETFD) & FD_CLOEXEC) != 0; }

} // namespace zel::test
