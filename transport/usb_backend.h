/* SPDX-License-Identifier: MIT */
/* The seam between the library and a platform's USB HID services.
 *
 * One file per platform fills the struct (usb_hidraw.cpp, usb_iokit.cpp, usb_none.cpp); the build
 * chooses one, and UsbDriver_UseBackend() replaces it at run time: the simulator does.
 *
 * Contract
 * - Calls come on the application's thread, one at a time as far as the application keeps its own
 *   calls apart; the library adds no lock. No call is made before start() or after stop(), but for
 *   start() itself.
 * - start() and stop() alternate. stop() also runs while the process exits or the library is
 *   unloaded, when objects of the application may already be destroyed.
 * - list() takes a snapshot; ids() and open() index it, 0 to below its result. unlist() drops it,
 *   but isn't called when an open() failed: then the next list() or stop() finds it still there.
 * - open() returns a handle that belongs to the library until close(), never 0 or all ones. `name`
 *   is zeroed before the call; the library cuts it at 511 characters. A device may be open several
 *   times. Each handle is closed once.
 * - setFeature() and getFeature() are one synchronous control transfer each, with no retry and no
 *   pause of their own. A short answer is a received one: `*size` tells its length, and what it
 *   doesn't reach of `data` stays as it was. Neither keeps `data`.
 */
#ifndef ZELTAGAPI_USB_BACKEND_H
#define ZELTAGAPI_USB_BACKEND_H

#include "frame/zelTagExport.h"

ZELTAGAPI_BEGIN

struct UsbBackend {
    int (*start)(void); /**< 1 ready, 0 not */
    void (*stop)(void);
    int (*list)(void); /**< lists the present HID devices afresh; their number */
    void (*ids)(int index, unsigned* vendor, unsigned* product); /**< 0 for what can't be read */
    void* (*open)(int index, char name[512]); /**< a handle and the device's name; null: failed */
    void (*unlist)(void);                     /**< the list is no longer needed */
    void (*close)(void* handle);
    /** Sets a feature report; `data` starts with the report ID unless that is 0. 1 sent, 0 not. */
    int (*setFeature)(void* handle, unsigned char reportId, const unsigned char* data, long size);
    /** Gets one feature report; `data` receives what follows the report ID, `*size` bytes at most.
     * 1 received, 0 not. */
    int (*getFeature)(void* handle, unsigned char reportId, unsigned char* data, long* size);
};

/** Replaces the backend: stops the one in use, starts the other. The struct is copied.
 * @param backend the new backend, all members set; null: the platform's own again
 * @return what start() said; 0 with nothing changed while a device record holds a USB handle, or
 * when a member is null */
ZELTAGAPI_EXPORT int UsbDriver_UseBackend(const struct UsbBackend* backend);

ZELTAGAPI_END

#endif
