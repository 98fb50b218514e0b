// SPDX-License-Identifier: MIT
// The exported calls of magnetic stripe readers: nothing serves them yet.
#include "frame/state.h"
#include "frame/zelTagBand.h"

using zel::unsupportedValue;

int zelBandIsDataAvailable() { return unsupportedValue(); }

int zelBandClearDataAvailable() { return unsupportedValue(); }

// A command without a test; there is none to send yet.
int zelBandClearOverrun() { return 0; }

char* zelBandGetTrackData(unsigned short, short) { return nullptr; }

unsigned char zelBandGetTrackData_BYTE(unsigned short, short, unsigned short) {
    return static_cast<unsigned char>(unsupportedValue());
}

char* zelBandGetTrackFieldOffset(unsigned short, unsigned short, unsigned short, unsigned short,
                                 unsigned short, short) {
    return nullptr;
}

int zelBandSetActiveID(unsigned short, unsigned short, unsigned short, unsigned short) {
    return unsupportedValue();
}

int zelBandSetTrackEnables(unsigned short) { return unsupportedValue(); }
int zelBandGetTrackEnables() { return unsupportedValue(); }

int zelBandSetFieldEnable(unsigned short, short) { return unsupportedValue(); }
int zelBandGetFieldEnable(unsigned short) { return unsupportedValue(); }

int zelBandSetFieldSkip(unsigned short, short) { return unsupportedValue(); }
int zelBandGetFieldSkip(unsigned short) { return unsupportedValue(); }

int zelBandSetFieldTrack(unsigned short, unsigned short) { return unsupportedValue(); }
int zelBandGetFieldTrack(unsigned short) { return unsupportedValue(); }

int zelBandSetFieldMagField(unsigned short, unsigned short) { return unsupportedValue(); }
int zelBandGetFieldMagField(unsigned short) { return unsupportedValue(); }

int zelBandSetFieldOffset(unsigned short, unsigned short) { return unsupportedValue(); }
int zelBandGetFieldOffset(unsigned short) { return unsupportedValue(); }

int zelBandSetFieldLength(unsigned short, unsigned short) { return unsupportedValue(); }
int zelBandGetFieldLength(unsigned short) { return unsupportedValue(); }

int zelBandSetFieldTerm(unsigned short, unsigned short) { return unsupportedValue(); }
int zelBandGetFieldTerm(unsigned short) { return unsupportedValue(); }

int zelBandSetFieldShowSepSen(unsigned short, short) { return unsupportedValue(); }
int zelBandGetFieldShowSepSen(unsigned short) { return unsupportedValue(); }

int zelBandSetFieldShowLRC(unsigned short, short) { return unsupportedValue(); }
int zelBandGetFieldShowLRC(unsigned short) { return unsupportedValue(); }

int zelBandSetFieldIgnoreLRC(unsigned short, short) { return unsupportedValue(); }
int zelBandGetFieldIgnoreLRC(unsigned short) { return unsupportedValue(); }

int zelBandSetFieldKeyCount(unsigned short, unsigned short) { return unsupportedValue(); }
int zelBandGetFieldKeyCount(unsigned short) { return unsupportedValue(); }

int zelBandSetFieldKeydata(unsigned short, unsigned short, unsigned short) {
    return unsupportedValue();
}
int zelBandGetFieldKeydata(unsigned short, unsigned short) { return unsupportedValue(); }

int zelBandSetLED(unsigned short, short) { return unsupportedValue(); }
int zelBandGetLED(unsigned short) { return unsupportedValue(); }

int zelBandSetBeeper(unsigned short, unsigned short, short) { return unsupportedValue(); }
int zelBandGetBeeper(unsigned short) { return unsupportedValue(); }

int64_t zelBandGetSystemUptime() { return unsupportedValue(); }

int64_t zelBandGetSystemCardsRead() { return unsupportedValue(); }

int zelBandGetSystemInternalCount(int) { return unsupportedValue(); }
