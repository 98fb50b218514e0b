/* SPDX-License-Identifier: MIT */
/** @file
 * Single operations of a reader and what it tells of itself. zelTagAPI.h includes it and tells what
 * all calls have in common. */
#ifndef ZELTAGAPI_SERVICES_H
#define ZELTAGAPI_SERVICES_H

#include "frame/zelTagExport.h"

ZELTAGAPI_BEGIN

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

ZELTAGAPI_END

#endif
