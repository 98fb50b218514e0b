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
 * Lock: a call marked "locks" holds the library's one recursive mutex from entry to exit. All other
 * calls run unlocked; an application with several threads serialises those itself.
 */
#ifndef ZELTAGAPI_H
#define ZELTAGAPI_H

#include "frame/zelTagAccessors.h"
#include "frame/zelTagBand.h"
#include "frame/zelTagEcho.h"
#include "frame/zelTagExport.h"
#include "frame/zelTagRecords.h"

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

/* Bits of the error word that GetLastLibErr() returns. */

#define ZELTAGAPI_ERR_NULL 0x1          /**< a null record was passed */
#define ZELTAGAPI_ERR_NEVER_READ 0x2    /**< the configuration was never read */
#define ZELTAGAPI_ERR_READ 0x20000      /**< reading the configuration failed */
#define ZELTAGAPI_ERR_WRITE 0x40000     /**< writing the configuration failed */
#define ZELTAGAPI_ERR_RESET 0x80000     /**< the reset could not be sent */
#define ZELTAGAPI_ERR_GET 0x100000      /**< a get of a record failed, with a reason */
#define ZELTAGAPI_ERR_SET 0x200000      /**< a set of a record failed, with a reason or a code */
#define ZELTAGAPI_ERR_SERVICE 0x1000000 /**< a report of a service failed */
#define ZELTAGAPI_ERR_ID_READ 0x1000000 /**< the identifier could not be read, or a null buffer */
#define ZELTAGAPI_ERR_SET_RADIO 0x20000000    /**< the radio could not be set */
#define ZELTAGAPI_ERR_GET_RADIO 0x40000000    /**< the radio could not be asked */
#define ZELTAGAPI_ERR_FILE_NAME 0x50000000    /**< the firmware file name could not be read */
#define ZELTAGAPI_ERR_FULL_VERSION 0x70000000 /**< the firmware version could not be read */
#define ZELTAGAPI_ERR_REFERENCE 0x80000000    /**< a key or file reference could not be written */
#define ZELTAGAPI_ERR_BLOB 0x81000000         /**< a report of a key blob failed */
#define ZELTAGAPI_ERR_BOOT_ENTRY 0x90100000   /**< the boot loader wasn't entered */
#define ZELTAGAPI_ERR_BOOT_REPLY 0x90200000   /**< the boot loader's reply was lost */
#define ZELTAGAPI_ERR_BOOT_REFUSED 0x90300000 /**< the boot loader refused to start */
#define ZELTAGAPI_ERR_BOOT_LINE 0x90400000    /**< a line was refused or never taken */
#define ZELTAGAPI_ERR_BOOT_DEVICE 0x90500000  /**< no proximity reader on USB */
#define ZELTAGAPI_ERR_BOOT_READER_REFUSED 0x90600000 /**< the reader refused a line */
#define ZELTAGAPI_ERR_BOOT_UNKNOWN_REPLY 0x90700000  /**< the reader's answer isn't known */
#define ZELTAGAPI_ERR_BOOT_FILE 0x90800000           /**< the firmware file can't be opened */
#define ZELTAGAPI_ERR_BOOT_FRAME 0x90900000          /**< a frame of a line could not be sent */
#define ZELTAGAPI_ERR_INTEGRITY 0x91000000 /**< a file's trailer doesn't hold, or isn't made */

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

/** Chooses which transports a connect tries: 0 USB, 1 serial, 2 TCP, 65535 or -1 all.
 * @param type 0, 1, 2, 65535 or -1
 * @return 1, or 0 for another value, which changes nothing */
ZELTAGAPI_EXPORT int SetDevTypeSrch(short type);

/** Finds the devices and reads the configuration of each, so that the calls on records need no
 * traffic afterwards; of a multi-configuration reader behind device 0 only the active
 * configuration: SetActDev() and ReadCfg() read its others. Device 0 is the active one. Closes
 * nothing: call USBDisconnect() before a second connect. Reads the device filter list first. Locks.
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

/** @name Connect through the active device
 *
 * For a device on a line. This version of the library serves no device here yet: until it does, the
 * calls answer as without such a device.
 * @{ */

/** Scans the lines as ComConnect() does, through the family of the active device.
 * @return the family's result; the unsupported value where no family on a line is active */
ZELTAGAPI_EXPORT int comConnect(void);

/** As comConnect(), for one line.
 * @param port its number
 * @return as there */
ZELTAGAPI_EXPORT int comConnectPort(unsigned short port);

/** Closes the active device's line; its record stays.
 * @return as comConnect() */
