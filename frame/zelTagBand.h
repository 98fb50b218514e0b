/* SPDX-License-Identifier: MIT */
/** @file
 * The calls of magnetic stripe readers; part of zelTagAPI.h.
 *
 * A card's stripe has up to three tracks, with characters, sentinels, field separators and a
 * longitudinal redundancy check (LRC) as ISO/IEC 7811 tells them. The reader keeps eleven user
 * fields: what it cuts from which track, and the keys that it sends as a keyboard.
 *
 * Each call works on the active device when that is a magnetic stripe reader (product code
 * ZELTAGAPI_ZELBAND). With no active device or another product it returns the unsupported value,
 * see SetUnsupportedProductErrorCode(), unless told otherwise. No call locks.
 *
 * A command is a frame of 24 bytes out and one in: on USB two feature reports with a pause of 2 ms
 * between them, on a serial line the bytes alone. A call whose command fails returns 0; none of
 * them leaves a reason in the error word.
 *
 * A reader on a serial line is found by ComConnect() or USBConnect(); on USB the scan of this
 * platform tells proximity readers alone.
 */
#ifndef ZELTAGAPI_BAND_H
#define ZELTAGAPI_BAND_H

#include "frame/zelTagExport.h"

#include <stdint.h>

ZELTAGAPI_BEGIN

/** @name Tracks
 * @{ */

/** Asks which tracks hold data of a card: one command.
 * @return bits 0 to 2 for tracks 1 to 3, 0 for no data or a failure; the unsupported value without
 * such a reader */
ZELTAGAPI_EXPORT int zelBandIsDataAvailable(void);

/** Lets the reader forget the data of its tracks: one command.
 * @return 1, or 0 for a failure; the unsupported value without such a reader */
ZELTAGAPI_EXPORT int zelBandClearDataAvailable(void);

/** Lets the reader forget an overrun: one command. Tests neither for an active device nor for its
 * product.
 * @return 1, or 0 for a failure */
ZELTAGAPI_EXPORT int zelBandClearOverrun(void);

/** Fetches a track, ten bytes a command: up to 9 commands for track 1, 5 for track 2, 11 for track
 * 3.
 * @param track 1 to 3; for another one nothing is sent and the buffer is empty
 * @param convert 0: character codes as the reader has them; else ASCII, the character set of track
 * 1 or that of tracks 2 and 3
 * @return 257 bytes of the library's own, good until the next call: in byte 0 the number of
 * characters (bits 0 to 6), behind it the characters and zeros. All zero when a command fails. Null
 * without such a reader */
ZELTAGAPI_EXPORT char* zelBandGetTrackData(unsigned short track, short convert);

/** One byte of a track, for callers that can't take a pointer. Index 0 fetches the track with the
 * commands of zelBandGetTrackData() and keeps a copy; each other index reads that copy, without
 * device traffic.
 * @param track as for zelBandGetTrackData(); looked at with index 0 alone
 * @param convert as for zelBandGetTrackData(); looked at with index 0 alone
 * @param index 0 to 254
 * @return the byte, 0 for another index; the unsupported value's low byte without such a reader */
ZELTAGAPI_EXPORT unsigned char zelBandGetTrackData_BYTE(unsigned short track, short convert,
                                                        unsigned short index);

/** Fetches a track with the commands of zelBandGetTrackData() and looks for a field in it. The
 * field ends at `term`, at the end sentinel or at a field separator; a field that none of them ends
 * counts as empty.
 * @param track 1 to 3
 * @param field delimiters to pass: 1 for the field behind the first one. The start delimiter, field
 * separators and the end sentinel count
 * @param offset characters between that place and the start
 * @param length 0: the field is empty; any other value sets no limit
 * @param term character code that ends the field; 255: none
 * @param convert 0: character codes; else ASCII, of all 257 bytes, which makes the zeros behind the
 * text blanks on track 1 and digits 0 on tracks 2 and 3
 * @return 257 bytes of the library's own, good until the next call: as many characters as the field
 * has, taken from its end on, not from its start, and zeros behind them. Null without such a
 * reader */
ZELTAGAPI_EXPORT char* zelBandGetTrackFieldOffset(unsigned short track, unsigned short field,
                                                  unsigned short offset, unsigned short length,
                                                  unsigned short term, short convert);

/** Chooses the field that GetActiveID() reads. No device traffic. Clears the error word.
 * @param track 1 to 3; 2 at start
 * @param field 1 to 50; 0 at start
 * @param offset 0 to 100; 0 at start
 * @param term character code that ends the field, 255 for none; 255 at start
 * @return 1; 0 for a value outside, which changes nothing; the unsupported value without such a
 * reader */
ZELTAGAPI_EXPORT int zelBandSetActiveID(unsigned short track, unsigned short field,
                                        unsigned short offset, unsigned short term);

/** Sets the tracks that the reader reads. Goes to the reader with WriteCfg().
 * @param bits bits 0 to 2 for tracks 1 to 3; the other bits don't count
 * @return 1; the unsupported value without such a reader */
