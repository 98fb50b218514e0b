// SPDX-License-Identifier: MIT
// The exported calls by which an application tells of devices that arrive and leave.
#include "transport/hot_plug.h"
#include "base/text_by_character.h"
#include "family/band/band.h"
#include "family/echo/echo.h"
#include "family/tag/tag.h"
#include "frame/calls/dispatch.h"
#include "frame/zelTagAPI.h"

using namespace zel;

// The family is that of the device that is active already.
int ChkAddArrival(const char* name) {
    return forFamily(zeltag_ChkAddArrival, zelband_ChkAddArrival, zelecho_ChkAddArrival, name);
}

int ChkDelRemoval(const char* name) { return removeDevice(name); }

int chkAddArrival_char(short index, short character) {
    static constinit TextIn name;
    return name.put(index, character, ChkAddArrival);
}

int chkDelRemoval_char(short index, short character) {
    static constinit TextIn name;
    return name.put(index, character, ChkDelRemoval);
}
