// SPDX-License-Identifier: MIT
// What a reader delivers beside the active identifier: queued identifiers, card data, the reply to
// a report of the caller's choice, all its reports as a text. The exported calls of the same names
// without the prefix tell what each does. Apart from the raw payload, the buffers are those of
// frame/zelTagState.h, shared by all devices.
#pragma once

#include "frame/zelTagExport.h"

#include <cstdint>

ZELTAGAPI_BEGIN

// The identifier that QueuedID held before the last page stands in activeIDBuf too: all of it after
// a success.
ZELTAGAPI_EXPORT int zeltag_GetQueuedID(short first, short second);
ZELTAGAPI_EXPORT std::int64_t zeltag_GetQueuedID_index(short index);

ZELTAGAPI_EXPORT int zeltag_getActiveCardData(void);
ZELTAGAPI_EXPORT int zeltag_getActiveCardData_byte(short index);
ZELTAGAPI_EXPORT int zeltag_setSourceEvent(std::uintptr_t value);

ZELTAGAPI_EXPORT int zeltag_SetRawPayload_index(short index, short value);
ZELTAGAPI_EXPORT int zeltag_GetRawPayload_index(short index);

// Writes a file line by line, so that a watcher sees it grow while the reader answers. Null and
// another product than a proximity reader are refused.
ZELTAGAPI_EXPORT int zeltag_DumpRawFeatureReports(const char* name);

ZELTAGAPI_END