ZELTAGAPI_EXPORT int zelBandSetTrackEnables(unsigned short bits);

/** The tracks that the reader reads. No device traffic.
 * @return bits 0 to 2 for tracks 1 to 3; the unsupported value without such a reader */
ZELTAGAPI_EXPORT int zelBandGetTrackEnables(void);

/** @} */

/** @name User fields
 *
 * These work on the library's copy of the settings, without device traffic. ReadCfg() fills the
 * copy; WriteCfg() sends all of it.
 * @{ */

/** Switches a user field on or off.
 * @param field 1 to 11
 * @param on not 0: the field is used
 * @return 1; 0 for another field; the unsupported value without such a reader */
ZELTAGAPI_EXPORT int zelBandSetFieldEnable(unsigned short field, short on);

/** Whether a user field is used.
 * @param field 1 to 11
 * @return 1 or 0, 0 for another field; the unsupported value without such a reader */
ZELTAGAPI_EXPORT int zelBandGetFieldEnable(unsigned short field);

/** Sets whether a user field is skipped, for going on behind an error such as a bad LRC.
 * @param field 1 to 11
 * @param on not 0: the field is skipped
 * @return 1; 0 for another field; the unsupported value without such a reader */
ZELTAGAPI_EXPORT int zelBandSetFieldSkip(unsigned short field, short on);

/** Whether a user field is skipped.
 * @param field 1 to 11
 * @return 1 or 0, 0 for another field; the unsupported value without such a reader */
ZELTAGAPI_EXPORT int zelBandGetFieldSkip(unsigned short field);

/** Sets the track that a user field is cut from.
 * @param field 1 to 11
 * @param track 1 to 3, not tested; its low byte is stored
 * @return 1; 0 for another field; the unsupported value without such a reader */
ZELTAGAPI_EXPORT int zelBandSetFieldTrack(unsigned short field, unsigned short track);

/** The track that a user field is cut from.
 * @param field 1 to 11
 * @return 0 to 255, 0 for another field; the unsupported value without such a reader */
ZELTAGAPI_EXPORT int zelBandGetFieldTrack(unsigned short field);

/** Sets the field of the track that a user field is cut from.
 * @param field 1 to 11
 * @param number its low byte is stored
 * @return 1; 0 for another field; the unsupported value without such a reader */
ZELTAGAPI_EXPORT int zelBandSetFieldMagField(unsigned short field, unsigned short number);

/** The field of the track that a user field is cut from.
 * @param field 1 to 11
 * @return 0 to 255, 0 for another field; the unsupported value without such a reader */
ZELTAGAPI_EXPORT int zelBandGetFieldMagField(unsigned short field);

/** Sets where in the track's field a user field begins.
 * @param field 1 to 11
 * @param offset characters; its low byte is stored
 * @return 1; 0 for another field; the unsupported value without such a reader */
ZELTAGAPI_EXPORT int zelBandSetFieldOffset(unsigned short field, unsigned short offset);

/** Where in the track's field a user field begins.
 * @param field 1 to 11
 * @return 0 to 255, 0 for another field; the unsupported value without such a reader */
ZELTAGAPI_EXPORT int zelBandGetFieldOffset(unsigned short field);

/** Sets the length of a user field.
 * @param field 1 to 11
 * @param length characters; its low byte is stored
 * @return 1; 0 for another field; the unsupported value without such a reader */
ZELTAGAPI_EXPORT int zelBandSetFieldLength(unsigned short field, unsigned short length);

/** The length of a user field, in characters.
 * @param field 1 to 11
 * @return 0 to 255, 0 for another field; the unsupported value without such a reader */
ZELTAGAPI_EXPORT int zelBandGetFieldLength(unsigned short field);

/** Sets the character that ends a user field.
 * @param field 1 to 11
 * @param code its low byte is stored
 * @return 1; 0 for another field; the unsupported value without such a reader */
ZELTAGAPI_EXPORT int zelBandSetFieldTerm(unsigned short field, unsigned short code);

/** The character that ends a user field.
 * @param field 1 to 11
 * @return 0 to 255, 0 for another field; the unsupported value without such a reader */
ZELTAGAPI_EXPORT int zelBandGetFieldTerm(unsigned short field);

/** Sets whether a user field is sent with separators and sentinels.
 * @param field 1 to 11
 * @param on not 0: they are sent
 * @return 1; 0 for another field; the unsupported value without such a reader */
ZELTAGAPI_EXPORT int zelBandSetFieldShowSepSen(unsigned short field, short on);

/** Whether a user field is sent with separators and sentinels.
 * @param field 1 to 11
 * @return 1 or 0, 0 for another field; the unsupported value without such a reader */
ZELTAGAPI_EXPORT int zelBandGetFieldShowSepSen(unsigned short field);

/** Sets whether a user field is sent with its LRC byte in hexadecimal.
 * @param field 1 to 11
 * @param on not 0: it is sent
 * @return 1; 0 for another field; the unsupported value without such a reader */
