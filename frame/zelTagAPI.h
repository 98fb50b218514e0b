/* SPDX-License-Identifier: MIT */
/** @file
 * The public interface of libzelTagAPI: find identification devices and read the card in the field.
 *
 * The library keeps one process-wide table of up to 127 devices. Each call works on the one active
 * device, on the caller's thread, and starts no thread of its own. The library is ready once it is
 * loaded; nothing has to be called first.
 *
 * Results are 1 for success and 0 for failure unless a call says otherwise; 16-bit values come
 * sign-extended to int. A call that nothing can serve (no active device, or a product without that
 * operation) returns the value set with SetUnsupportedProductErrorCode(), 0 at start: this header
 * calls it the unsupported value. The reason of a failure is in the device's error word, see
 * GetLastLibErr().
 *
 * A device is reached by USB feature reports, or on a byte stream: a serial line (zelTagLines.h) or
 * a network bridge (zelTagNetwork.h). The traffic that calls tell is that of reports; on a stream
 * the same command travels as a frame, 50 ms and more each, whose status word stays in
 * `lLastICSWErr`: 0x9000 success, 0 none came. What a stream has no form for fails there at once.
 *
 * Lock: a call marked "locks" holds the library's one recursive mutex from entry to exit. All other
 * calls run unlocked; an application with several threads serialises those itself.
 */
#ifndef ZELTAGAPI_H
#define ZELTAGAPI_H

#include "frame/zelTagAccessors.h"
#include "frame/zelTagBand.h"
#include "frame/zelTagCards.h"
#include "frame/zelTagEcho.h"
#include "frame/zelTagErrors.h"
#include "frame/zelTagExport.h"
#include "frame/zelTagFirmware.h"
#include "frame/zelTagLines.h"
#include "frame/zelTagNetwork.h"
#include "frame/zelTagRecords.h"
#include "frame/zelTagServices.h"
#include "frame/zelTagSettings.h"
#include "frame/zelTagTemplates.h"

#include <stdbool.h>
#include <stdint.h>

ZELTAGAPI_BEGIN

/** @name Library
 *
 * No device traffic, but for _APIfini(), which closes the devices; no lock of their own.
 * @{ */

/* The version of this header; GetLibVersion() tells that of the library in use. */

#define ZELTAGAPI_VERSION_MAJOR 7 /**< the header's major version */
#define ZELTAGAPI_VERSION_MINOR 6 /**< the header's minor version */
#define ZELTAGAPI_VERSION_BUILD 4 /**< the header's build number */

/** Sets the library up: the lock, an empty device table and all defaults.
 * Runs by itself when the library is loaded. Calling it again clears the table and initialises the
 * lock anew without closing what is open. No device traffic; no lock. */
ZELTAGAPI_EXPORT void _APIinit(void);

/** Shuts the library down: closes all devices, then the platform's HID service, then the lock.
 * Runs by itself when the process exits or the library is unloaded.
 * @return the result of destroying the mutex, 0 for success */
ZELTAGAPI_EXPORT int _APIfini(void);

/** Does nothing; kept for applications that call it before a connect. */
ZELTAGAPI_EXPORT void initialize(void);

/** Stores the library's version. No device traffic; no lock.
 * @param major receives 7; may be null
 * @param minor receives 6; may be null
 * @param build receives 4; may be null
 * @return always 1 */
ZELTAGAPI_EXPORT int GetLibVersion(short* major, short* minor, short* build);

/** @return the major version, 7 */
ZELTAGAPI_EXPORT int getLibraryVersion_Major(void);

/** @return the minor version, 6 */
ZELTAGAPI_EXPORT int getLibraryVersion_Minor(void);

/** @return the build number, 4 */
ZELTAGAPI_EXPORT int getLibraryVersion_Build(void);

/** @return the mark of a beta version: an empty text in a released library, never null */
ZELTAGAPI_EXPORT const char* getLibraryVersion_Beta(void);

/** @return whether the environment variable ZELTAGAPI_LOGGING exists at this moment, whatever its
 * value */
ZELTAGAPI_EXPORT bool isLoggingEnabled(void);

/** A marker function, see SetMarkerFunction(). */
typedef void (*zelMarkerFunction)(void);

/** Stores a marker function while ZELTAGAPI_LOGGING is set. The library never calls it.
 * @param function the function to store
 * @return `function`, or null with nothing stored when logging isn't enabled */
ZELTAGAPI_EXPORT zelMarkerFunction SetMarkerFunction(zelMarkerFunction function);

/** Does nothing. */
ZELTAGAPI_EXPORT void Debug(void);

/** Does nothing; takes the arguments of printf.
 * @param format as of printf */
ZELTAGAPI_EXPORT void _DPrintf(const char* format, ...) ZELTAGAPI_PRINTF(1, 2);

/** Does nothing. */
ZELTAGAPI_EXPORT void DebugDump(void);

/** @} */

/** @name Errors
 *
 * No device traffic; no lock.
 * @{ */

/** @return the error word of the active device, told by its last operation, 0 for none; without an
 * active device the unsupported value. No device traffic; no lock. */
