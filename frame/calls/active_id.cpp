// SPDX-License-Identifier: MIT
// The exported card reads: which family serves, and the short-lived copy of the last identifier.
#include "base/runtime.h"
#include "family/band/band.h"
#include "family/echo/echo.h"
#include "family/tag/tag.h"
#include "frame/calls/dispatch.h"
#include "frame/state/lock.h"
#include "frame/state/state.h"
#include "frame/zelTagAPI.h"

#include <algorithm>
#include <cstring>

using namespace zel;

namespace {

constexpr std::uint64_t kFreshReadAfter = 235; // ms since lLastIDTick

enum class Source { Device, Nothing, LastId };

// A read may be answered from the last one while its tick is young. No operation of the library
// stores a tick in lLastIDTick, so unless an application does, every read goes to the device.
Source chooseSource(const tsDevDat& record) {
    const std::uint64_t age = GetTickCount() - record.lLastIDTick;
    if (age >= kFreshReadAfter)
        return Source::Device;
    const std::int64_t hold = activeConfig(record).sTimeParms.iIDHoldTO;
    return static_cast<std::int64_t>(age) >= hold ? Source::Nothing : Source::LastId;
}

std::size_t bytesOf(short size) { return static_cast<std::size_t>(std::max<int>(size, 0)); }

int forgetId(unsigned char* buffer, std::size_t size) {
    if (buffer)
        std::memset(buffer, 0, size);
    std::memset(activeIDBuf, 0, sizeof activeIDBuf);
    setLastIdBits(0);
    return 0;
}

// Repeats the last identifier; what the caller wants beyond it is zero.
int repeatId(unsigned char* buffer, std::size_t size) {
    if (buffer) {
        std::memset(buffer, 0, size);
        std::memcpy(buffer, activeIDBuf, std::min(size, sizeof activeIDBuf));
    }
    return lastIdBits();
}

// The family's read of the active device, or the unsupported value.
using FamilyRead = int (*)(unsigned char*, short);

int readFamily(unsigned char* buffer, short size) {
    return forFamily(zeltag_GetActiveID, zelband_GetActiveID, zelecho_GetActiveID, buffer, size);
}

int readFamily32(unsigned char* buffer, short size) {
    return forFamily(zeltag_GetActiveID32, zelband_GetActiveID32, zelecho_GetActiveID32, buffer,
                     size);
}

// Reads from the device and keeps 32 bytes of the buffer as the last identifier. With activeIDBuf
// itself as the buffer there is nothing to keep.
int readDevice(FamilyRead read, unsigned char* buffer, short size) {
    if (!isServed())
        return unsupportedValue();
    const int bits = read(buffer, size);
    if (buffer)
        std::memmove(activeIDBuf, buffer, sizeof activeIDBuf);
    setLastIdBits(bits);
    return bits;
}

int readId(FamilyRead read, unsigned char* buffer, short size) {
    const LibraryLock lock;
    if (!hasActiveDevice())
        return unsupportedValue();
    switch (chooseSource(activeRecord())) {
    case Source::Nothing:
        return forgetId(buffer, bytesOf(size));
    case Source::LastId:
        return repeatId(buffer, bytesOf(size));
    case Source::Device:
        break;
    }
    return readDevice(read, buffer, size);
}

// The same choice for callers without a buffer; the device read takes the lock further in.
int readIdIntoOwnBuffer(int (*read)(short), short size) {
    if (!hasActiveDevice())
        return unsupportedValue();
    switch (chooseSource(activeRecord())) {
    case Source::Nothing:
        return forgetId(nullptr, 0);
    case Source::LastId:
        return lastIdBits();
    case Source::Device:
        break;
    }
    return read(size);
}

// The index that equals the size of the last read is let through.
int activeIdByte(short index) {
    const bool inside = index >= 0 && index <= activeIDBufSz && index < ZELTAGAPI_ID_SIZE;
    return inside ? activeIDBuf[index] : 0;
}

} // namespace

int GetActiveID(unsigned char* buffer, short size) { return readId(readFamily, buffer, size); }

int GetActiveID32(unsigned char* buffer, short size) { return readId(readFamily32, buffer, size); }

int getActiveID(short size) {
    return readIdIntoOwnBuffer(
        [](short wanted) {
            return forFamily(zeltag_getActiveID, zelband_getActiveID, zelecho_getActiveID, wanted);
        },
        size);
}

int getActiveID32(short size) {
    return readIdIntoOwnBuffer(
        [](short wanted) {
            return forFamily(zeltag_getActiveID32, zelband_getActiveID32, zelecho_getActiveID32,
                             wanted);
        },
        size);
}

int getActiveID_byte(short index) {
    return forFamily(activeIdByte, zelband_getActiveID_byte, zelecho_getActiveID_byte, index);
}
