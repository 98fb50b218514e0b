/* SPDX-License-Identifier: MIT */
/* The public headers from C11: each call of the interface with no device attached to it. */
#include "expect.h"
#include "frame/zelTagAPI.h"
#include "frame/zelTagState.h"

#include <string.h>

int main(void) {
    unsigned char buffer[ZELTAGAPI_ID_SIZE] = {0};
    char name[ZELTAGAPI_NAME_SIZE] = "";
    short major = 0;

    EXPECT(GetLibVersion(&major, NULL, NULL) == 1 && major == ZELTAGAPI_VERSION_MAJOR);
    EXPECT(getLibraryVersion_Minor() == ZELTAGAPI_VERSION_MINOR);
    EXPECT(getLibraryVersion_Build() == ZELTAGAPI_VERSION_BUILD);
    EXPECT(strcmp(getLibraryVersion_Beta(), "") == 0);
    EXPECT(zeltag_USBDeviceConnect(0x5A3E, 0x9D2B, NULL) == -1);
    EXPECT(GetDevCnt() == 0);
    EXPECT(SetActDev(0) == 0 && GetActDev() == 0);
    EXPECT(GetProduct() == 0 && GetDevType() == 0);
    EXPECT(SetUnsupportedProductErrorCode(-7) == -7);
    EXPECT(GetUnsupportedProductErrorCode() == -7);
    EXPECT(GetDevName(name) == -7);
    EXPECT(GetLastLibErr() == -7);
    EXPECT(GetActiveID(buffer, 8) == -7 && GetActiveID32(buffer, 32) == -7);
    EXPECT(getActiveID(8) == -7 && getActiveID32(32) == -7 && getActiveID_byte(0) == -7);
    EXPECT(ReadCfg() == 0 && WriteCfg() == 0 && GetFlags2(NULL) == -7);
    EXPECT(Ping() > 65535);
    EXPECT(SetLUID(5) == 1 && GetLUID() == 5 && DevDat[0].iLUID == 5);
    EXPECT(GetDID() == 0 && GetSN() == 0);
    EXPECT(USBDisconnect() == 1);
    initialize();
    Debug();
    _DPrintf("%d", 1);
    DebugDump();
    return exitStatus();
}
