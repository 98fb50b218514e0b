// SPDX-License-Identifier: MIT
// Reads the identifier of the card in a proximity reader's field.
#include "base/pause.h"
#include "family/tag/ascii_protocol.h"
#include "family/tag/feature_report.h"
#include "family/tag/stream.h"
#include "family/tag/tag.h"
#include "frame/state/state.h"
#include "frame/zelTagAPI.h"
#include "transport/usb_driver.h"

#include <algorithm>
#include <cstring>
#include <span>
#include <unistd.h>

using namespace zel;
namespace stream = zel::tag::stream;

namespace {

constexpr std::size_t kLongIdPages = 4;
using LongId = std::array<std::uint8_t, kLongIdPages * tag::kPayloadSize>;

int readFailed() {
    activeRecord().lLastErr |= ZELTAGAPI_ERR_ID_READ;
    return 0;
}

// Clears the error word and the caller's bytes. Whether there is a buffer to read into.
bool beginRead(unsigned char* buffer, short size) {
    activeRecord().lLastErr = 0;
    if (!buffer)
        return false;
    std::memset(buffer, 0, static_cast<std::size_t>(std::max<int>(size, 0)));
    return true;
}

// The keyboard-less kind pushes its data: wait for its input report, number 1.
bool waitForPushedData() {
    const tsDevDat& record = activeRecord();
    unsigned char report[1 + tag::kPayloadSize] = {1};
    return !record.bTagAdv || UsbDriver_WaitForData(record.hDev, sizeof report, report);
}

void copyId(std::span<const std::uint8_t> id, unsigned char* buffer, short size) {
    std::copy_n(id.data(), std::clamp<int>(size, 0, static_cast<int>(id.size())), buffer);
}

bool queryBitCount(int& bits) {
    tag::Payload reply;
    if (!tag::query(tag::command(tag::Opcode::IdBitCount), reply))
        return false;
    bits = reply[0];
    return true;
}

bool queryLongId(LongId& id) {
    for (std::size_t page = 0; page < kLongIdPages; ++page) {
        tag::Payload reply;
        if (!tag::query(tag::command(tag::Opcode::LongIdPage, static_cast<std::uint8_t>(page)),
                        reply))
            return false;
        std::copy(reply.begin(), reply.end(), &id[page * tag::kPayloadSize]);
    }
    return true;
}

// A stream delivers a byte, the bit count, two bytes, then the identifier.
constexpr std::size_t kStreamHead = 4;
constexpr int kShortId = 8;
constexpr int kLongId = 32;
constexpr int kIdTries = 3;
constexpr useconds_t kIdPause = 50'000; // µs

std::uint8_t takeStreamId(const stream::Frame& frame, unsigned char* buffer, int size) {
    std::copy_n(frame.data() + kStreamHead, size, buffer);
    return frame.data()[1];
}

// Whether a try came to an answer. That there is no card is one, where whole data came with it.
bool answersId(stream::Frame& frame) {
    return stream::read(frame) || frame.status() == stream::kNoCard;
}

bool askId(stream::Frame& frame) {
    for (int attempt = 1; !answersId(frame); ++attempt) {
        if (attempt == kIdTries)
            return false;
        stream::flushOutgoing();
        pauseFor(kIdPause);
    }
    return true;
}

int streamId(unsigned char* buffer, short size) {
    stream::Frame frame(stream::Instruction::Id, 0, 0, kStreamHead + kShortId);
    if (!askId(frame))
        return readFailed();
    return size < kShortId ? 0 : takeStreamId(frame, buffer, kShortId);
}

// No card is no answer here. After another failure the read goes on with whatever the frame holds.
int streamId32(unsigned char* buffer, short size) {
    stream::Frame frame(stream::Instruction::Id, 0, 0, kStreamHead + kLongId);
    if (!stream::read(frame)) {
        if (frame.status() == stream::kNoCard)
            return 0;
        readFailed();
    }
    return size < kLongId ? 0 : takeStreamId(frame, buffer, kLongId);
}

bool answersProbe() {
    stream::Frame frame(stream::Instruction::Presence, 0xED, 0xED, 4);
    return stream::read(frame) || stream::read(frame);
}

// Reads into the library's own buffer, through the exported call and so under its lock.
int readIntoOwnBuffer(int (*read)(unsigned char*, short), short size) {
    const short wanted = size >= 0 && size <= ZELTAGAPI_ID_SIZE ? size : short{ZELTAGAPI_ID_SIZE};
    std::memset(activeIDBuf, 0, static_cast<std::size_t>(wanted));
    activeIDBufSz = wanted;
    return read(activeIDBuf, wanted);
}

} // namespace

int zeltag_GetActiveID(unsigned char* buffer, short size) {
    if (!beginRead(buffer, size))
        return readFailed();
    if (tag::usesAscii())
        return acp_getActiveID(buffer, size);
    if (stream::isActive())
        return streamId(buffer, size);
    if (!waitForPushedData())
        return 0;
    tag::Payload id;
    if (!tag::query(tag::command(tag::Opcode::Id), id))
        return readFailed();
    copyId(id, buffer, size);
    int bits = 0;
    return queryBitCount(bits) ? bits : readFailed();
}

// The buffer stays clear unless all five queries went through.
int zeltag_GetActiveID32(unsigned char* buffer, short size) {
    if (!beginRead(buffer, size))
        return readFailed();
    if (tag::usesAscii())
        return acp_getActiveID(buffer, size);
    if (stream::isActive())
        return streamId32(buffer, size);
    if (!waitForPushedData())
        return 0;
    LongId id;
    int bits = 0;
    if (!queryLongId(id) || !queryBitCount(bits))
        return readFailed();
    copyId(id, buffer, size);
    return bits;
}

int zeltag_getActiveID(short size) { return readIntoOwnBuffer(GetActiveID, size); }

int zeltag_getActiveID32(short size) { return readIntoOwnBuffer(GetActiveID32, size); }

int zeltag_IsDevicePresent() {
    if (stream::isActive())
        return answersProbe() ? 1 : 0;
    tag::Payload reply;
    return tag::query(tag::command(tag::Opcode::Luid), reply) ? 1 : 0;
}
