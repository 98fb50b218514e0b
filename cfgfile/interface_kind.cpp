// SPDX-License-Identifier: MIT
// Looks for the kind of interface in the head of a file.
#include "cfgfile/interface_kind.h"

#include "base/runtime.h"

#include <cstdio>
#include <string_view>

namespace {

constexpr std::size_t kHead = 257;
constexpr int kUsb = 0;
constexpr int kSerial = 1;
constexpr int kUnknown = 65535;

// The word may stand on a later line.
int kindIn(std::string_view head) {
    const std::size_t mark = head.find("Interface:");
    if (mark == std::string_view::npos)
        return kUnknown;
    const std::string_view behind = head.substr(mark);
    if (behind.find("USB") != std::string_view::npos)
        return kUsb;
    return behind.find("SERIAL") != std::string_view::npos ? kSerial : kUnknown;
}

} // namespace

int zelband_ReadDevTypeFromFile(const char* name) {
    static constinit char head[kHead] = {};
    std::FILE* file = nullptr;
    if (!name || fopen_s(&file, name, "rt") != 0)
        return kUnknown;
    const std::size_t read = std::fread(head, 1, sizeof head, file);
    std::fclose(file);
    return kindIn({head, read});
}
