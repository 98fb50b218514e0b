// SPDX-License-Identifier: MIT
// Arrivals by name, removals by name, and the closing of gaps.
#include "transport/hot_plug.h"

#include "base/runtime.h"
#include "base/text.h"
#include "frame/state/state.h"
#include "transport/usb_driver.h"
#include "transport/usb_handles.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <memory>
#include <new>

namespace zel {

namespace {

constexpr std::uint64_t kNotOurs = 10; // values of lLastCnctErr
constexpr std::uint64_t kNotOpened = 11;

bool isName(const char* name) {
    return name && strnlen(name, ZELTAGAPI_NAME_SIZE) < ZELTAGAPI_NAME_SIZE;
}

// The comparison takes in the character behind the prefix, so only a name that ends there passes.
bool isArrivalName(const char* name, const UsbIdentity& identity) {
    char prefix[64];
    std::snprintf(prefix, sizeof prefix, "\\\\?\\HID#Vid_%04x&Pid_%04x", identity.vendor,
                  identity.product);
    return _strnicmp(prefix, name, std::strlen(prefix)) == 0;
}

int refuse(std::uint64_t reason) {
    lLastCnctErr = reason;
    return 0;
}

bool isHole(const tsDevDat& record) { return !holdsHandle(record); }

int removeFirstHeld() {
    for (int index = 0; index < iDevsFnd; ++index) {
        tsDevDat& record = DevDat[index];
        if (isHole(record))
            continue;
        closeHandle(record);
        std::memset(&record, 0, sizeof record);
        record.hDev = noHandle();
        return 1;
    }
    return 0;
}

// What earlier devices left at that place may be the last to hold its handle.
int append(const tsDevDat& record) {
    if (iDevsFnd >= kMaxDevices)
        return 0;
    tsDevDat& place = DevDat[iDevsFnd++];
    replaceHandle(place, record.hDev);
    place = record;
    return 1;
}

// Moves each record down into the hole in front of it; a record that was moved leaves its bytes
// behind. With any hole the last index in use ends as one.
void closeGaps() {
    int hole = iDevsFnd;
    for (int index = 0; index < iDevsFnd; ++index) {
        if (isHole(DevDat[index])) {
            hole = index;
        } else if (hole < iDevsFnd) {
            DevDat[hole] = DevDat[index];
            hole = index;
        }
    }
    if (hole < iDevsFnd)
        --iDevsFnd;
}

} // namespace

int addArrival(const char* name, const UsbIdentity& named, const UsbIdentity& owned,
               tsDevDat* filled) {
    if (!isName(name) || !isArrivalName(name, named))
        return 0;
    void* const handle = UsbDriver_CreateFile(name);
    if (handle == noHandle())
        return refuse(kNotOpened);
    if (!UsbDriver_IsDevOurs(name, owned.vendor, owned.product, nullptr)) {
        UsbDriver_Close(handle);
        return refuse(kNotOurs);
    }
    const std::unique_ptr<tsDevDat> arrived(new (std::nothrow) tsDevDat{});
    if (!arrived)
        return 0;
    tsDevDat& record = filled ? *filled : *arrived;
    record.iDevType = 0;
    record.iDID = 0;
    replaceHandle(record, handle);
    copyText(record.szDevName, name);
    return ResetDevLst(arrived.get(), 0);
}

int removeDevice(const char* name) {
    if (!isName(name))
        return 0;
    for (int index = 0; index < iDevsFnd && index < kMaxDevices; ++index)
        if (_stricmp(DevDat[index].szDevName, name) == 0)
            return ResetDevLst(&DevDat[index], 1);
    return 0;
}

} // namespace zel

using namespace zel;

int ResetDevLst(tsDevDat* record, int remove) {
    iDevsFnd = static_cast<std::int16_t>(std::clamp<int>(iDevsFnd, 0, kMaxDevices));
    int result = 0;
    if (record)
        result = remove != 0 ? removeFirstHeld() : append(*record);
    closeGaps();
    iActDev = 0;
    return result;
}
