// SPDX-License-Identifier: MIT
// Reads the identifier of the card in a proximity reader's field.
#include "family/tag/feature_report.h"
#include "family/tag/tag.h"
#include "frame/state.h"
#include "frame/zelTagAPI.h"
#include "transport/usb_driver.h"

#include <algorithm>
#include <cstring>
#include <span>

using namespace zel;

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
    tag::Payload reply;
    return tag::query(tag::command(tag::Opcode::Luid), reply) ? 1 : 0;
}
