// SPDX-License-Identifier: MIT
// The exported calls of magnetic stripe readers.
#include "family/band/band.h"
#include "frame/calls/dispatch.h"
#include "frame/zelTagBand.h"

using namespace zel;

namespace {

// Calls the operation when such a reader is active; else the result given, or the unsupported
// value.
template <class Result, class... Parameters, class... Arguments>
Result forBandOr(Result otherwise, Result (*operation)(Parameters...), Arguments... arguments) {
    return activeProduct() == kBand ? operation(arguments...) : otherwise;
}

template <class Result, class... Parameters, class... Arguments>
Result forBand(Result (*operation)(Parameters...), Arguments... arguments) {
    return forBandOr(static_cast<Result>(unsupportedValue()), operation, arguments...);
}

constexpr char* kNoText = nullptr;

} // namespace

int zelBandIsDataAvailable() { return forBand(zelband_IsDataAvailable); }

int zelBandClearDataAvailable() { return forBand(zelband_ClearDataAvailable); }

int zelBandClearOverrun() { return zelband_ClearOverrun(); }

char* zelBandGetTrackData(unsigned short track, short convert) {
    return forBandOr(kNoText, zelband_GetTrackData, track, convert);
}

unsigned char zelBandGetTrackData_BYTE(unsigned short track, short convert, unsigned short index) {
    return forBand(zelband_GetTrackData_BYTE, track, convert, index);
}

char* zelBandGetTrackFieldOffset(unsigned short track, unsigned short field, unsigned short offset,
                                 unsigned short length, unsigned short term, short convert) {
    return forBandOr(kNoText, zelband_GetTrackFieldOffset, track, field, offset, length, term,
                     convert);
}

int zelBandSetActiveID(unsigned short track, unsigned short field, unsigned short offset,
                       unsigned short term) {
    return forBand(zelband_SetActiveID, track, field, offset, term);
}

int zelBandSetTrackEnables(unsigned short bits) { return forBand(zelband_SetTrackEnables, bits); }
int zelBandGetTrackEnables() { return forBand(zelband_GetTrackEnables); }

#define ZEL_flag(name, call)                                                                       \
    int zelBandSetField##call(unsigned short field, short value) {                                 \
        return forBand(zelband_SetField##call, field, value);                                      \
    }                                                                                              \
    int zelBandGetField##call(unsigned short field) {                                              \
        return forBand(zelband_GetField##call, field);                                             \
    }
#define ZEL_byte(name, call)                                                                       \
    int zelBandSetField##call(unsigned short field, unsigned short value) {                        \
        return forBand(zelband_SetField##call, field, value);                                      \
    }                                                                                              \
    int zelBandGetField##call(unsigned short field) {                                              \
        return forBand(zelband_GetField##call, field);                                             \
    }
#define ZEL_FIELD(name, call, kind, most, comment) ZEL_##kind(name, call)
#include "frame/band_settings.def"
#undef ZEL_flag
#undef ZEL_byte

int zelBandSetFieldKeydata(unsigned short field, unsigned short index, unsigned short value) {
    return forBand(zelband_SetFieldKeydata, field, index, value);
}
int zelBandGetFieldKeydata(unsigned short field, unsigned short index) {
    return forBand(zelband_GetFieldKeydata, field, index);
}

int zelBandSetLED(unsigned short index, short colour) {
    return forBand(zelband_SetLED, index, colour);
}
int zelBandGetLED(unsigned short index) { return forBand(zelband_GetLED, index); }

int zelBandSetBeeper(unsigned short kind, unsigned short count, short isLong) {
    return forBand(zelband_SetBeeper, kind, count, isLong);
}
int zelBandGetBeeper(unsigned short kind) { return forBand(zelband_GetBeeper, kind); }

int64_t zelBandGetSystemUptime() { return forBand(zelband_GetSystemUptime); }

int64_t zelBandGetSystemCardsRead() { return forBand(zelband_GetSystemCardsRead); }

int zelBandGetSystemInternalCount(int index) {
    return forBand(zelband_GetSystemInternalCount, index);
}
