// SPDX-License-Identifier: MIT
// The table of serial device paths and the ranges of a scan.
#include "transport/serial_lines.h"

#include "base/text.h"
#include "frame/zelTagLines.h"
#include "frame/zelTagState.h"
#include "transport/port.h"

#include <algorithm>
#include <cstring>
#include <iterator>
#include <string_view>

namespace {

constexpr unsigned kLastPath = std::size(decltype(LinuxDevPath){}) - 1;
constexpr std::size_t kRowSize = sizeof LinuxDevPath[0];
constexpr std::string_view kDeviceFolder = "/dev/";

constinit unsigned char virtualMap[zel::kMostPorts + 1] = {};

bool isPort(unsigned port) { return port >= 1 && port <= zel::kMostPorts; }

} // namespace

namespace zel {

const char* registeredPath(unsigned port) {
    if (port > kLastPath)
        return nullptr;
    const char* const row = LinuxDevPath[port];
    const std::string_view text(row, strnlen(row, kRowSize));
    return text.size() < kRowSize && text.starts_with(kDeviceFolder) ? row : nullptr;
}

bool isInSearchRange(int port) { return port >= iComPortMin && port <= iComPortMax; }

} // namespace zel

void CPort_Init() { std::memset(LinuxDevPath[1], 0, sizeof LinuxDevPath - sizeof LinuxDevPath[0]); }

int SetComLinux(unsigned short port, const char* name) {
    if (port == 0 || port > kLastPath)
        return 0;
    zel::copyText(LinuxDevPath[port], name ? name : "");
    return 1;
}

int SetComSrchRange(unsigned short first, unsigned short last) {
    if (!isPort(first) || !isPort(last))
        return 0;
    iComPortMin = std::min(first, last);
    iComPortMax = std::max(first, last);
    return 1;
}

int VirtualComSearchRange(unsigned short first, unsigned short last) {
    const bool isNone = first == 0 && last == 0;
    if (!isNone && (!isPort(first) || !isPort(last) || first >= last))
        return 0;
    iVirtualComPortMin = last;
    iVirtualComPortMax = first;
    return 1;
}

void BuildVirtualComMap() { std::memset(virtualMap, 0, sizeof virtualMap); }

unsigned char CheckVirtualMap(int port) {
    return port >= 1 && port <= static_cast<int>(zel::kMostPorts) ? virtualMap[port] : 0;
}

bool IsComPortInUse(int port) {
    return std::any_of(std::begin(DevDat), std::end(DevDat), [port](const tsDevDat& record) {
        return record.pPort && static_cast<int>(record.pPort->port()) == port;
    });
}
