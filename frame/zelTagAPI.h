/* SPDX-License-Identifier: MIT */
/* The public interface of libzelTagAPI: find identification devices and read the card in the field.
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
 * Lock: a call marked "locks" holds the library's one recursive mutex from entry to exit. All other
 * calls run unlocked; an application with several threads serialises those itself.
 */
#ifndef ZELTAGAPI_H
#define ZELTAGAPI_H

#include "frame/zelTagExport.h"

#include <stdbool.h>
#include <stdint.h>

ZELTAGAPI_BEGIN

/* ---- Library ---- */

/** The version of this header; GetLibVersion() tells that of the library in use. */
#define ZELTAGAPI_VERSION_MAJOR 7
#define ZELTAGAPI_VERSION_MINOR 6
#define ZELTAGAPI_VERSION_BUILD 4

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

/** Does nothing; takes the arguments of printf. */
ZELTAGAPI_EXPORT void _DPrintf(const char* format, ...) ZELTAGAPI_PRINTF(1, 2);

/** Does nothing. */
ZELTAGAPI_EXPORT void DebugDump(void);

/* ---- Errors ---- */

/** Bits of the error word that GetLastLibErr() returns, as far as the calls of this header set
 * them. */
enum {
    /** A card's identifier could not be read: a feature report failed, or the buffer was null. */
    ZELTAGAPI_ERR_ID_READ = 0x1000000
};

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

/* ---- Connect ---- */

/** The USB identity of the proximity reader, for zeltag_USBDeviceConnect(). */
enum { ZELTAG_USB_VENDOR = 0x5A3E, ZELTAG_USB_PRODUCT = 0x9D23 };

/** Product codes of GetProduct(). */
enum { ZELTAGAPI_ZELTAG = 1, ZELTAGAPI_ZELBAND = 2, ZELTAGAPI_ZELECHO = 4 };

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

/** @return the number of devices in the table, 0 to 127 */
ZELTAGAPI_EXPORT int GetDevCnt(void);

/** Makes a device the active one.
 * @param device index from 0 to below GetDevCnt()
 * @return 1, or 0 for an index outside, which leaves the active device as it is */
ZELTAGAPI_EXPORT int SetActDev(short device);

/** @return the index of the active device */
ZELTAGAPI_EXPORT int GetActDev(void);

/** @return the active device's product code, 0 with no device */
ZELTAGAPI_EXPORT unsigned int GetProduct(void);

/** @return the active device's transport: 0 USB feature reports, 1 a byte stream. Without a device
 * that of record 0. */
ZELTAGAPI_EXPORT int GetDevType(void);

/** Copies the active device's name: for USB its device path.
 * @param name at least 512 bytes
 * @return 999 for a USB device, the port number for a device on a line, the unsupported value with
 * no active device or a null `name` */
ZELTAGAPI_EXPORT int GetDevName(char* name);

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

/* ---- Configuration ---- */

/** Reads the active device's configuration into the library. Locks. No product offers it yet.
 * @return 0 with no active device, else the unsupported value */
ZELTAGAPI_EXPORT int ReadCfg(void);

/** Writes what was changed of the configuration to the active device. Locks. No product offers it
 * yet.
 * @return 0 with no active device, else the unsupported value */
ZELTAGAPI_EXPORT int WriteCfg(void);

struct sCfgFlags2;

/** Copies the second set of flags out of the library. No product offers it yet.
 * @param flags receives the record
 * @return the unsupported value */
ZELTAGAPI_EXPORT int GetFlags2(struct sCfgFlags2* flags);

/* ---- Card data ---- */

/** Reads the identifier of the card in the active reader's field, up to 64 bits.
 * Two queries (opcodes 0x8F and 0x8E): two feature reports out, two in (USB HID 1.11, 7.2.1 and
 * 7.2.2). A report that can't be sent is tried six times, with 80 ms after each try. Locks.
 * @param buffer at least 32 bytes, whatever `size` says; receives the identifier, little-endian,
 * zeros behind it
 * @param size bytes of the identifier wanted, 0 to 32; the reader delivers 8 at most
 * @return the identifier's bit count, 1 to 255; 0 for no card or a failure, told apart by
 * GetLastLibErr(): 0, or ZELTAGAPI_ERR_ID_READ. The unsupported value with no active device. */
ZELTAGAPI_EXPORT int GetActiveID(unsigned char* buffer, short size);

/** As GetActiveID(), for identifiers of up to 255 bits: five queries (opcode 0x8D with pages 0 to
 * 3, then 0x8E), and `size` up to 32 bytes are copied. */
ZELTAGAPI_EXPORT int GetActiveID32(unsigned char* buffer, short size);

/** As GetActiveID() for callers that can't pass a buffer: the identifier goes to the library's own
 * buffer, see getActiveID_byte().
 * @param size 0 to 32; any other value counts as 32 */
ZELTAGAPI_EXPORT int getActiveID(short size);

/** As getActiveID(), with the queries of GetActiveID32(). */
ZELTAGAPI_EXPORT int getActiveID32(short size);

/** One byte of the identifier last read by getActiveID() or getActiveID32(). No device traffic.
 * @param index 0 to the size given there, at most 31
 * @return the byte, 0 for an index outside; the unsupported value with no active device */
ZELTAGAPI_EXPORT int getActiveID_byte(short index);

/** Tests whether the active device is present and measures the test: one query of opcode 0x8A on a
 * proximity reader. Not locked.
 * @return 1 to 65535, the elapsed milliseconds, when present; else the clock's value at the start,
 * a number far above 65535 */
ZELTAGAPI_EXPORT uint64_t Ping(void);

ZELTAGAPI_END

#endif
