// SPDX-License-Identifier: MIT
// Fills the device table: which families are looked for, and what is read of each device found.
#include "family/band/band.h"
#include "family/echo/echo.h"
#include "family/tag/multi_config.h"
#include "family/tag/services.h"
#include "family/tag/tag.h"
#include "frame/state/lock.h"
#include "frame/state/state.h"
#include "frame/zelTagAPI.h"
#include "transport/tcp_socket.h"

#include <algorithm>

using namespace zel;

namespace {

void startTable() {
    iActDev = 0;
    iDevsFnd = 0;
    cbIndex = 0;
    listIndex = 0;
    zeltag_ZeroCardTypeListFromDevice();
    for (tsDevDat& record : DevDat)
        startRecord(record);
}

// Neither the list's next row nor what the records hold goes back.
void startLines() {
    iActDev = 0;
    iDevsFnd = 0;
    cbIndex = 0;
}

bool connectTags() {
    LoadzelTagVidPidListFile();
    if (!zeltag_USBConnect())
        return false;
    if (isKQ7Reader())
        unlockKeystrokeModeOfKQ7();
    SendGetTagPlus();
    return true;
}

bool wants(Product product) { return (connectProducts() & product) != 0; }

// The first family that has a device ends the search.
bool connectFamilies() {
    return (wants(kTag) && connectTags()) || (wants(kBand) && zelband_USBConnect() != 0) ||
           (wants(kEcho) && zelecho_USBConnect() != 0);
}

// A unit's versions end at its first slot without one.
void readVersions(tsDevDat& record) {
    for (int unit = 0; unit < tag::kFirmwareUnits; ++unit) {
        std::uint32_t* const slots = record.FWVerTbl[unit];
        std::fill_n(slots, tag::kFirmwareSlots, 0U);
        for (int slot = 0; slot < tag::kFirmwareSlots; ++slot) {
            slots[slot] = zeltag_SendGetFirmwareVersion(unit, slot);
            if (slots[slot] == 0)
                break;
        }
    }
}

// The configuration index goes back to 0 on the device that was active until here: device 0 in the
// first two passes, and never the last one.
bool readDevice(short index) {
    activeRecord().iActConfig = 0;
    SetActConfig(0);
    SetActDev(index);
    if (ReadCfg() == 0)
        return false;
    readVersions(activeRecord());
    return true;
}

int connectFailed() {
    lLastCnctErr |= kConnectFailed;
    SetActDev(0);
    return 0;
}

int finish(bool found, int64_t* did) {
    SetActDev(0);
    if (found && did)
        *did = static_cast<std::int16_t>(activeRecord().iDID);
    return found ? 1 : 0;
}

int readAll(bool (*read)(short index), bool found, int64_t* did) {
    for (int index = 0; index < iDevsFnd && index < kMaxDevices; ++index)
        if (!read(static_cast<short>(index)))
            return connectFailed();
    return finish(found, did);
}

bool readConfiguration(short index) {
    SetActDev(index);
    return ReadCfg() != 0;
}

} // namespace

int USBConnect(int64_t* did) {
    const LibraryLock lock;
    closeConnectSocket();
    startTable();
    return readAll(readDevice, connectFamilies(), did);
}

// Both families are tried, whatever the first one found; the sensor has no line. What the reader is
// gets asked also when nothing was found.
int ComConnect(int64_t* did) {
    startLines();
    bool found = false;
    if (wants(kTag)) {
        LoadzelTagVidPidListFile();
        found = zeltag_ComConnect(did) != 0;
    }
    if (wants(kBand) && zelband_ComConnect(did) != 0)
        found = true;
    SendGetTagPlus();
    return readAll(readConfiguration, found, did);
}

int ComConnectPort(unsigned short port, int64_t* did) {
    startLines();
    bool found = false;
    if (wants(kTag)) {
        LoadzelTagVidPidListFile();
        found = zeltag_ComConnectPort(port, did) != 0;
    }
    if (wants(kBand) && zelband_ComConnectPort(port, did) != 0)
        found = true;
    return readAll(readConfiguration, found, did);
}

int usbConnect() {
    initialize();
    int64_t did = 0;
    return USBConnect(&did);
}

int SetConnectProduct(unsigned int mask) {
    setConnectProducts(mask);
    return 1;
}

int SetDevTypeSrch(short type) { return zeltag_SetDevTypeSrch(type); }
