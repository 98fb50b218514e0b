/* SPDX-License-Identifier: MIT */
/** @file
 * Calls for tools that look into the library's files without touching a device. No lock.
 *
 * Optional, as zelTagState.h is: a template file is told as configurations of that header.
 */
#ifndef ZELTAGAPI_FILES_H
#define ZELTAGAPI_FILES_H

#include "frame/zelTagExport.h"
#include "frame/zelTagState.h"

ZELTAGAPI_BEGIN

/** Kinds of files. The first three have a checksum trailer (CRC-32 of IEEE 802.3), the others have
 * none. */
enum zelFileKind {
    ZELTAGAPI_FILE_TEMPLATE = 0, /**< a proximity reader's settings, sealed */
    ZELTAGAPI_FILE_FIRMWARE = 1, /**< firmware of a reader */
    ZELTAGAPI_FILE_KEYS = 2,     /**< key blobs for a reader */
    ZELTAGAPI_FILE_BAND = 3,     /**< a magnetic stripe reader's settings */
    ZELTAGAPI_FILE_ECHO = 4      /**< a sensor's settings */
};

/** What is wrong with a file. The first five are those of a trailer, the last four those of
 * settings without a trailer. */
enum zelFileFault {
    ZELTAGAPI_FAULT_NONE = 0,       /**< it holds */
    ZELTAGAPI_FAULT_OPEN = 1,       /**< the file can't be opened or read */
    ZELTAGAPI_FAULT_NO_TRAILER = 2, /**< no trailer up to the end of the file */
    ZELTAGAPI_FAULT_TRAILER = 3,    /**< the trailer stands on `line` and has another form */
    ZELTAGAPI_FAULT_BEHIND = 4,     /**< `line` stands behind the trailer */
    ZELTAGAPI_FAULT_CHECKSUM = 5,   /**< the trailer on `line` tells another checksum */
    ZELTAGAPI_FAULT_TITLE = 6,      /**< no title where a load of the file looks for one */
    ZELTAGAPI_FAULT_LINE = 7,       /**< a load passes over `line`, which is no comment */
    ZELTAGAPI_FAULT_VALUE = 8,  /**< a load doesn't keep the number of `line` as it stands there */
    ZELTAGAPI_FAULT_MISSING = 9 /**< all lines are good, and some word has none */
};

/** What zelTagAPI_checkFile() found. */
typedef struct zelFileCheck {
    int fault;        /**< of zelFileFault */
    int line;         /**< the line meant, from 1; 0 for none */
    char told[9];     /**< the checksum that the trailer tells, as far as it could be read */
    char computed[9]; /**< the checksum of the text in front of the trailer; empty without one */
} zelFileCheck;

/** Checks a file as the calls that use it do, and tells what is wrong first: with its trailer, or
 * without one with its lines. A load refuses none of those lines: a magnetic stripe reader's word
 * takes the low bits of a number too large, and a sensor's record with a word out of range stays as
 * it is. Words without a line stay too, so such a file isn't damaged unless it should be whole. A
 * sensor's file needs no title.
 * @param path the file
 * @param kind of zelFileKind; any other number is taken for key blobs
 * @param check receives the findings; may be null
 * @return 1 when nothing is wrong, else 0 */
ZELTAGAPI_EXPORT int zelTagAPI_checkFile(const char* path, int kind, zelFileCheck* check);

/** Reads a template file's configurations as ReadDevCfgFmFile() does, and sets and sends nothing.
 * Ranges of words aren't checked, and iTPCfgFlg3 is told as the file has it, though a reader takes
 * that byte from the third flags.
 * @param path the file
 * @param configs `count` configurations; a word that the file doesn't name stays as it is
 * @param count configurations of the reader, 1 to 11; 1 tells no card type
 * @param forReader not 0: `configs` are those of a reader, and what it wouldn't take (field data of
 * another form, an output format that it doesn't know) stays as it is, or becomes 0 for the format
 * @return how many configurations the file begins with, at most `count`: each names a known word or
 * has field data. 0 when there is none, for a file that can't be opened, can't be read to its end
 * or is no template file, and for bad arguments */
ZELTAGAPI_EXPORT int zelTagAPI_readTemplate(const char* path, tsTagCfg* configs, int count,
                                            int forReader);

/** Whether a template file written of a configuration shows key values: where the counts in its
 * field data pass their 128 bytes, the file's rows go on with what follows them.
 * @param config the configuration; may be null
 * @return 1 or 0 */
ZELTAGAPI_EXPORT int zelTagAPI_showsKeys(const tsTagCfg* config);

/** What a firmware file says of itself. */
typedef struct zelFirmwareFile {
    char name[65]; /**< the new firmware's name, upper case; empty when the file has none */
    int micro;     /**< the processor that it is for, 0 or 1; -1 when the file doesn't tell */
    int lines;     /**< lines that a flash sends */
} zelFirmwareFile;

/** Reads what a firmware file says of itself; tests neither its trailer nor the rules.
 * @param path the file
 * @param file receives it
 * @return 1, or 0 when it can't be opened */
ZELTAGAPI_EXPORT int zelTagAPI_readFirmware(const char* path, zelFirmwareFile* file);

/** Asks whether CheckRulesAndBootload() would load a file into the active proximity reader; sends
 * nothing.
 * @param path the firmware file
 * @return null when it would; else the number and text of the rule that refuses, or "Bootload API
 * failed." without such a reader; good until the next call */
ZELTAGAPI_EXPORT const char* zelTagAPI_checkFirmware(const char* path);

ZELTAGAPI_END

#endif
