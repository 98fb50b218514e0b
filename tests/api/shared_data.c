/* SPDX-License-Identifier: MIT */
/* An application that means the library's data: both see one object, by either of its names. */
#define _GNU_SOURCE
#include "expect.h"
#include "frame/zelTagAPI.h"
#include "frame/zelTagState.h"

#include <dlfcn.h>

int main(void) {
    EXPECT(baudrate == 9600 && path[0] == '\0' && iCnctDevType == 65535);
    EXPECT(DevDat[0].bSepFldOK == 1 && DevDat[126].Cfg[9].uSFD.bytes[0] == 12);
    EXPECT(pDevDat == &DevDat[0]);
    EXPECT(dlsym(RTLD_DEFAULT, "path") == (void*)path);
    EXPECT(dlsym(RTLD_DEFAULT, "zelTagAPI_path") == (void*)path);
    EXPECT(dlsym(RTLD_DEFAULT, "zelTagAPI_DevDat") == (void*)DevDat);

    DevDat[0].iLUID = 21;
    EXPECT(GetLUID() == 21);
    SetLUID(22);
    EXPECT(DevDat[0].iLUID == 22);
    iDevsFnd = 3;
    EXPECT(GetDevCnt() == 3);
    SetActDev(2);
    EXPECT(iActDev == 2);
    listIndex = 9;
    USBDisconnect();
    EXPECT(listIndex == 0 && iDevsFnd == 0);
    return exitStatus();
}
