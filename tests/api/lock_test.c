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

/* CALL(function, (arguments)) */
#define CALL(function, arguments)                                                                  \
    static void call_##function(void) { (void)function arguments; }
CALL(GetActiveID, (buffer, 8))
CALL(GetActiveID32, (buffer, 8))
CALL(ReadCfg, ())
CALL(WriteCfg, ())
CALL(USBDisconnect, ())
CALL(getActiveID, (8))
CALL(getActiveID32, (8))
CALL(getActiveID_byte, (0))
CALL(Ping, ())
CALL(GetDevCnt, ())
CALL(SetActDev, (0))
CALL(GetActDev, ())
CALL(GetProduct, ())
CALL(GetDevType, ())
CALL(GetDevName, (name))
CALL(GetDID, ())
CALL(GetLUID, ())
CALL(SetLUID, (1))
CALL(GetSN, ())
CALL(GetFlags2, (NULL))
CALL(GetLastLibErr, ())
CALL(SetUnsupportedProductErrorCode, (0))
CALL(GetUnsupportedProductErrorCode, ())
CALL(GetLibVersion, (NULL, NULL, NULL))
CALL(SetMarkerFunction, (NULL))
CALL(zeltag_USBDeviceConnect, (0x5A3E, 0x9D2B, NULL))

struct Row {
    const char* name;
    void (*call)(void);
    int locks;
};

#define ROW(function, locks)                                                                       \
    { #function, call_##function, locks }
static const struct Row rows[] = {
    ROW(GetActiveID, 1),
    ROW(GetActiveID32, 1),
    ROW(ReadCfg, 1),
    ROW(WriteCfg, 1),
    ROW(USBDisconnect, 1),
    ROW(getActiveID, 0),
    ROW(getActiveID32, 0),
    ROW(getActiveID_byte, 0),
    ROW(Ping, 0),
    ROW(GetDevCnt, 0),
    ROW(SetActDev, 0),
    ROW(GetActDev, 0),
    ROW(GetProduct, 0),
    ROW(GetDevType, 0),
    ROW(GetDevName, 0),
    ROW(GetDID, 0),
    ROW(GetLUID, 0),
    ROW(SetLUID, 0),
    ROW(GetSN, 0),
    ROW(GetFlags2, 0),
    ROW(GetLastLibErr, 0),
    ROW(SetUnsupportedProductErrorCode, 0),
    ROW(GetUnsupportedProductErrorCode, 0),
    ROW(GetLibVersion, 0),
    ROW(SetMarkerFunction, 0),
    ROW(zeltag_USBDeviceConnect, 0),
};

int main(void) {
    int failures = 0;
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
