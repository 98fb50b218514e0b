// SPDX-License-Identifier: MIT
// The exported calls by which an application tells of devices that arrive and leave. No family
// tracks its devices yet, so an arrival meets an unserved product and a removal finds no record.
#include "base/text_by_character.h"
#include "frame/state.h"
#include "frame/zelTagAPI.h"

using zel::TextIn;
using zel::unsupportedValue;

int ChkAddArrival(const char*) { return unsupportedValue(); }

// Tests for no device: what isn't in the table can't be removed.
int ChkDelRemoval(const char*) { return 0; }

int chkAddArrival_char(short index, short character) {
    static constinit TextIn name;
    return name.put(index, character, ChkAddArrival);
}

int chkDelRemoval_char(short index, short character) {
    static constinit TextIn name;
    return name.put(index, character, ChkDelRemoval);
}
