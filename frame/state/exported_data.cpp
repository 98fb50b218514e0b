// SPDX-License-Identifier: MIT
// Defines the exported data.
#include "frame/state/exported.h"
#include "frame/state/state.h"

#include <new>

// One row a variable: its name and its constant initial value.
ZEL_EXPORTED(iActDev, 0)
ZEL_EXPORTED(iDevsFnd, 0)
ZEL_EXPORTED(cbIndex, 0)
ZEL_EXPORTED(pDevDat, DevDat)
ZEL_EXPORTED(iCnctDevType, 65535)
ZEL_EXPORTED(lLastCnctErr, 0)
ZEL_EXPORTED(lLastICSWErr, 0)
ZEL_EXPORTED(tcpipUSBmode, false)
ZEL_EXPORTED(useACPMode, 0)
ZEL_EXPORTED(zelTagVidPid, {})
ZEL_EXPORTED(listIndex, 0)
ZEL_EXPORTED(VidPidVersion, {})
ZEL_EXPORTED(path, {})
ZEL_EXPORTED(iComPortMin, 1)
ZEL_EXPORTED(iComPortMax, 8)
ZEL_EXPORTED(iVirtualComPortMin, 1)
ZEL_EXPORTED(iVirtualComPortMax, 256)
ZEL_EXPORTED(LinuxDevPath, {})
ZEL_EXPORTED(baudrate, 9600)
ZEL_EXPORTED(defaultbaudrate, 9600)
ZEL_EXPORTED(ipAdr0, 0)
ZEL_EXPORTED(ipAdr1, 0)
ZEL_EXPORTED(ipAdr2, 0)
ZEL_EXPORTED(ipAdr3, 0)
ZEL_EXPORTED(ipPortNum, 0)
ZEL_EXPORTED(activeIDBuf, {})
ZEL_EXPORTED(activeIDBufSz, 0)
ZEL_EXPORTED(activeCardDataBuf, {})
ZEL_EXPORTED(QueuedID, {})
ZEL_EXPORTED(enhanceSecurityFlagCurrFWState, false)
ZEL_EXPORTED(gsSonarParms2, {})
ZEL_EXPORTED(gsWalkAwayParms2, {})
ZEL_EXPORTED(gsWalkUpParms2, {})
ZEL_EXPORTED(gsIdleParms2, {})
ZEL_EXPORTED(gsRangeInfo2, {})
ZEL_EXPORTED(ReaderIsLark, 0)
ZEL_EXPORTED(giTargetMicro, 0)
ZEL_EXPORTED(fastBootloader, 0)
ZEL_EXPORTED(delayNextLine, 0)
ZEL_EXPORTED(errorCodes, nullptr)
ZEL_EXPORTED(zelLock, {})
ZEL_EXPORTED(Attr, {})

namespace {
struct TextStorage {
    alignas(std::string) unsigned char bytes[sizeof(std::string)];
};
} // namespace

// The two texts are zero bytes until the library is loaded, and are never destroyed: exit handlers
// of the application may still read them.
extern "C" {
extern TextStorage zelErrorStringStorage ZEL_LABEL(errorString);
extern TextStorage zelSpaceStorage ZEL_LABEL(space);
ZELTAGAPI_EXPORT constinit TextStorage zelErrorStringStorage = {};
ZELTAGAPI_EXPORT constinit TextStorage zelSpaceStorage = {};
}
ZEL_ALIAS(errorString)
ZEL_ALIAS(space)

void zel::buildExportedTexts() {
    ::new (zelErrorStringStorage.bytes) std::string();
    ::new (zelSpaceStorage.bytes) std::string(" ");
}
