// SPDX-License-Identifier: MIT
// The exported calls on queued identifiers, card data, raw payloads and the dump of all reports.
#include "family/tag/card_data.h"
#include "family/band/band.h"
#include "family/echo/echo.h"
#include "frame/calls/dispatch.h"
#include "frame/zelTagAPI.h"

#include <cstdio>
#include <cstring>
#include <initializer_list>

using namespace zel;

namespace {

int unsupportedByte() { return static_cast<std::uint8_t>(unsupportedValue()); }

unsigned replyByte(short index) { return static_cast<std::uint8_t>(GetRawPayload_index(index)); }

// Of a magnetic stripe reader every place of the identifier yields its first byte; the age and the
// byte behind it are asked of the reader.
std::int64_t queuedBandElement(short index) {
    if (index >= 0 && index < ZELTAGAPI_ID_SIZE)
        return zelband_GetQueuedID_index(0);
    switch (index) {
    case 32:
        return zelband_GetQueuedAge(0);
    case 33:
        return zelband_GetQueuedAge(1);
    default:
        return unsupportedValue();
    }
}

} // namespace

int GetQueuedID(short first, short second) {
    return forFamily(zeltag_GetQueuedID, zelband_GetQueuedID, zelecho_GetQueuedID, first, second);
}

std::int64_t GetQueuedID_index(short index) {
    return forFamily(zeltag_GetQueuedID_index, queuedBandElement, zelecho_GetQueuedID_index, index);
}

int getActiveCardData() { return forTag(zeltag_getActiveCardData); }

int getActiveCardData_byte(short index) {
    return forTagOr(unsupportedByte(), zeltag_getActiveCardData_byte, index);
}

const char* SetRawPayload(unsigned char b1, unsigned char b2, unsigned char b3, unsigned char b4,
                          unsigned char b5, unsigned char b6, unsigned char b7, unsigned char b8) {
    static constinit char text[41] = {};
    if (!isServed())
        return nullptr;
    short index = 0;
    for (const unsigned char byte : {std::uint8_t{0}, b1, b2, b3, b4, b5, b6, b7, b8})
        SetRawPayload_index(index++, byte);
    std::memset(text, 0, sizeof text);
    std::snprintf(text, sizeof text, "%02X.%02X.%02X.%02X.%02X.%02X.%02X.%02X", replyByte(1),
                  replyByte(2), replyByte(3), replyByte(4), replyByte(5), replyByte(6),
                  replyByte(7), replyByte(8));
    return text;
}

int SetRawPayload_index(short index, short value) {
    return forFamily(zeltag_SetRawPayload_index, zelband_SetRawPayload_index,
                     zelecho_SetRawPayload_index, index, value);
}

int GetRawPayload_index(short index) {
    return forFamilyOr(unsupportedByte(), zeltag_GetRawPayload_index, zelband_GetRawPayload_index,
                       zelecho_GetRawPayload_index, index);
}

int GetRawRepDataI(unsigned char*, short) { return 0; }

int setSourceEvent(std::uintptr_t value) { return forTagOr(0, zeltag_setSourceEvent, value); }

int DumpRawFeatureReports(const char* name) {
    return forTagOr(0, zeltag_DumpRawFeatureReports, name);
}
