/* SPDX-License-Identifier: MIT */
/* The device table. As it starts it stands in the library's file, so that loading the library
 * touches none of its 1 MB, and a process has pages of its own for those records alone that it
 * uses. In C, where a handle of all ones is a constant. */
#include "frame/state/device_table.h"

/* Configurations whose field data start in their old form: all but the last one. */
#define LAST_PRESET_CONFIG (ZELTAGAPI_MAX_CONFIGS - 2)
#define OLD_FIELD_DATA_HEADER 12

/* As _APIinit() leaves each record; what isn't told is 0. */
#define STARTING_RECORD                                                                            \
    {                                                                                              \
        .hDev = (void*)-1, .bSepFldOK = 1, .bPartNumOK = 1,                                        \
        .Cfg = {[0 ... LAST_PRESET_CONFIG] = {.uSFD = {.bytes = {OLD_FIELD_DATA_HEADER}}}},        \
        .Band = {.iActTrack = 2, .iActLength = ZELTAGAPI_ID_SIZE, .iActTerm = 255},                \
    }

#pragma GCC diagnostic ignored "-Wpedantic" /* a range of elements; both compilers know it */
const tsDevDat zelStartingRecord = STARTING_RECORD;
tsDevDat DevDat[ZELTAGAPI_MAX_DEVICES] = {[0 ... ZELTAGAPI_MAX_DEVICES - 1] = STARTING_RECORD};

#ifdef __ELF__
typedef tsDevDat DeviceTable[ZELTAGAPI_MAX_DEVICES];
extern ZELTAGAPI_EXPORT DeviceTable zelAliasDevDat __asm__("DevDat")
    __attribute__((weak, alias("zelTagAPI_DevDat")));
#endif
