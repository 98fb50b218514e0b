// SPDX-License-Identifier: MIT
// Start-up and shut-down: what runs when the library is loaded and when it goes.
#include "family/band/band.h"
#include "family/echo/echo.h"
#include "family/tag/tag.h"
#include "firmware/messages.h"
#include "frame/state/state.h"
#include "frame/zelTagAPI.h"
#include "transport/serial_lines.h"
#include "transport/usb_driver.h"

#include <cstdlib>

namespace {

void initialiseLock() {
    pthread_mutexattr_init(&Attr);
    pthread_mutexattr_settype(&Attr, PTHREAD_MUTEX_RECURSIVE);
    pthread_mutex_init(&zelLock, &Attr);
}

// All other variables start as _APIinit() sets them: it isn't run, as that would write the whole
// table.
//
// The end is registered here and not by a destructor attribute, so that it also runs at dlclose and
// always before the exit handlers of whatever was loaded earlier.
__attribute__((constructor)) void onLoad() {
    zel::buildExportedTexts();
    errorCodes = new ErrorCodes; // stays: exit handlers of the application may still use it
    initialiseLock();
    UsbDriver_Init();
    std::atexit([] { _APIfini(); });
}

} // namespace

void _APIinit() {
    initialiseLock();
    zel::clearTable();
    CPort_Init();
    UsbDriver_Init();
    zeltag_Init();
    zelband_Init();
    zelecho_Init();
    zel::setUnsupportedValue(0);
    zel::setConnectProducts(UINT32_MAX);
}

int _APIfini() {
    zelecho_Exit();
    zelband_Exit();
    zeltag_Exit();
    UsbDriver_Exit();
    return pthread_mutex_destroy(&zelLock);
}
