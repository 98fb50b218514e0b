/* SPDX-License-Identifier: MIT */
/** @file
 * The calls on files that keep settings, and on the checksums of files. zelTagAPI.h includes it and
 * tells what all calls have in common. */
#ifndef ZELTAGAPI_TEMPLATES_H
#define ZELTAGAPI_TEMPLATES_H

#include "frame/zelTagExport.h"

ZELTAGAPI_BEGIN

/** @name Template files
 *
 * A device's settings as text, to be edited and loaded into another device of its kind; each
 * family has a form of its own. What is told of traffic below holds for a proximity reader: for a
 * magnetic stripe reader and a sensor both directions work on the library's copy of the settings,
 * so call ReadCfg() before a write and WriteCfg() behind a read; a sensor's read takes any text and
 * marks all its records. The calls set no error word of their own: it is that of the last call they
 * made on the device. Their path may be null, which no file has. No lock.
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

ZELTAGAPI_END

#endif
