/* SPDX-License-Identifier: MIT */
/** @file
 * The calls that deliver what a device read of a card. zelTagAPI.h includes it and tells what all
 * calls have in common. */
#ifndef ZELTAGAPI_CARDS_H
#define ZELTAGAPI_CARDS_H

#include "frame/zelTagExport.h"

#include <stdint.h>

ZELTAGAPI_BEGIN

/** @name Card data
 * @{ */

/** Reads the identifier of the card in the active reader's field, up to 64 bits.
 * Two queries (opcodes 0x8F and 0x8E): two feature reports out, two in (USB HID 1.11, 7.2.1 and
 * 7.2.2). A report that can't be sent is tried six times, with 80 ms after each try. On a byte
 * stream one frame, tried three times, 50 ms apart; by the ASCII protocol one query, whose answer
 * counts only while it is younger than the hold time, with the error words 256, 257 and 261. Locks.
 * @param buffer at least 32 bytes, whatever `size` says; receives the identifier, little-endian,
 * zeros behind it
 * @param size bytes of the identifier wanted, 0 to 32; the reader delivers 8 at most
 * @return the identifier's bit count, 1 to 255; 0 for no card or a failure, told apart by
 * GetLastLibErr(): 0, or ZELTAGAPI_ERR_ID_READ. The unsupported value with no active device.
 *
 * Of a magnetic stripe reader it is the field chosen with zelBandSetActiveID(), as text filled up
 * to `size`, with its length as the result; the card is then forgotten. Of a sensor four bytes:
 * whether somebody is there, the distance in inches, the LUID, low byte first; the result is 4. */
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
 * @return 1; 0 with ZELTAGAPI_ERR_SERVICE; the unsupported value with no active device. Of a
 * magnetic stripe reader the active field as GetActiveID() takes it, 32 bytes; of a sensor 0 */
ZELTAGAPI_EXPORT int GetQueuedID(short first, short second);

/** One element of what GetQueuedID() fetched last. No device traffic.
 * @param index 0 to 31 a byte of the identifier, lowest first; 32 a signed word of the entry; 33
 * its age; 34 and 35 a byte of the entry
 * @return the element, 0 for another index; the unsupported value with no active device. Of a
 * magnetic stripe reader the first byte for each index from 0 to 31, the queue's age at 32, asked
 * of the reader, and a byte of that answer at 33; of a sensor 0 */
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
 * zeros when the exchange failed; null without a device of a known product. A magnetic stripe
 * reader's report has 24 bytes, the rest zero; a sensor has none */
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

ZELTAGAPI_END

#endif