ZELTAGAPI_EXPORT int ComDisconnect(void);

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
 * proximity reader. Not locked.
 * @return 1 to 65535, the elapsed milliseconds, when present; else the clock's value at the start,
 * a number far above 65535 */
ZELTAGAPI_EXPORT uint64_t Ping(void);

/** @} */

/** @name Hot plug
 *
 * The library watches for no devices itself: the application tells it of arrivals and removals by
 * name. No lock. This version of the library serves no device here yet: until it does, the calls
 * answer as without such a device.
 * @{ */

/** Tells the library that a device arrived, through the family of the active device.
 * @param name the arriving device's name, below 512 characters
 * @return 1 when a record was added, else 0; the unsupported value with no active device */
ZELTAGAPI_EXPORT int ChkAddArrival(const char* name);

/** The same with the name given by characters.
 * @param index 0 starts the name anew, 1 to 254 go on, 255 ends it
 * @param character the character at the index; none at 255
 * @return 1 for a character kept, 0 for another index; at 255 the result of ChkAddArrival() */
ZELTAGAPI_EXPORT int chkAddArrival_char(short index, short character);

/** Tells the library that a device left.
 * @param name the device's name in the table, compared without case
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

/** @name Lines
 *
 * The bytes of a device on a line; no lock. This version of the library serves no device here yet:
 * until it does, the calls answer as without such a device.
 * @{ */

/** Sets the speed at which the next serial connect opens ports, in baud; not tested.
 * @param rate baud */
ZELTAGAPI_EXPORT void SetBaudRate(unsigned int rate);

/** Reads what the active device's line brings.
 * @param buffer at least `size` bytes
 * @param size bytes wanted
 * @return the count read; 0 for a device without an open line */
ZELTAGAPI_EXPORT int64_t ReadSerialPort(unsigned char* buffer, unsigned int size);

/** Writes to the active device's line.
 * @param buffer `size` bytes
 * @param size bytes to write
 * @return the count written; 0 for a device without an open line */
ZELTAGAPI_EXPORT int64_t WriteSerialPort(const unsigned char* buffer, unsigned int size);

/** As ReadSerialPort(), waiting for less long.
 * @param buffer at least `size` bytes
 * @param size bytes wanted
 * @return as there */
ZELTAGAPI_EXPORT int64_t QuickReadSerialPort(unsigned char* buffer, unsigned int size);

/** As ReadSerialPort(), into a buffer of the library.
 * @param index -1 (65535) clears the buffer and reads up to 1024 bytes; 0 to 1023 a byte of it
 * @return at -1 the count read; else the byte, sign-extended; 0 for another index */
ZELTAGAPI_EXPORT int readSerialPort_char(short index);

/** As readSerialPort_char(), with QuickReadSerialPort() and a buffer of its own.
 * @param index as there
 * @return as there */
ZELTAGAPI_EXPORT int quickReadSerialPort_char(short index);

/** Changes nothing: the waits of a line are fixed.
 * @param first of no effect
 * @param second of no effect
 * @param third of no effect */
ZELTAGAPI_EXPORT void SetSerialTimeouts(int first, int second, int third);

/** @} */

/** @name Whole configuration
 * @{ */

/** Reads the active device's whole configuration into the library: for a proximity reader its LUID,
 * four blocks, field data and texts, once for each of its configurations. Locks.
 * @return 1; 0 with no active device or with ZELTAGAPI_ERR_READ; the unsupported value for another
 * product */
ZELTAGAPI_EXPORT int ReadCfg(void);

/** Writes what was changed of the configuration to the active device and lets it commit; pauses 20
 * ms or 1.2 s for each configuration, as the reader needs. Locks.
 * @return 1; 0 with no active device or with ZELTAGAPI_ERR_WRITE; the unsupported value for another
 * product */
ZELTAGAPI_EXPORT int WriteCfg(void);

/** Returns the active reader to its factory defaults, pauses 1.2 s and reads the configuration
 * back. Not locked.
 * @return 1, or 0 with ZELTAGAPI_ERR_RESET or ZELTAGAPI_ERR_READ */
ZELTAGAPI_EXPORT int ResetFactoryDflts(void);

/** Lets a multi-configuration reader return to its user defaults; pauses 100 ms. Read the
 * configuration afterwards.
 * @return 1, or 0 for a failure or a reader of another kind */
ZELTAGAPI_EXPORT int ResetUserDflts(void);

/** Lets a multi-configuration reader keep its current settings as user defaults; pauses 100 ms.
 * @return as ResetUserDflts() */
ZELTAGAPI_EXPORT int SaveUserDflts(void);

