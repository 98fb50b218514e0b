/* SPDX-License-Identifier: MIT */
/* Which exported calls take the library's lock, and which don't: the program counts the calls of
 * pthread_mutex_lock on it. */
#define _GNU_SOURCE
#include "frame/zelTagAPI.h"
#include "frame/zelTagState.h"

#include <dlfcn.h>
#include <stdio.h>

static int taken;
static int held;
static unsigned char buffer[32];
static char name[512];

int pthread_mutex_lock(pthread_mutex_t* mutex) {
    int (*next)(pthread_mutex_t*);
    *(void**)&next = dlsym(RTLD_NEXT, "pthread_mutex_lock");
    if (mutex == &zelLock) {
        ++taken;
        ++held;
    }
    return next(mutex);
}

int pthread_mutex_unlock(pthread_mutex_t* mutex) {
    int (*next)(pthread_mutex_t*);
    *(void**)&next = dlsym(RTLD_NEXT, "pthread_mutex_unlock");
    if (mutex == &zelLock)
        --held;
    return next(mutex);
}

/* The seven calls that hold the lock, and two that do nothing but call one of them. */
#define LOCKING(CALL)                                                                              \
    CALL(GetActiveID, (buffer, 8))                                                                 \
    CALL(GetActiveID32, (buffer, 8))                                                               \
    CALL(ReadCfg, ())                                                                              \
    CALL(WriteCfg, ())                                                                             \
    CALL(USBConnect, (NULL))                                                                       \
    CALL(USBDisconnect, ())                                                                        \
    CALL(BeepNow, (1, 0))                                                                          \
    CALL(usbConnect, ())                                                                           \
    CALL(unlockKeystrokeModeOfKQ7, ())

