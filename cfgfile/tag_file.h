// SPDX-License-Identifier: MIT
// The text file that holds a proximity reader's settings. The exported calls WriteDevCfgToFile()
// and ReadDevCfgFmFile() come here for such a reader.
#pragma once

#include "frame/zelTagState.h"

#include <stdio.h>

ZELTAGAPI_BEGIN

// Reads the reader's configurations and writes each to the file. 1; 0 when the file can't be
// created; -1 when no configuration could be read, with a file that has no body.
ZELTAGAPI_EXPORT int zeltag_WriteDevCfgToFile(const char* name);

// Applies what differs in the file and writes it to the reader, a configuration at a time. 0 when
// the file can't be opened, has no title in its first 128 bytes, or a write failed.
ZELTAGAPI_EXPORT int zeltag_ReadDevCfgFmFile(const char* name);

// Writes the settings of the active configuration. Always 1; 0 for a null stream.
ZELTAGAPI_EXPORT int WriteFCfgBody(FILE* file);

// Reads settings up to the end of the field data, or of the file, and sets what differs in the
// active configuration. Always 1; 0 for a null stream.
ZELTAGAPI_EXPORT int ReadFCfgBody(FILE* file);

// Stores the value of one key. 1, or 0 for a key that no table has.
ZELTAGAPI_EXPORT int ProcessFCfgTokenVal(const char* name, short value, tsTagCfg* config);

ZELTAGAPI_END