/** Lets a multi-configuration reader copy its factory defaults over its user defaults and its
 * current settings; pauses 100 ms each.
 * @return as ResetUserDflts(), of the second copy */
ZELTAGAPI_EXPORT int zelTagPlusDefaults(void);

/** @} */

/** @name Records
 *
 * These calls work on the active configuration of the active proximity reader, in memory: no
 * device traffic, no lock. They return 1; 0 with the reason in the error word; the unsupported
 * value without such a reader.
 *
 * A get copies a record out. It fails with ZELTAGAPI_ERR_GET and ZELTAGAPI_ERR_NULL for a null
 * record or ZELTAGAPI_ERR_NEVER_READ before the first ReadCfg().
 *
 * A set checks the record, copies it in and marks it for WriteCfg(). It fails with
 * ZELTAGAPI_ERR_SET and ZELTAGAPI_ERR_NULL, or the code of the first word out of range: that word's
 * range stands at the call. Words without a range take any value.
 * @{ */

/** Copies the first set of flags out. Of a magnetic stripe reader and of a sensor bHaltKBSnd alone:
 * the other words stay as they are, and the result is 1.
 * @param record receives the record
 * @return see above */
ZELTAGAPI_EXPORT int GetFlags(struct sCfgFlags* record);

/** Sets the first set of flags; of the other products bHaltKBSnd alone.
 * @param record the record to set
 * @return see above */
ZELTAGAPI_EXPORT int SetFlags(struct sCfgFlags* record);

/** Copies the times out, in milliseconds.
 * @param record receives the record
 * @return see above */
ZELTAGAPI_EXPORT int GetTimeParms(struct sTimeParms* record);

/** Sets the times: iBitStrmTO and the key times at most 1020 ms in steps of 4 (codes 0x1030,
 * 0x1033, 0x1034), iIDHoldTO and iIDLockOutTm at most 12750 ms in steps of 50 (0x1031, 0x1032). The
 * record's iTPCfgFlg3 is thrown away.
 * @param record the record to set
 * @return see above */
ZELTAGAPI_EXPORT int SetTimeParms(struct sTimeParms* record);

/** Copies the LED settings out. A sensor has bAppCtrlsLED, iRedLEDState and iGrnLEDState: they are
 * cleared first, and set when its LED flags lie from 0 to 7; other flags are themselves the result.
 * @param record receives the record
 * @return see above */
ZELTAGAPI_EXPORT int GetLEDCtrl(struct sLEDCtrl* record);

/** Sets the LEDs. With bVolatile they change at once (two reports out) and nothing is marked;
 * whether that went well isn't told.
 * @param record the record to set
 * @return see above */
ZELTAGAPI_EXPORT int SetLEDCtrl(struct sLEDCtrl* record);

/** Copies the second set of flags out.
 * @param record receives the record
 * @return see above */
ZELTAGAPI_EXPORT int GetFlags2(struct sCfgFlags2* record);

/** Sets the second set of flags; isASCIIpresent comes from the reader alone.
 * @param record the record to set
 * @return see above */
ZELTAGAPI_EXPORT int SetFlags2(struct sCfgFlags2* record);

/** Copies the third set of flags out; of a magnetic stripe reader bUseNumKP alone, as GetFlags().
 * @param record receives the record
 * @return see above */
ZELTAGAPI_EXPORT int GetFlags3(struct sCfgFlags3* record);

/** Sets the third set of flags. bNotBootDev reaches the reader only when another record marks its
 * block. Of a magnetic stripe reader bUseNumKP alone.
 * @param record the record to set
 * @return see above */
ZELTAGAPI_EXPORT int SetFlags3(struct sCfgFlags3* record);

/** Copies the bit counts out.
 * @param record receives the record
 * @return see above */
ZELTAGAPI_EXPORT int GetIDBitCnts(struct sIDBitCnts* record);

/** Sets the bit counts: parity at most 15, or 142 where ExFeatures01 has bit 7 (codes 0x1010,
 * 0x1011); iIDBitCnt 1 to 255 (0x1012), cut to seven bits on its way to the reader; iTotalBitCnt 26
 * to 255 (0x1013).
 * @param record the record to set
 * @return see above */
ZELTAGAPI_EXPORT int SetIDBitCnts(struct sIDBitCnts* record);

/** Copies the display settings out.
 * @param record receives the record
 * @return see above */
ZELTAGAPI_EXPORT int GetIDDispParms(struct sIDDispParms* record);

/** Sets the display settings: delimiters at most 255 (codes 0x1020, 0x1021), lengths at most 25
 * (0x1022, 0x1023).
 * @param record the record to set
 * @return see above */