ZELTAGAPI_EXPORT int64_t GetLastLibErr(void);

/** Chooses the value that a call returns when nothing can serve it, so that an application can tell
 * "not supported" from "failed".
 * @param code the value; its low 16 bits are kept
 * @return the value now in force, sign-extended */
ZELTAGAPI_EXPORT int SetUnsupportedProductErrorCode(int code);

/** @return the unsupported value, -32768 to 32767, 0 at start */
ZELTAGAPI_EXPORT int GetUnsupportedProductErrorCode(void);

/** @} */

/** @name Connect
 *
 * Fill, choose from and empty the device table.
 * @{ */

/** The USB identity of the proximity reader, for zeltag_USBDeviceConnect(). */
enum { ZELTAG_USB_VENDOR = 0x5A3E, ZELTAG_USB_PRODUCT = 0x9D23 };

/** Product codes of GetProduct(). */
enum { ZELTAGAPI_ZELTAG = 1, ZELTAGAPI_ZELBAND = 2, ZELTAGAPI_ZELECHO = 4 };

/** Chooses which products a connect tries.
 * @param mask bits ZELTAGAPI_ZELTAG, ZELTAGAPI_ZELBAND, ZELTAGAPI_ZELECHO; all at start
 * @return always 1 */
ZELTAGAPI_EXPORT int SetConnectProduct(unsigned int mask);

/** Chooses which transports USBConnect() tries: 0 USB, 1 serial, 2 TCP, 65535 or -1 all, in this
 * order until one has a device. At start all: where nothing is attached, such a connect goes on to
 * the registered lines and to the address of SetIpPort(), which can take minutes.
 * @param type 0, 1, 2, 65535 or -1
 * @return 1, or 0 for another value, which changes nothing */
ZELTAGAPI_EXPORT int SetDevTypeSrch(short type);

/** Finds the devices on the transports of SetDevTypeSrch() and reads the configuration of each, so
 * that the calls on records need no traffic afterwards; of a multi-configuration reader behind
 * device 0 only the active configuration: SetActDev() and ReadCfg() read its others. Device 0 is
 * the active one. Closes nothing: call USBDisconnect() before a second connect. Reads the device
 * filter list first. Locks.
 * @param did null, or receives the device ID of device 0
 * @return 1; 0 when there is none, or when a device's configuration can't be read: then GetDevCnt()
 * tells how many were found, and `lLastCnctErr` has bit 0x10000 */
ZELTAGAPI_EXPORT int USBConnect(int64_t* did);

/** As USBConnect() without a place for the device ID.
 * @return as USBConnect() */
ZELTAGAPI_EXPORT int usbConnect(void);

/** Scans USB for proximity readers and appends each to the device table.
 * Only ZELTAG_USB_VENDOR with ZELTAG_USB_PRODUCT finds any, the readers of the device filter list
 * among them. The scan ends when a reader can't be opened; those found before stay. Opens each
 * device; sends no report. Not locked. GetDevCnt() tells how many stand in the table.
 * @param vendor USB vendor ID
 * @param product USB product ID
 * @param did null, or receives the device ID held by the record after the first new one
 * @return that record's handle when `did` isn't null and a device was found, else -1 */
ZELTAGAPI_EXPORT intptr_t zeltag_USBDeviceConnect(unsigned short vendor, unsigned short product,
                                                  unsigned short* did);

/** Closes all devices and empties the table. Names, configurations and error words of the records
 * stay readable until a record is filled again. Locks.
 * @return always 1 */
ZELTAGAPI_EXPORT int USBDisconnect(void);

/** @return the active device's product code, 0 with no device */
ZELTAGAPI_EXPORT unsigned int GetProduct(void);

/** Makes a device the active one.
 * @param device index from 0 to below GetDevCnt()
 * @return 1, or 0 for an index outside, which leaves the active device as it is */
ZELTAGAPI_EXPORT int SetActDev(short device);

/** @return the index of the active device */
ZELTAGAPI_EXPORT int GetActDev(void);

/** @return the number of devices in the table, 0 to 127 */
ZELTAGAPI_EXPORT int GetDevCnt(void);

/** @} */

/** @name Device identity
 *
 * No device traffic; no lock.
 * @{ */

/** @return the active device's transport: 0 USB feature reports, 1 a byte stream. Without a device
 * that of record 0. */
ZELTAGAPI_EXPORT int GetDevType(void);

/** As GetDevType().
 * @return as GetDevType() */
ZELTAGAPI_EXPORT int nv_GetDevType(void);

/** @return the device ID that the active device reported; without a device that of record 0 */
ZELTAGAPI_EXPORT int GetDID(void);

/** @return the logical unit ID of the active device; without a device that of record 0 */
ZELTAGAPI_EXPORT int GetLUID(void);

/** Gives the active device a logical unit ID, without a device record 0. It stays in the library
 * until the configuration is written.
 * @param luid 0 to 65535
 * @return always 1 */
ZELTAGAPI_EXPORT int SetLUID(unsigned short luid);

/** @return the serial number slot of the active device: 65535 for a proximity reader whose
 * configuration was read; without a device that of record 0 */
ZELTAGAPI_EXPORT int64_t GetSN(void);

