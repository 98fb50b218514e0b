/* SPDX-License-Identifier: MIT */
/** @file
 * The calls that load keys and firmware into a reader. zelTagAPI.h includes it and tells what all
 * calls have in common. */
#ifndef ZELTAGAPI_FIRMWARE_H
#define ZELTAGAPI_FIRMWARE_H

#include "frame/zelTagExport.h"

ZELTAGAPI_BEGIN

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
