// SPDX-License-Identifier: MIT
// Start-up and shut-down of the proximity reader family.
#include "family/tag/tag.h"
#include "frame/state/state.h"
#include "frame/zelTagAPI.h"

namespace {

void emptyTable() {
    iActDev = 0;
    iDevsFnd = 0;
}

} // namespace

void InitUSBParms() {
    emptyTable();
    tcpipUSBmode = false;
}

void InitSerialParms() {
    useACPMode = 0;
    emptyTable();
    lLastICSWErr = 0;
    iComPortMin = 1;
    iComPortMax = 8;
    iVirtualComPortMin = 1;
    iVirtualComPortMax = 256;
}

void InitLocalParms() {
    InitUSBParms();
    InitSerialParms();
    for (tsDevDat& record : DevDat) {
        record.bSepFldOK = 1;
        record.bPartNumOK = 1;
        record.iTagPlusState = 0;
    }
    iCnctDevType = zel::kAllTransports;
}

void zeltag_Init() { InitLocalParms(); }

void zeltag_Exit() { USBDisconnect(); }