/** Copies the active device's name: for USB its device path.
 * @param name at least 512 bytes
 * @return 999 for a USB device, the port number for a device on a line, the unsupported value with
 * no active device or a null `name` */
ZELTAGAPI_EXPORT int GetDevName(char* name);

/** As GetDevName(), with a 16-bit result.
 * @param name at least 512 bytes
 * @return as there */
ZELTAGAPI_EXPORT int nv_GetDevName(char* name);

/** @return a character of the active device's name, index 0 to 511; else 0
 * @param index 0 for the first character */
ZELTAGAPI_EXPORT int getDevName_char(short index);

/** Finds a device by its logical unit ID, since the order of devices is undefined.
 * @param luid the ID
 * @param start first index to look at, at least 0; go on behind a hit when IDs repeat
 * @return its index, or -1 */
ZELTAGAPI_EXPORT int GetDevByLUID(short luid, short start);

/** Stores a pointer to the fixed text "linux".
 * @param name receives the pointer; may be null
 * @return always 1 */
ZELTAGAPI_EXPORT int GetHIDGuid(const char** name);

/** @} */

/** @name Presence
 * @{ */

/** Tests whether the active device is present and measures the test: one query of opcode 0x8A on a
 * proximity reader, one or two commands on a magnetic stripe reader. Not locked.
 * @return 1 to 65535, the elapsed milliseconds, when present; else the clock's value at the start,
 * a number far above 65535 */
ZELTAGAPI_EXPORT uint64_t Ping(void);

/** @} */

/** @name Hot plug
 *
 * The library watches for no devices itself: the application tells it of arrivals and removals by
 * name. After each of these calls that changed or compared the table device 0 is the active one. A
 * device on a byte stream counts as a gap, and gaps are closed, one a call: with such devices in
 * the table each call takes one off its end. No device traffic but the closing of a handle; no
 * lock.
 * @{ */

/** Tells the library that a device arrived, through the family of the active device, whatever
 * arrived. The record added only holds a place: USBConnect() makes it work. A sensor's name goes to
 * device 0.
 * @param name the family's arrival name, in any case and with nothing behind it: two backslashes, a
 * question mark, a backslash, then "HID#Vid_5a3e&Pid_9d23" for a proximity reader and a stripe
 * reader, "HID#Vid_8e4a&Pid_9d2a" for a sensor
 * @return 1 when a record was added, else 0; the unsupported value with no active device */
ZELTAGAPI_EXPORT int ChkAddArrival(const char* name);

/** The same with the name given by characters.
 * @param index 0 starts the name anew, 1 to 254 go on, 255 ends it
 * @param character the character at the index; none at 255
 * @return 1 for a character kept, 0 for another index; at 255 the result of ChkAddArrival() */
ZELTAGAPI_EXPORT int chkAddArrival_char(short index, short character);

/** Tells the library that a device left. What is removed is the first device of the table that
 * holds a USB handle, whichever has the name.
 * @param name the device's name in the table, compared without case, below 512 characters
 * @return 1 when a record was removed, else 0 */
ZELTAGAPI_EXPORT int ChkDelRemoval(const char* name);

/** The same with the name given by characters, see chkAddArrival_char().
 * @param index 0 to 255
 * @param character the character at the index
 * @return as chkAddArrival_char(), with the result of ChkDelRemoval() */
ZELTAGAPI_EXPORT int chkDelRemoval_char(short index, short character);

/** @} */

/** @name Filter list
 *
 * Which USB identities count as proximity readers. No device traffic but for the last one; no lock.
 * @{ */

/** Reads the device filter list: "zelTagVIDPID.txt" of the working directory, else
 * "/home/norvane/zelTagVidPid.txt", else nine fixed lines. USBConnect() does so by itself. */
ZELTAGAPI_EXPORT void LoadzelTagVidPidListFile(void);

/** @return the name that the filter list gives the active device, "5A3E:9D23 Norvanex" for the
 * built-in identity and with no device; empty for a device that isn't a USB proximity reader */
ZELTAGAPI_EXPORT const char* GetVidPidVendorName(void);

/** @return a character of GetVidPidVendorName(), 0 from its end on
 * @param index 0 for the first character */
ZELTAGAPI_EXPORT int getVidPidVendorName_char(short index);

/** @return the filter list's mask for the active device; the list hands it on and doesn't use it.
 * @param index 1 has data; 0 yields 0 */
ZELTAGAPI_EXPORT int64_t GetVidPidFilterMask(int index);

/** @return the compare value that belongs to GetVidPidFilterMask()
 * @param index as there */
ZELTAGAPI_EXPORT int64_t GetVidPidFilterCompare(int index);

/** Whether the active reader is of the kind that starts in a keystroke mode and takes a beep code
 * of 0 as the command that ends it. No device traffic. @return 1 or 0 */
ZELTAGAPI_EXPORT int isKQ7Reader(void);

/** Ends that mode: BeepNow(0, 0). A connect does so by itself. */
ZELTAGAPI_EXPORT void unlockKeystrokeModeOfKQ7(void);

/** @} */

ZELTAGAPI_END

#endif
