// SPDX-License-Identifier: MIT
// Operations of a stripe reader and what holds after each.
#include "fuzz/support/stripe_reader.h"

#include "family/band/band.h"
#include "frame/zelTagState.h"
#include "fuzz/target.h"

#include <cstring>
#include <initializer_list>

namespace zel::fuzz {

namespace {

constexpr unsigned char kCanary = 0x5A;
constexpr int kTrackSize = 257;

// A track fits its length byte; converted, it is of the coding's characters.
int readTrack(unsigned short number) {
    const char* const track = zelband_GetTrackData(number, 1);
    const int length = track[0] & 127;
    for (int place = 1; place <= length; ++place)
        require(track[place] >= ' ' && track[place] <= '_');
    return length > 0;
}

int readField(unsigned short number) {
    const char* const field = zelband_GetTrackFieldOffset(number, number, 0, 10, 255, 1);
    for (int place = 0; place < kTrackSize; ++place)
        require(field[place] >= ' ' && field[place] <= '_');
    return 1;
}

// As a writer that set whatever there is.
int writeAll() {
    tsBand& settings = DevDat[0].Band;
    settings.HaltKBSend = settings.UseNumKP = 1;
    for (BandUserField& field : settings.UserField)
        field.Enable = field.Skip = field.ShowSepSen = field.ShowLRC = field.IgnoreLRC = 1;
    return zelband_WriteCfg();
}

int readBytes() {
    for (const unsigned short index : std::initializer_list<unsigned short>{0, 1, 254, 255, 300})
        zelband_GetTrackData_BYTE(2, 0, index);
    require(zelband_GetTrackData(0, 1)[0] == 0 && zelband_GetTrackData(4, 1)[0] == 0);
    require(zelband_GetTrackFieldOffset(4, 1, 0, 0, 0, 0)[0] == 0);
    zelband_GetTrackFieldOffset(2, 1, 0, 0, ';', 0);
    zelband_GetTrackFieldOffset(2, 1, 300, 1, 3, 0);
    return zelband_ClearOverrun();
}

int readOwnBuffers() {
    require(zelband_GetActiveID(nullptr, 8) == 0);
    require(zelband_SetActiveID(0, 1, 0, 0) == 0 && zelband_SetActiveID(1, 0, 0, 0) == 0);
    require(zelband_SetActiveID(4, 1, 0, 0) == 0 && zelband_SetActiveID(1, 51, 0, 0) == 0);
    require(zelband_SetActiveID(1, 1, 101, 0) == 0 && zelband_SetActiveID(1, 1, 2, 3) == 1);
    zelband_getActiveID(8);
    zelband_getActiveID32(8);
    for (const short index : std::initializer_list<short>{-1, 0, 8, 9, 32})
        zelband_getActiveID_byte(index);
    return zelband_GetQueuedAge(2) == 0 && zelband_GetQueuedID_index(1) >= 0;
}

int readId() {
    unsigned char id[33];
    std::memset(id, kCanary, sizeof id);
    zelband_SetActiveID(2, 1, 0, 255);
    const int length = zelband_GetActiveID(id, sizeof id - 1);
    require(length >= 0 && length <= 32 && id[32] == kCanary);
    return 1;
}

int readCounters() {
    zelband_GetSystemUptime();
    zelband_GetSystemCardsRead();
    for (int index = -1; index < 5; ++index)
        require(zelband_GetSystemInternalCount(index) >= 0);
    return zelband_GetQueuedAge(0) >= 0 && zelband_GetQueuedAge(1) < 256;
}

int readRaw() {
    for (short place = -1; place < 12; ++place)
        zelband_SetRawPayload_index(place, 'Q');
    for (short place = -1; place < 12; ++place)
        require(zelband_GetRawPayload_index(place) >= 0);
    return 1;
}

int setOutputs() {
    sLEDCtrl leds = {};
    zelband_SetLEDCtrl(&leds);
    zelband_SetLED(1, 2);
    return zelband_BeepNow(2, 0);
}

} // namespace

int runStripe(int operation) {
    switch (operation) {
    case 0:
        return zelband_IsDevicePresent();
    case 1:
    case 2:
    case 3:
        return readTrack(static_cast<unsigned short>(operation));
    case 4:
    case 5:
    case 6:
        return readField(static_cast<unsigned short>(operation - 3));
    case 7:
        return writeAll();
    case 8:
        return zelband_ResetFactoryDflts();
    case 9:
        return readCounters();
    case 10:
        return readId();
    case 11:
        return zelband_IsDataAvailable() >= 0 && zelband_ClearDataAvailable() >= 0;
    case 12:
        return setOutputs();
    case 13:
        return zelband_GetQueuedID(1, 1) >= 0 && zelband_ClearOverrun() >= 0;
    case 14:
        return readRaw();
    case 16:
        return readBytes();
    case 17:
        return readOwnBuffers();
    default:
        return zelband_ReadCfg();
    }
}

} // namespace zel::fuzz
