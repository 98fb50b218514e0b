// SPDX-License-Identifier: MIT
// Defines the exported data.
#include "frame/state.h"

#include <new>

// The library reaches a variable as zelTagAPI_NAME; its told name is a weak alias of that.
#ifdef __ELF__
#define ZEL_LABEL(name) __asm__("zelTagAPI_" #name)
#define ZEL_ALIAS(name)                                                                            \
    extern "C" ZELTAGAPI_EXPORT decltype(name) zelAlias_##name __asm__(#name)                      \
        __attribute__((weak, alias("zelTagAPI_" #name)));
#else
#define ZEL_LABEL(name) __asm__("_" #name)
#define ZEL_ALIAS(name)
#endif

// One row a variable: its name and its constant initial value. Types stand in the header.
#define ZEL_EXPORTED_DATA(DATA)                                                                    \
    DATA(iActDev, 0)                                                                               \
    DATA(iDevsFnd, 0)                                                                              \
    DATA(cbIndex, 0)                                                                               \
    DATA(pDevDat, DevDat)                                                                          \
    DATA(iCnctDevType, 65535)                                                                      \
    DATA(lLastCnctErr, 0)                                                                          \
    DATA(lLastICSWErr, 0)                                                                          \
    DATA(tcpipUSBmode, false)                                                                      \
    DATA(useACPMode, 0)                                                                            \
    DATA(zelTagVidPid, {})                                                                         \
    DATA(listIndex, 0)                                                                             \
    DATA(VidPidVersion, {})                                                                        \
    DATA(path, {})                                                                                 \
    DATA(iComPortMin, 1)                                                                           \
    DATA(iComPortMax, 8)                                                                           \
    DATA(iVirtualComPortMin, 1)                                                                    \
    DATA(iVirtualComPortMax, 256)                                                                  \
    DATA(LinuxDevPath, {})                                                                         \
    DATA(baudrate, 9600)                                                                           \
    DATA(defaultbaudrate, 9600)                                                                    \
    DATA(ipAdr0, 0)                                                                                \
    DATA(ipAdr1, 0)                                                                                \
    DATA(ipAdr2, 0)                                                                                \
    DATA(ipAdr3, 0)                                                                                \
    DATA(ipPortNum, 0)                                                                             \
    DATA(activeIDBuf, {})                                                                          \
    DATA(activeIDBufSz, 0)                                                                         \
    DATA(activeCardDataBuf, {})                                                                    \
    DATA(QueuedID, {})                                                                             \
    DATA(enhanceSecurityFlagCurrFWState, false)                                                    \
    DATA(gsSonarParms2, {})                                                                        \
    DATA(gsWalkAwayParms2, {})                                                                     \
    DATA(gsWalkUpParms2, {})                                                                       \
    DATA(gsIdleParms2, {})                                                                         \
    DATA(gsRangeInfo2, {})                                                                         \
    DATA(ReaderIsLark, 0)                                                                          \
    DATA(giTargetMicro, 0)                                                                         \
    DATA(fastBootloader, 0)                                                                        \
    DATA(delayNextLine, 0)                                                                         \
    DATA(errorCodes, nullptr)                                                                      \
    DATA(zelLock, {})                                                                              \
    DATA(Attr, {})

#define ZEL_DEFINE(name, ...)                                                                      \
    constinit decltype(name) name = __VA_ARGS__;                                                   \
    ZEL_ALIAS(name)

constinit decltype(DevDat) DevDat = {};
ZEL_ALIAS(DevDat)
ZEL_EXPORTED_DATA(ZEL_DEFINE)

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