ZELTAGAPI_EXPORT int zelBandSetFieldShowLRC(unsigned short field, short on);

/** Whether a user field is sent with its LRC byte.
 * @param field 1 to 11
 * @return 1 or 0, 0 for another field; the unsupported value without such a reader */
ZELTAGAPI_EXPORT int zelBandGetFieldShowLRC(unsigned short field);

/** Sets whether a user field with a wrong LRC is used nevertheless.
 * @param field 1 to 11
 * @param on not 0: it is used
 * @return 1; 0 for another field; the unsupported value without such a reader */
ZELTAGAPI_EXPORT int zelBandSetFieldIgnoreLRC(unsigned short field, short on);

/** Whether a user field with a wrong LRC is used nevertheless.
 * @param field 1 to 11
 * @return 1 or 0, 0 for another field; the unsupported value without such a reader */
ZELTAGAPI_EXPORT int zelBandGetFieldIgnoreLRC(unsigned short field);

/** Sets how many bytes of a user field's key data are used.
 * @param field 1 to 11
 * @param count 0 to 16, not tested; its low byte is stored, and six bits of it are written
 * @return 1; 0 for another field; the unsupported value without such a reader */
ZELTAGAPI_EXPORT int zelBandSetFieldKeyCount(unsigned short field, unsigned short count);

/** How many bytes of a user field's key data are used.
 * @param field 1 to 11
 * @return 0 to 255, 0 for another field; the unsupported value without such a reader */
ZELTAGAPI_EXPORT int zelBandGetFieldKeyCount(unsigned short field);

/** Sets one byte of a user field's key data. In keyboard form the even bytes are scan codes and the
 * odd ones shift modifiers; in ASCII form each byte is a character.
 * @param field 1 to 11
 * @param index 0 to 15; 16 is let through to the byte behind: the enable byte of the next user
 * field, or of field 11 the low byte of the key press time
 * @param value its low byte is stored
 * @return 1; 0 for another field or index; the unsupported value without such a reader */
ZELTAGAPI_EXPORT int zelBandSetFieldKeydata(unsigned short field, unsigned short index,
                                            unsigned short value);

/** One byte of a user field's key data.
 * @param field 1 to 11
 * @param index 0 to 16, as for zelBandSetFieldKeydata()
 * @return 0 to 255, 0 for another field or index; the unsupported value without such a reader */
ZELTAGAPI_EXPORT int zelBandGetFieldKeydata(unsigned short field, unsigned short index);

/** @} */

/** @name LEDs and beeper
 * @{ */

/** Gives a LED slot a colour, at once: one command, which sends all five slots. SetLEDCtrl() sets
 * them together.
 * @param index 0 to 4
 * @param colour 0 off, 1 red, 2 green, 3 amber
 * @return 1; 0 for a failure, or for a value outside, which changes nothing; the unsupported value
 * without such a reader */
ZELTAGAPI_EXPORT int zelBandSetLED(unsigned short index, short colour);

/** The colour of a LED slot. No device traffic.
 * @param index 0 to 4
 * @return 0 to 3 as for zelBandSetLED(), 0 for another index; the unsupported value without such a
 * reader */
ZELTAGAPI_EXPORT int zelBandGetLED(unsigned short index);

/** Sets the beeps that follow a read. Goes to the reader with WriteCfg(); BeepNow() beeps at once.
 * @param kind 2 a good read, 3 a bad read
 * @param count number of beeps, 0 to 4
 * @param isLong not 0: long beeps
 * @return 1; 0 for a value outside, which changes nothing; the unsupported value without such a
 * reader */
ZELTAGAPI_EXPORT int zelBandSetBeeper(unsigned short kind, unsigned short count, short isLong);

/** The beeps that follow a read. No device traffic.
 * @param kind 2 a good read, 3 a bad read
 * @return the number of beeps, plus 0x80 for long ones; with kind 3 also when those of a good read
 * are long. 0 for another kind; the unsupported value without such a reader */
ZELTAGAPI_EXPORT int zelBandGetBeeper(unsigned short kind);

/** @} */

/** @name Counters of the reader
 * @{ */

/** Asks how long the reader has been up: one command.
 * @return a signed 32-bit number in units of the reader, 0 for a failure; the unsupported value
 * without such a reader */
ZELTAGAPI_EXPORT int64_t zelBandGetSystemUptime(void);

/** Asks how many cards the reader has read: one command.
 * @return a signed 32-bit number, 0 for a failure; the unsupported value without such a reader */
ZELTAGAPI_EXPORT int64_t zelBandGetSystemCardsRead(void);

/** Asks for one of the reader's internal counters: one command.
 * @param index 0 to 3
 * @return the counter, 16 bits; 0 for another index or a failure; the unsupported value without
 * such a reader */
ZELTAGAPI_EXPORT int zelBandGetSystemInternalCount(int index);

/** @} */

ZELTAGAPI_END

#endif
