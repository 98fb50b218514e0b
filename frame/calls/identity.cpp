// SPDX-License-Identifier: MIT
// Which device is active, and what it is.
#include "frame/state/state.h"
#include "frame/zelTagAPI.h"
#include "transport/port.h"

#include <cstring>
#include <string_view>

using namespace zel;

namespace {
constexpr int kUsbPortNumber = 999; // GetDevName() of a device without a port
constexpr std::size_t kNameOfLine = ZELTAGAPI_NAME_SIZE - 1;

// Fills 511 characters, with zeros behind the name.
int takeNameOfLine(const tsDevDat& record, char* name) {
    const std::size_t length = strnlen(record.szDevName, kNameOfLine);
    std::memcpy(name, record.szDevName, length);
    std::memset(name + length, 0, kNameOfLine - length);
    return record.pPort ? static_cast<int>(record.pPort->port()) : 0;
}

} // namespace

int GetDevCnt() { return iDevsFnd; }

int GetActDev() { return iActDev; }

// A vain call on an empty table also puts the active index back to 0.
int SetActDev(short device) {
    const bool valid = device >= 0 && device < iDevsFnd;
    if (valid)
        iActDev = device;
    if (iDevsFnd == 0)
        iActDev = 0;
    return valid ? 1 : 0;
}

unsigned int GetProduct() { return iDevsFnd < 1 ? 0 : activeRecord().iProduct; }

int GetDevName(char* name) {
    if (!hasActiveDevice() || !name)
        return unsupportedValue();
    if (activeRecord().iDevType == 1)
        return takeNameOfLine(activeRecord(), name);
    const char* const kept = activeRecord().szDevName;
    const std::string_view text(kept, strnlen(kept, ZELTAGAPI_NAME_SIZE - 1));
    name[text.copy(name, text.size())] = '\0';
    return kUsbPortNumber;
}

int nv_GetDevName(char* name) { return static_cast<std::int16_t>(GetDevName(name)); }

// Reads the record in place; index 512 is its end.
int getDevName_char(short index) {
    const bool inside = index >= 0 && index < ZELTAGAPI_NAME_SIZE;
    return hasActiveDevice() && inside ? static_cast<unsigned char>(activeRecord().szDevName[index])
                                       : 0;
}

// Upward from `start`; the numbers are compared as 16 bits.
int GetDevByLUID(short luid, short start) {
    for (int index = start; index >= 0 && index < iDevsFnd && index < kMaxDevices; ++index)
        if (DevDat[index].iLUID == static_cast<std::uint16_t>(luid))
            return index;
    return -1;
}

int nv_GetDevType() { return GetDevType(); }

int GetDevType() { return static_cast<std::int16_t>(activeRecord().iDevType); }

int GetDID() { return static_cast<std::int16_t>(activeRecord().iDID); }

int GetLUID() { return static_cast<std::int16_t>(activeRecord().iLUID); }

int SetLUID(unsigned short luid) {
    tsDevDat& record = activeRecord();
    record.iLUID = luid;
    record.bLUIDDirty = 1;
    return 1;
}

std::int64_t GetSN() { return activeRecord().lSN; }