ZELTAGAPI_EXPORT int SetIDDispParms(struct sIDDispParms* record);

/** Copies the lead and card-gone characters out.
 * @param record receives the record
 * @return see above */
ZELTAGAPI_EXPORT int GetIDDispParms2(struct sIDDispParms2* record);

/** Sets the lead and card-gone characters: iLeadChrCnt at most 3 (code 0x1050).
 * @param record the record to set
 * @return see above */
ZELTAGAPI_EXPORT int SetIDDispParms2(struct sIDDispParms2* record);

/** Copies the trail characters out.
 * @param record receives the record
 * @return see above */
ZELTAGAPI_EXPORT int GetIDDispParms3(struct sIDDispParms3* record);

/** Sets the trail characters: iTrailChrCnt at most 3 (code 0x1050); leads and trails beyond three
 * together are cut, leads first served.
 * @param record the record to set
 * @return see above */
ZELTAGAPI_EXPORT int SetIDDispParms3(struct sIDDispParms3* record);

/** Copies the beeper and relay settings out.
 * @param record receives the record
 * @return see above */
ZELTAGAPI_EXPORT int GetBprRlyCtrl(struct sBprRlyCtrl* record);

/** Sets beeper and relay, with bVolatile as for SetLEDCtrl().
 * @param record the record to set
 * @return see above */
ZELTAGAPI_EXPORT int SetBprRlyCtrl(struct sBprRlyCtrl* record);

/** Copies the field and separator data out.
 * @param buffer 128 bytes
 * @param size at least 128
 * @return see above; 0 with no error word when `size` is less */
ZELTAGAPI_EXPORT int GetSepFldData(struct uSFD* buffer, short size);

/** Sets the field and separator data of a configuration that was read.
 * @param buffer 128 bytes
 * @param size at least 128
 * @return see above; 0 with no error word when `size` is less */
ZELTAGAPI_EXPORT int SetSepFldData(struct uSFD* buffer, short size);

/** Sets the two key values of 16 bytes; they go to the reader with the field data.
 * @param record 32 bytes
 * @return 1, or the unsupported value */
ZELTAGAPI_EXPORT int SetHashKeyData(struct sHashKeyData* record);

/** @} */

/** @name Card data
 * @{ */

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
 * 3, then 0x8E), and `size` up to 32 bytes are copied.
 * @param buffer at least 32 bytes
 * @param size 0 to 32
 * @return as there */
ZELTAGAPI_EXPORT int GetActiveID32(unsigned char* buffer, short size);

/** As GetActiveID() for callers that can't pass a buffer: the identifier goes to the library's own
 * buffer, see getActiveID_byte().
 * @param size 0 to 32; any other value counts as 32
 * @return as there */
ZELTAGAPI_EXPORT int getActiveID(short size);

/** As getActiveID(), with the queries of GetActiveID32().
 * @param size 0 to 32; any other value counts as 32
 * @return as there */
ZELTAGAPI_EXPORT int getActiveID32(short size);

/** One byte of the identifier last read by getActiveID() or getActiveID32(). No device traffic.
 * @param index 0 to the size given there, at most 31
 * @return the byte, 0 for an index outside; the unsupported value with no active device */
ZELTAGAPI_EXPORT int getActiveID_byte(short index);

/* The calls below share buffers of the library among all devices: read a result before the next
 * call. None of them locks. */

/** Fetches an identifier that the reader queued for the host, with its age: five queries of opcode
 * 0x8C.
 * @param first not 0 sets bit 0 of the mask that goes out with each query
 * @param second not 0 sets bit 1 of it
 * @return 1; 0 with ZELTAGAPI_ERR_SERVICE; the unsupported value without such a reader */
ZELTAGAPI_EXPORT int GetQueuedID(short first, short second);

/** One element of what GetQueuedID() fetched last. No device traffic.
 * @param index 0 to 31 a byte of the identifier, lowest first; 32 a signed word of the entry; 33
 * its age; 34 and 35 a byte of the entry
 * @return the element, 0 for another index; the unsupported value without such a reader */
ZELTAGAPI_EXPORT int64_t GetQueuedID_index(short index);

/** Sends a report of eight bytes of the caller's choice and fetches the reply.
 * @param b1 the command's opcode
 * @param b2 its first argument
 * @param b3 its second argument
 * @param b4 its third argument
 * @param b5 its fourth argument
 * @param b6 its fifth argument
 * @param b7 its sixth argument
 * @param b8 its seventh argument
 * @return the eight reply bytes as hexadecimal pairs joined by points, good until the next call;
 * zeros when the exchange failed; null without such a reader */
