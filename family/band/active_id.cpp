// SPDX-License-Identifier: MIT
// The active identifier: a field of a track, chosen by the application; and the queued one.
#include "base/bytes.h"
#include "family/band/band.h"
#include "family/band/frame.h"
#include "frame/state/state.h"
#include "frame/zelTagAPI.h"

#include <algorithm>
#include <cstring>

using namespace zel;

namespace {

constexpr int kIdSize = ZELTAGAPI_ID_SIZE;
constexpr int kFieldSize = 257; // of a track's field
constexpr unsigned kMostFields = 50;
constexpr unsigned kMostOffset = 100;
constexpr std::size_t kAgeAt = 4; // of the reply to the queue's query
constexpr unsigned short kQueueAge = 0;
constexpr unsigned short kQueueByte = 1;

// What QueuedID is to a proximity reader, of this family's own.
constinit tsQueuedID queued = {};

// Takes the active field of the active device's track. It has no end of its own; what a buffer
// holds beyond it is zero.
void takeActiveField(unsigned char* buffer, int size) {
    std::memset(buffer, 0, static_cast<std::size_t>(size));
    const tsBand& settings = activeRecord().Band;
    const char* const text =
        zelBandGetTrackFieldOffset(settings.iActTrack, settings.iActField, settings.iActOffset,
                                   settings.iActLength, settings.iActTerm, 1);
    if (text)
        std::copy_n(text, std::min(size, kFieldSize), buffer);
}

int lengthOf(const unsigned char* text, int size) {
    return static_cast<int>(
        strnlen(reinterpret_cast<const char*>(text), static_cast<std::size_t>(size)));
}

int takeActiveId(unsigned char* buffer, short length) {
    tsDevDat& record = activeRecord();
    const int size = std::max<int>(length, 0);
    record.Band.iActLength = static_cast<std::uint16_t>(length);
    takeActiveField(buffer, size);
    record.lLastErr = 0;
    zelband_ClearDataAvailable();
    return lengthOf(buffer, size);
}

// Makes the library's own buffer ready. How much of it is wanted.
short clearOwnBuffer(unsigned short size) {
    const short wanted = static_cast<short>(std::min<int>(size, kIdSize));
    std::memset(activeIDBuf, 0, static_cast<std::size_t>(wanted));
    activeIDBufSz = wanted;
    return wanted;
}

void askQueue() {
    queued.age = 0;
    queued.byte42 = 0;
    band::Frame reply;
    if (!band::send(band::Command("GQ0"), reply))
        return;
    queued.age = wordOf(band::pairAt(reply, kAgeAt + 2), band::pairAt(reply, kAgeAt));
    queued.byte42 = band::pairAt(reply, kAgeAt + 4);
}

} // namespace

int zelband_SetActiveID(unsigned short track, unsigned short field, unsigned short offset,
                        unsigned short terminator) {
    tsDevDat& record = activeRecord();
    record.lLastErr = 0;
    if (track < 1 || track > 3 || field < 1 || field > kMostFields || offset > kMostOffset)
        return 0;
    record.Band.iActTrack = track;
    record.Band.iActField = field;
    record.Band.iActOffset = offset;
    record.Band.iActTerm = terminator;
    return 1;
}

int zelband_GetActiveID(unsigned char* buffer, short size) {
    return buffer ? takeActiveId(buffer, size) : 0;
}

// The caller's buffer stays as it is.
int zelband_GetActiveID32(unsigned char*, short size) {
    return takeActiveId(activeIDBuf, clearOwnBuffer(static_cast<unsigned short>(size)));
}

int zelband_getActiveID(short size) {
    return GetActiveID(activeIDBuf, clearOwnBuffer(static_cast<unsigned short>(size))) & 0xFFFF;
}

int zelband_getActiveID32(short size) {
    return GetActiveID32(activeIDBuf, clearOwnBuffer(static_cast<unsigned short>(size))) & 0xFFFF;
}

int zelband_getActiveID_byte(short index) {
    const bool isInside = index >= 0 && index <= activeIDBufSz && index < kIdSize;
    return isInside ? activeIDBuf[index] : 0;
}

int zelband_GetQueuedID(short, short) {
    activeRecord().Band.iActLength = kIdSize;
    return takeActiveId(queued.id, kIdSize);
}

std::int64_t zelband_GetQueuedID_index(short index) { return queuedElement(queued, index); }

std::int64_t zelband_GetQueuedAge(unsigned short which) {
    if (which != kQueueAge)
        return which == kQueueByte ? queued.byte42 : 0;
    askQueue();
    return static_cast<std::int64_t>(queued.age);
}
