// SPDX-License-Identifier: MIT
// Looks beside the running program.
#include "sim/program/installed.h"

#include <cstdlib>
#include <filesystem>

namespace zel::sim {

std::string preloadPath() {
    std::error_code error;
    const auto program = std::filesystem::read_symlink("/proc/self/exe", error);
    for (const char* const way :
         {"../lib/libzelsim.so", "../" ZELSIM_LIBDIR "/zeltag/libzelsim.so"}) {
        const auto path = (program.parent_path() / way).lexically_normal();
        if (!error && std::filesystem::exists(path, error))
            return path.string();
    }
    return {};
}

std::string newPrivateFolder() {
    const char* const place = std::getenv("TMPDIR");
    std::string folder = std::string(place && *place ? place : "/tmp") + "/zelsim-XXXXXX";
    return mkdtemp(folder.data()) ? folder : std::string();
}

} // namespace zel::sim
