/* SPDX-License-Identifier: MIT */
/** @file
 * Devices on a serial line: which lines there are, the scan of them, and their bytes.
 *
 * A line is known by a number. SetComLinux() gives numbers 1 to 16 a path; the library opens no
 * other path, and none at all before the first scan. Scanning writes to every registered path in
 * the range of SetComSrchRange(): a device of another kind there receives the bytes too.
 *
 * Lines run at 8 data bits, no parity, 1 stop bit, without flow control. Waits of a line: a read
 * ends after half a second at most, a write has no bound.
 */
#ifndef ZELTAGAPI_LINES_H
#define ZELTAGAPI_LINES_H

#include "frame/zelTagExport.h"

#include <stdint.h>

ZELTAGAPI_BEGIN

/** @name Serial settings
 *
 * No device traffic; no lock. They hold for the next connect.
 * @{ */

/** Gives a line a path.
 * @param port the line's number, 1 to 16
 * @param path such as "/dev/ttyUSB0"; only what begins with "/dev/" is ever opened. The first 128
 * characters are kept. Empty or null: none
 * @return 1; 0 for another number, with nothing changed */
ZELTAGAPI_EXPORT int SetComLinux(unsigned short port, const char* path);

/** Limits a scan to the numbers from one to another; 1 to 8 at start.
 * @param first 1 to 256
 * @param last 1 to 256; may be the smaller one
 * @return 1; 0 for a number outside, with nothing changed */
ZELTAGAPI_EXPORT int SetComSrchRange(unsigned short first, unsigned short last);

/** Sets the range of virtual lines: a place kept for platforms that can tell such lines. Here no
 * line counts as virtual. The two numbers are stored crossed.
 * @param first 1 to 255; 0 with `last` 0 for no range
 * @param last above `first`, up to 256
 * @return 1; 0 for other numbers, with nothing changed */
ZELTAGAPI_EXPORT int VirtualComSearchRange(unsigned short first, unsigned short last);

/** Sets the speed at which the scan for proximity readers opens lines. 9600, 19200, 38400, 57600
 * and 115200 are speeds; a line that is opened with another number keeps the speed it had.
 * @param rate baud; 9600 at start; not tested */
ZELTAGAPI_EXPORT void SetBaudRate(unsigned int rate);

/** @} */

/** @name Connect over lines
 *
 * Not locked. Each line in the range is opened and asked whether a device answers; one that doesn't
 * costs about two seconds for the proximity readers and one for the stripe readers.
 * @{ */

/** Empties the table, then scans the lines for the products that SetConnectProduct() allows, both
 * families in turn, and reads the configuration of each device found. Device 0 is the active one.
 * Closes no USB device: call USBDisconnect() first.
 * @param did null, or receives the device ID of device 0
 * @return 1; 0 when there is none, or when a device's configuration can't be read: then GetDevCnt()
 * tells how many were found, and `lLastCnctErr` has bit 0x10000 */
ZELTAGAPI_EXPORT int ComConnect(int64_t* did);

/** As ComConnect(), on one line.
 * @param port its number; 0 finds nothing
 * @param did as there
 * @return as there */
ZELTAGAPI_EXPORT int ComConnectPort(unsigned short port, int64_t* did);

/** @} */

/** @name Connect through the active device
 *
 * For a device that is connected already; not locked.
 * @{ */

/** Scans the lines through the family of the active device. A scan for proximity readers that finds
 * as many as stand in the table counts as failed.
 * @return 1 or 0; the unsupported value where no family on a line is active */
ZELTAGAPI_EXPORT int comConnect(void);

/** As comConnect(), for one line. Answers 0 while a device stands in the table.
 * @param port its number
 * @return as there */
ZELTAGAPI_EXPORT int comConnectPort(unsigned short port);

/** Closes the active device's line. Its record stays; calls on it fail.
 * @return 1; 0 for a device without a line; the unsupported value as comConnect() */
ZELTAGAPI_EXPORT int ComDisconnect(void);

/** @} */

/** @name Lines
 *
 * The bytes of a device on a line or behind a network bridge; no lock.
 * @{ */

/** Reads what the active device's line brings, half a second at most.
 * @param buffer at least `size` bytes; those that don't come are cleared
 * @param size bytes wanted
 * @return the count read; 0 for a device without an open line. Behind a bridge the value of the
 * last receive: the size of what came in one piece, the size of the last of several pieces, -1 when
 * the buffer isn't full after 100 ms */
ZELTAGAPI_EXPORT int64_t ReadSerialPort(unsigned char* buffer, unsigned int size);

/** Writes to the active device's line and discards what isn't on the line yet. Waits as long as the
 * line takes nothing.
 * @param buffer `size` bytes
 * @param size bytes to write
 * @return the count written; 0 for a device without an open line */
ZELTAGAPI_EXPORT int64_t WriteSerialPort(const unsigned char* buffer, unsigned int size);

/** Reads what the active device's line brings until it was silent for 75 polls of a millisecond.
 * @param buffer at least `size` bytes; those that don't come are cleared
 * @param size bytes wanted
 * @return as ReadSerialPort() */
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

/** Chooses the ASCII protocol for all proximity readers on lines, without a device; see
 * UseAsciiCommandProtocol(). Set it before a connect to a reader that speaks nothing else.
 * @param flag not 0: the ASCII protocol
 * @return always 1 */
ZELTAGAPI_EXPORT int zeltag_UseAsciiCommandProtocol(short flag);

/** @} */

ZELTAGAPI_END

#endif
