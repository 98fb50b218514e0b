// SPDX-License-Identifier: MIT
// The family's calls on single words of the records: the same as the exported ones without their
// test of the active device.
#pragma once

#include "frame/zelTagExport.h"

ZELTAGAPI_BEGIN

#define ZEL_RECORD(record, table, calls)
#define ZEL_WORD(record, index, name, label, kind, description, place)                             \
    ZELTAGAPI_EXPORT int zeltag_get##record##_##name(void);                                        \
    ZELTAGAPI_EXPORT int zeltag_set##record##_##name(short value);
#include "frame/records.def"
#undef ZEL_RECORD
#undef ZEL_WORD

ZELTAGAPI_END