ZELTAGAPI_EXPORT const char* SetRawPayload(unsigned char b1, unsigned char b2, unsigned char b3,
                                           unsigned char b4, unsigned char b5, unsigned char b6,
                                           unsigned char b7, unsigned char b8);

/** Builds such a report byte by byte. Index 8 and each one above it sends the report and fetches
 * the reply; no other index causes device traffic.
 * @param index 0 clears request and reply; 1 to 8 the bytes of the report; 9 is stored and not sent
 * along; from 10 on nothing is stored
 * @param value the byte; its low eight bits count
 * @return 1, or 0 when the exchange fails or `index` is negative; the unsupported value without
 * such a reader */
ZELTAGAPI_EXPORT int SetRawPayload_index(short index, short value);

/** One byte of the reply to such a report. No device traffic.
 * @param index 1 to 8 the reply's bytes; 0 and 9 yield 0 after a feature report
 * @return the byte; 2 for an index outside 0 to 9; the unsupported value's low byte without such a
 * reader */
ZELTAGAPI_EXPORT int GetRawPayload_index(short index);

/** Reads 40 bytes of card data into the library's buffer of 256, the rest of which stays as it was:
 * five queries of opcode 0x88.
 * @return 1; 0 with ZELTAGAPI_ERR_SERVICE; the unsupported value without such a reader */
ZELTAGAPI_EXPORT int getActiveCardData(void);

/** One byte of that buffer. No device traffic.
 * @param index 0 to 255
 * @return the byte, 0 for another index; the unsupported value's low byte without such a reader */
ZELTAGAPI_EXPORT int getActiveCardData_byte(short index);

/** Keeps a value with the active proximity reader; the library makes no use of it.
 * @param value any number of a pointer's width
 * @return 1, or 0 without such a reader */
ZELTAGAPI_EXPORT int setSourceEvent(uintptr_t value);

/** Asks the active proximity reader for its fifteen reports, in each of its configurations, and
 * writes requests and replies to a text file for support: fifteen queries a configuration, and one
 * report each time that a configuration is chosen. The active configuration is chosen again at the
 * end. When a report fails or the file can't be written nothing is left behind. USB readers only.
 * @param path the file to write; replaced when it exists
 * @return 1 or 0 */
ZELTAGAPI_EXPORT int DumpRawFeatureReports(const char* path);

/** Does nothing.
 * @param buffer stays as it is
 * @param size of no effect
 * @return always 0 */
ZELTAGAPI_EXPORT int GetRawRepDataI(unsigned char* buffer, short size);

/** @} */

/** @name Beep
 * @{ */

/** Beeps at once: one query. Locks.
 * @param code number of beeps, 1 to 5; 0 counts as 1
 * @param isLong not 0: long beeps, two at most
 * @return 1; 0 with ZELTAGAPI_ERR_SERVICE or no active device; the unsupported value for another
 * product */
ZELTAGAPI_EXPORT int BeepNow(unsigned char code, short isLong);

/** Sets the beeper's volume: one query.
 * @param volume as the reader counts it
 * @return 1, or 0 when the reader doesn't take it; the unsupported value with no active device */
ZELTAGAPI_EXPORT int SetBeeperVolume(unsigned char volume);

/** Asks for the beeper's volume: one query. @return the volume, or -1 */
ZELTAGAPI_EXPORT int GetBeeperVolume(void);

/** @} */

/** @name Firmware identity and texts
 *
 * As the connect read them, but for getESN(). No lock.
 * @{ */

/** A version word of a multi-configuration reader, as the connect read it. No device traffic.
 * @param unit 0 to 2
 * @param slot 0 to 4
 * @return the word, 0 for none. Of a magnetic stripe reader its device ID as slot 0 of unit 0, its
 * version as slot 1. Else the unsupported value. */
ZELTAGAPI_EXPORT unsigned int GetFirmwareVersion(short unit, short slot);

/** @return the firmware version text of the active record; null with no active device */
ZELTAGAPI_EXPORT char* GetFullFWVersion(void);

/** @return the firmware file name of the active record; null with no active device */
ZELTAGAPI_EXPORT char* GetFWFilename(void);

/** @return the part number of the active record; null with no active device */
ZELTAGAPI_EXPORT char* getPartNumberString(void);

/** One character of the part number; index 0 takes a fresh copy.
 * @param index 0 for the first character
 * @return it, or 0 from its end on */
ZELTAGAPI_EXPORT int getPartNumberString_char(short index);

/** Asks a fast USB reader for its electronic serial number: five queries.
 * @return 32 bytes, good until the next call; null when there is none */
