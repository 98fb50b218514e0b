// SPDX-License-Identifier: MIT
// The range, the count and the first record of a scan.
#include "transport/line_scan.h"

#include "frame/zelTagAPI.h"
#include "transport/serial_lines.h"

#include <cstdio>

namespace zel {

namespace {

int takeFirst(std::int64_t* did) {
    SetActDev(0);
    if (did)
        *did = DevDat[0].iDID;
    return 1;
}

} // namespace

tsDevDat* nextRecord() {
    return iDevsFnd >= 0 && iDevsFnd < kMaxDevices ? &DevDat[iDevsFnd] : nullptr;
}

void nameAfterLine(tsDevDat& record, int port) {
    std::snprintf(record.szDevName, sizeof record.szDevName, "COM%d:", port);
}

void prepareVirtualMap() {
    if (iVirtualComPortMin != 0 && iVirtualComPortMax != 0)
        BuildVirtualComMap();
}

int connectLines(std::int64_t* did, bool (*scan)()) {
    const int before = iDevsFnd;
    return scan() && iDevsFnd != before ? takeFirst(did) : 0;
}

int connectOneLine(unsigned short port, std::int64_t* did, int (*connect)(std::int64_t* did)) {
    if (iDevsFnd != 0 || port == 0)
        return 0;
    const std::uint16_t first = iComPortMin;
    const std::uint16_t last = iComPortMax;
    iComPortMin = iComPortMax = port;
    const bool found = connect(did) != 0;
    iComPortMin = first;
    iComPortMax = last;
    if (found)
        return takeFirst(did);
    lLastCnctErr |= kConnectFailed;
    return 0;
}

} // namespace zel