/* All the others. */
#define UNLOCKED(CALL)                                                                             \
    CALL(getActiveID, (8))                                                                         \
    CALL(getActiveID32, (8))                                                                       \
    CALL(getActiveID_byte, (0))                                                                    \
    CALL(Ping, ())                                                                                 \
    CALL(SetConnectProduct, (0))                                                                   \
    CALL(SetDevTypeSrch, (0))                                                                      \
    CALL(zeltag_USBDeviceConnect, (0x5A3E, 0x9D2B, NULL))                                          \
    CALL(ComConnect, (NULL))                                                                       \
    CALL(ComConnectPort, (1, NULL))                                                                \
    CALL(comConnect, ())                                                                           \
    CALL(comConnectPort, (1))                                                                      \
    CALL(ComDisconnect, ())                                                                        \
    CALL(SetComLinux, (1, ""))                                                                     \
    CALL(SetComSrchRange, (1, 8))                                                                  \
    CALL(VirtualComSearchRange, (0, 0))                                                            \
    CALL(SetIpPort, (127, 0, 0, 1, 9))                                                             \
    CALL(GetMyIpAddress, ())                                                                       \
    CALL(FindXport, (127, 0, 0, 2, 1))                                                             \
    CALL(LoadzelTagVidPidListFile, ())                                                             \
    CALL(GetVidPidVendorName, ())                                                                  \
    CALL(getVidPidVendorName_char, (0))                                                            \
    CALL(GetVidPidFilterMask, (1))                                                                 \
    CALL(GetVidPidFilterCompare, (1))                                                              \
    CALL(GetDevCnt, ())                                                                            \
    CALL(SetActDev, (0))                                                                           \
    CALL(GetActDev, ())                                                                            \
    CALL(GetProduct, ())                                                                           \
    CALL(GetDevType, ())                                                                           \
    CALL(nv_GetDevType, ())                                                                        \
    CALL(GetDevName, (name))                                                                       \
    CALL(nv_GetDevName, (name))                                                                    \
    CALL(getDevName_char, (0))                                                                     \
    CALL(GetDevByLUID, (1, 0))                                                                     \
    CALL(GetDID, ())                                                                               \
    CALL(GetLUID, ())                                                                              \
    CALL(SetLUID, (1))                                                                             \
    CALL(GetSN, ())                                                                                \
    CALL(GetFlags, (NULL))                                                                         \
    CALL(SetFlags, (NULL))                                                                         \
    CALL(GetFlags2, (NULL))                                                                        \
    CALL(SetFlags2, (NULL))                                                                        \
    CALL(GetFlags3, (NULL))                                                                        \
    CALL(SetFlags3, (NULL))                                                                        \
    CALL(GetIDBitCnts, (NULL))                                                                     \
    CALL(SetIDBitCnts, (NULL))                                                                     \
    CALL(GetIDDispParms, (NULL))                                                                   \
    CALL(SetIDDispParms, (NULL))                                                                   \
    CALL(GetIDDispParms2, (NULL))                                                                  \
    CALL(SetIDDispParms2, (NULL))                                                                  \
    CALL(GetIDDispParms3, (NULL))                                                                  \
    CALL(SetIDDispParms3, (NULL))                                                                  \
    CALL(GetTimeParms, (NULL))                                                                     \
    CALL(SetTimeParms, (NULL))                                                                     \
    CALL(GetLEDCtrl, (NULL))                                                                       \
    CALL(SetLEDCtrl, (NULL))                                                                       \
    CALL(GetBprRlyCtrl, (NULL))                                                                    \
    CALL(SetBprRlyCtrl, (NULL))                                                                    \
    CALL(GetSepFldData, (NULL, 128))                                                               \
    CALL(SetSepFldData, (NULL, 128))                                                               \
    CALL(SetHashKeyData, (NULL))                                                                   \
    CALL(SetAZERTYShiftLock, (1))                                                                  \
    CALL(GetAZERTYShiftLock, ())                                                                   \
    CALL(SetExtendedPrecisionMath, (1))                                                            \
    CALL(GetExtendedPrecisionMath, ())                                                             \
    CALL(Set64BytesInPackets, (1))                                                                 \
    CALL(Get64BytesInPackets, ())                                                                  \
    CALL(SetEasyReadMode, (1))                                                                     \
    CALL(GetEasyReadMode, ())                                                                      \
    CALL(SetPrependCSN, (1))                                                                       \
    CALL(GetPrependCSN, ())                                                                        \
    CALL(GetEnhanceSecurityFlag, ())                                                               \
    CALL(SetEnhanceSecurityFlag, (1))                                                              \
    CALL(ResetFactoryDflts, ())                                                                    \
    CALL(ResetUserDflts, ())                                                                       \
    CALL(SaveUserDflts, ())                                                                        \
    CALL(zelTagPlusDefaults, ())                                                                   \
    CALL(GetMaxConfig, ())                                                                         \
    CALL(GetActConfig, ())                                                                         \
    CALL(SetActConfig, (0))                                                                        \
    CALL(GetCardType, ())                                                                          \
    CALL(GetCardPriority, ())                                                                      \
    CALL(SetCardTypePriority, (1, 1))                                                              \
    CALL(IsCardTypeInList, (1))                                                                    \
    CALL(isKQ7Reader, ())                                                                          \
    CALL(SetBeeperVolume, (1))                                                                     \
    CALL(GetBeeperVolume, ())                                                                      \
    CALL(SetBTLEConfiguration, (1))                                                                \
    CALL(GetBTLEConfiguration, ())                                                                 \
    CALL(IsBTLEPresent, ())                                                                        \
    CALL(ReadBaudRate, ())                                                                         \
    CALL(WriteBaudRate, (1))                                                                       \
    CALL(SetBaudRate, (9600))                                                                      \
    CALL(GetFirmwareVersion, (0, 0))                                                               \
    CALL(GetFullFWVersion, ())                                                                     \
    CALL(GetFWFilename, ())                                                                        \
    CALL(getPartNumberString, ())                                                                  \
    CALL(getPartNumberString_char, (0))                                                            \
    CALL(getESN, ())                                                                               \
    CALL(WriteSEKeyRefrence, (buffer, 4, 1))                                                       \
    CALL(WriteEV1FileRefrence, (buffer, 4))                                                        \
    CALL(GetHIDGuid, (NULL))                                                                       \
    CALL(initialize, ())                                                                           \
    CALL(GetLastLibErr, ())                                                                        \
    CALL(SetUnsupportedProductErrorCode, (0))                                                      \
    CALL(GetUnsupportedProductErrorCode, ())                                                       \
    CALL(GetLibVersion, (NULL, NULL, NULL))                                                        \
    CALL(SetMarkerFunction, (NULL))

#define DEFINE(function, arguments)                                                                \
    static void call_##function(void) { (void)function arguments; }
LOCKING(DEFINE)
UNLOCKED(DEFINE)

struct Row {
    const char* name;
    void (*call)(void);
    int locks;
};

#define LOCKING_ROW(function, arguments) {#function, call_##function, 1},
#define UNLOCKED_ROW(function, arguments) {#function, call_##function, 0},
static const struct Row rows[] = {LOCKING(LOCKING_ROW) UNLOCKED(UNLOCKED_ROW)};

int main(void) {
    int failures = 0;
    SetConnectProduct(0); /* a connect that looks for nothing */
    for (size_t i = 0; i < sizeof rows / sizeof rows[0]; ++i) {
        taken = 0;
        rows[i].call();
        if (taken == rows[i].locks && held == 0)
            continue;
        printf("%s took the lock %d times, expected %d; held %d behind it\n", rows[i].name, taken,
               rows[i].locks, held);
        ++failures;
    }
    return failures == 0 ? 0 : 1;
}