ZELTAGAPI_EXPORT unsigned char* getESN(void);

/** @} */

/** @name Reader modes
 *
 * Of the active proximity reader, in memory: no device traffic, no lock.
 * @{ */

/** Sets a keyboard option of block 3.
 * @param value 0 off, 1 on
 * @return 1, or the unsupported value */
ZELTAGAPI_EXPORT int SetAZERTYShiftLock(short value);

/** @return the option, 16 bits */
ZELTAGAPI_EXPORT int GetAZERTYShiftLock(void);

/** Sets a display option of block 3.
 * @param value 0 off, 1 on
 * @return 1, or the unsupported value */
ZELTAGAPI_EXPORT int SetExtendedPrecisionMath(short value);

/** @return the option, 16 bits */
ZELTAGAPI_EXPORT int GetExtendedPrecisionMath(void);

/** @return 128 when the reader's enhanced security flag is set, 0 when not; of configuration 0,
 * whichever is active */
ZELTAGAPI_EXPORT int GetEnhanceSecurityFlag(void);

/** Sets that flag; it goes to the reader with the field data of configuration 0.
 * @param value not 0: set */
ZELTAGAPI_EXPORT void SetEnhanceSecurityFlag(short value);

/** Holds a value that no report and no file carries.
 * @param value 16 bits
 * @return 1, or 0 without a proximity reader */
ZELTAGAPI_EXPORT int Set64BytesInPackets(short value);

/** @return the value held, or 0 */
ZELTAGAPI_EXPORT int Get64BytesInPackets(void);

/** As Set64BytesInPackets().
 * @param value 16 bits
 * @return as there */
ZELTAGAPI_EXPORT int SetEasyReadMode(short value);

/** @return the value held, or 0 */
ZELTAGAPI_EXPORT int GetEasyReadMode(void);

/** As Set64BytesInPackets().
 * @param value 16 bits
 * @return as there */
ZELTAGAPI_EXPORT int SetPrependCSN(short value);

/** @return the value held, or 0 */
ZELTAGAPI_EXPORT int GetPrependCSN(void);

/** Chooses, for all readers on a line, the protocol of text lines. Readers on USB know none. While
 * it is chosen SetIDBitCnts() takes any counts.
 * @param flag not 0: the protocol of text lines
 * @return 1, or the unsupported value without a proximity reader */
ZELTAGAPI_EXPORT int UseAsciiCommandProtocol(short flag);

/** @} */

/** @name Reader services
 *
 * Each asks the active device, whatever its product; no lock.
 * @{ */

/** Sets the radio's configuration: one query.
 * @param configuration 0 to 3
 * @return 1 or 0 */
ZELTAGAPI_EXPORT int SetBTLEConfiguration(unsigned char configuration);

/** Asks for the radio's configuration: one query. @return 0 to 3; -1 without a radio */
ZELTAGAPI_EXPORT int GetBTLEConfiguration(void);

/** Asks whether there is a radio: one query. @return 1 or 0; -1 with no active device */
ZELTAGAPI_EXPORT int IsBTLEPresent(void);

/** Asks for the line's speed code; a USB reader has none and isn't asked. @return the code, or -1
 */
ZELTAGAPI_EXPORT int ReadBaudRate(void);

/** Sets the line's speed code; a USB reader isn't asked.
 * @param code as the reader counts it
 * @return 1 or 0 */
ZELTAGAPI_EXPORT int WriteBaudRate(unsigned char code);

/** Transfers a key reference to the reader's secure element, four bytes a query.
 * @param data `length` bytes
 * @param length 0 to 512; more is refused with ZELTAGAPI_ERR_REFERENCE and nothing is sent
 * @param keyNumber its low eight bits count
 * @return 1 or 0 */
ZELTAGAPI_EXPORT int WriteSEKeyRefrence(unsigned char* data, int length, int keyNumber);

/** Transfers a file reference, as WriteSEKeyRefrence().
 * @param data `length` bytes
 * @param length 0 to 512
 * @return as there */
ZELTAGAPI_EXPORT int WriteEV1FileRefrence(unsigned char* data, int length);

/** @} */

/** @name Several configurations
 *
 * Of the active multi-configuration reader. No device traffic, no lock. On a reader of another
 * kind, or none: 0 unless told otherwise.
 * @{ */

/** @return the highest configuration index, 0 to 10 */
ZELTAGAPI_EXPORT int GetMaxConfig(void);

/** @return the active configuration's index */
ZELTAGAPI_EXPORT int GetActConfig(void);

/** Makes a configuration the active one in the library; the reader isn't told.
 * @param config its low eight bits count, 0 to GetMaxConfig()
 * @return 1, or 0 for an index outside */
