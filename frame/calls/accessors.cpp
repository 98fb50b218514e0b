// SPDX-License-Identifier: MIT
// The exported calls on single words of the records. They test for a device and not for its
// product: the call on the whole record, which they go through, dispatches.
#include "family/tag/accessors.h"
#include "frame/calls/dispatch.h"
#include "frame/zelTagAPI.h"

#define ZEL_RECORD(record, table, calls)
#define ZEL_WORD(record, index, name, label, kind, description, place)                             \
    int get##record##_##name() { return zel::forDevice(zeltag_get##record##_##name); }             \
    int set##record##_##name(short value) {                                                        \
        return zel::forDevice(zeltag_set##record##_##name, value);                                 \
    }
#include "frame/records.def"
#undef ZEL_RECORD
#undef ZEL_WORD
