// SPDX-License-Identifier: MIT
// The exported calls on queued identifiers, card data, raw payloads and the dump of all reports.
#include "family/tag/card_data.h"
#include "frame/dispatch.h"
#include "frame/zelTagAPI.h"

using namespace zel;

namespace {

int unsupportedByte() { return static_cast<std::uint8_t>(unsupportedValue()); }

} // namespace

int GetQueuedID(short first, short second) { return forTag(zeltag_GetQueuedID, first, second); }

std::int64_t GetQueuedID_index(short index) { return forTag(zeltag_GetQueuedID_index, index); }

int getActiveCardData() { return forTag(zeltag_getActiveCardData); }

int getActiveCardData_byte(short index) {
    return forTagOr(unsupportedByte(), zeltag_getActiveCardData_byte, index);
}

const char* SetRawPayload(unsigned char b1, unsigned char b2, unsigned char b3, unsigned char b4,
                          unsigned char b5, unsigned char b6, unsigned char b7, unsigned char b8) {
    constexpr const char* kNone = nullptr;
    return forTagOr(kNone, zeltag_SetRawPayload, b1, b2, b3, b4, b5, b6, b7, b8);
}

int SetRawPayload_index(short index, short value) {
    return forTag(zeltag_SetRawPayload_index, index, value);
}

int GetRawPayload_index(short index) {
    return forTagOr(unsupportedByte(), zeltag_GetRawPayload_index, index);
}

int GetRawRepDataI(unsigned char*, short) { return 0; }

int setSourceEvent(std::uintptr_t value) { return forTagOr(0, zeltag_setSourceEvent, value); }

int DumpRawFeatureReports(const char* name) {
    return forTagOr(0, zeltag_DumpRawFeatureReports, name);
}