ZELTAGAPI_EXPORT int SetActConfig(short config);

/** @return the active configuration's card type, 16 bits; -1 on a reader of another kind */
ZELTAGAPI_EXPORT int GetCardType(void);

/** @return the active configuration's priority, 0 or 1; -1 on a reader of another kind */
ZELTAGAPI_EXPORT int GetCardPriority(void);

/** Sets the active configuration's card type and priority; each WriteCfg() sends them.
 * @param type 16 bits
 * @param priority not 0 counts as 1
 * @return 1 */
ZELTAGAPI_EXPORT int SetCardTypePriority(unsigned short type, short priority);

/** Whether the reader knows a card type; bits 4 to 7 don't count.
 * @param type 16 bits
 * @return 1 when it does, for a type of 0, and when the reader told no list; 0 when not, and
 * without a proximity reader */
ZELTAGAPI_EXPORT int IsCardTypeInList(unsigned short type);

/** @} */

/** @name Template files
 *
 * A proximity reader's settings as text, to be edited and loaded into another reader of its kind.
 * Those of a magnetic stripe reader and of a sensor are not served yet. The calls set no error word
 * of their own: it is that of the last call they made on the device. Their path may be null, which
 * no file has. No lock.
 *
 * A file holds the reader's field data, which may be secret; where the header of these counts more
 * than their 128 bytes, it holds the key values too.
 * @{ */

/** Reads the active reader's settings from the device and writes them to a text file. Its records
 * are those of the device then; the active configuration stays. Device traffic of a ReadCfg(), on a
 * reader of several configurations once for each.
 * @param path the file; replaced when it exists
 * @return 1; 0 when the file can't be created, and then nothing is sent; -1 when no configuration
 * could be read, with a file that holds no settings; 1 too when some could. The unsupported value
 * where the active device has no such files */
ZELTAGAPI_EXPORT int WriteDevCfgToFile(const char* path);

/** Sets what differs in such a file and writes it to the active reader. A record with a word out of
 * range stays as it is, and so do field data of another form; a key that no record has is passed
 * over. Device traffic of a WriteCfg(), on a reader of several configurations once for each, and of
 * volatile LED, beeper and relay settings. Once a write failed, the configurations behind it are
 * set and not written, and the last one stays active.
 * @param path the file
 * @return 1; 0 when a write failed, or with no traffic when the file can't be opened or has no
 * title in its first 128 bytes. The unsupported value where the active device has no such files */
ZELTAGAPI_EXPORT int ReadDevCfgFmFile(const char* path);

/** Collects a path by characters and then READS that file: index 255 runs ReadDevCfgFmFile().
 * @param index 0 starts the path anew, 1 to 254 go on, 255 ends it
 * @param character the character at the index; none at 255
 * @return 1 for a character kept, 0 for another index; at 255 the result of the file call */
ZELTAGAPI_EXPORT int writeDevCfgToFile_char(short index, short character);

/** Collects a path by characters and then WRITES that file: index 255 runs WriteDevCfgToFile().
 * @param index as for writeDevCfgToFile_char()
 * @param character as there
 * @return as there */
ZELTAGAPI_EXPORT int readDevCfgFmFile_char(short index, short character);

/** Looks up which kind of magnetic stripe reader a file is for: the word "USB", or else "SERIAL",
 * behind "Interface:" in its first 257 bytes. No file of this library has it. No device traffic, no
 * error word.
 * @param path the file
 * @return with a magnetic stripe reader active 0 for USB, 1 for a serial line, 65535 for neither or
 * a file that can't be opened; with a sensor active 0; the unsupported value otherwise */
ZELTAGAPI_EXPORT int ReadDevTypeFromFile(const char* path);

/** @} */

/** @name Integrity of files
 *
 * A file may carry the CRC-32 of its own text in a trailer, by which a changed file is told. These
 * files are text: of a line with a zero byte only what stands in front of that byte counts. A file
 * that can't be opened fails its check, as a null path does. No lock.
 * @{ */

/** Writes the active proximity reader's settings to a text file and seals it with a trailer.
 * Sets the error word of the active record to 0 first. Device traffic as of ReadCfg().
 * @param path the file; replaced when it exists
 * @return 1, also when no proximity reader is active, and then no file is written; the unsupported
 * value when the file can't be created, or with ZELTAGAPI_ERR_INTEGRITY when its checksum can't be
 * computed */
ZELTAGAPI_EXPORT int WriteDevCfgToSecureFile(const char* path);

/** Checks such a file's trailer and, when it holds, applies what differs to the active proximity
 * reader. Sets the error word of the active record to 0 first. Device traffic as of WriteCfg(), for
 * a file that holds alone.
 * @param path the file
 * @return 1, also when no proximity reader is active, and then nothing is applied; 0 with
 * ZELTAGAPI_ERR_INTEGRITY for a trailer that doesn't hold; the unsupported value when the settings
 * couldn't be read from the file or written to the reader */
ZELTAGAPI_EXPORT int ReadDevCfgFromSecureFile(const char* path);

/** Checks a firmware file's trailer. No device traffic, no error word.
 * @param path the file
 * @return 1 when it holds, else 0 */
ZELTAGAPI_EXPORT int CheckTamperedFirmwareFile(const char* path);

/** Does nothing: firmware files come with their trailer. The file isn't opened.
 * @param path not used
 * @return 0, without a meaning */
ZELTAGAPI_EXPORT int GenerateSecureFirmwareFile(const char* path);

/** @} */

/** @name Secure blocks
 *
 * Key blobs of the active proximity reader: a header of four bytes, whose third is the count of
 * data bytes, then the data. Four data bytes go with one report. The library keeps no copy. No
 * lock.
 * @{ */

/** Writes a key blob, lets the reader save it and, half a second later, commit it. One chunk that
 * the reader acknowledges makes the whole blob count as written: read it back to be sure.
 * @param blob `size` bytes: the header and its data
 * @param size 4 plus the third byte of the header; another size sends nothing
 * @return 1 written and saved; 0 otherwise, with ZELTAGAPI_ERR_BLOB when a report of the data, of
 * the save or of the commit could not be sent */
ZELTAGAPI_EXPORT int WriteSecureData(unsigned char* blob, int size);

/** Reads a key blob back. A chunk that doesn't come leaves no gap: the next one moves up.
 * @param header the blob's four bytes of header
 * @param output receives the data alone. It needs room for the third byte of the header rounded up
 * to a multiple of four, since a whole chunk is stored each time: 8 bytes for a length of 5
 * @return 1 when the reader acknowledged the header, whatever came of the data; 0 otherwise, and
 * for a null pointer. ZELTAGAPI_ERR_BLOB when a report could not be sent */
ZELTAGAPI_EXPORT int ReadSecureData(unsigned char* header, unsigned char* output);

/** Checks the trailer of an INI file and writes its key blobs one after the other. A blob that
 * fails doesn't stop the run; a section of another form does, and what was written stays written.
 * @param path the file
 * @return 1 when the last blob went through; 0 otherwise, also with no such reader. With
 * ZELTAGAPI_ERR_INTEGRITY the file can't be read or its trailer doesn't hold; nothing is sent */
ZELTAGAPI_EXPORT int LoadIniFile(const char* path);

/** @} */

/** @name Firmware
 *
 * Both block for the whole flash, on the caller's thread, and take no lock. Before calling either
 * an application installs a handler for SIGUSR1: that signal tells the progress, at the start and
 * at each tenth that the lines sent make up exactly, and its default action ends the process. A
 * flash that fails leaves the reader in its boot loader: load again.
 *
 * From the first line on SIGINT, SIGABRT and SIGTERM are handled by the library, also when the
 * flash is over. During a flash the line under way is finished; then all devices are closed and
 * SIGINT ends the process with exit code 1, while the others pause for two seconds and let the call
 * fail. Without a flash SIGINT ends the process at once with exit code 1, without its exit
 * handlers; at the others no call finds a device any more, and the next one that locks closes them.
 * @{ */

/** Checks a firmware file's trailer and whether the rules allow it for the active proximity reader
 * on USB, then loads it.
 * @param path the firmware file
 * @return "Your operation is successfully executed."; the number and the text of the rule that
 * refused, with nothing sent; "Bootload API failed." when there is no such reader or the flash
 * failed: see GetLastLibErr(). Good until the next call; never null */
ZELTAGAPI_EXPORT const char* CheckRulesAndBootload(const char* path);

/** Loads a firmware file into the active proximity reader on USB; checks neither trailer nor rules.
 * Enters the boot loader (opcode 0xF0, four seconds), then sends three reports a line and fetches
 * at most three replies.
 * @param path the firmware file
 * @return 1 when every line went through; 0 with one of the words ZELTAGAPI_ERR_BOOT_ENTRY to
 * ZELTAGAPI_ERR_BOOT_FRAME, which aren't cleared before: the conversation's own words go to record
 * 0, whichever device is active */
ZELTAGAPI_EXPORT int Bootload(const char* path);

/** @} */

ZELTAGAPI_END

#endif
