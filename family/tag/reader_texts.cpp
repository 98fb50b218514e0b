// SPDX-License-Identifier: MIT
// Texts and numbers that a reader tells of itself.
#include "base/bytes.h"
#include "family/tag/error_words.h"
#include "family/tag/feature_report.h"
#include "family/tag/services.h"
#include "family/tag/stream.h"

#include <algorithm>
#include <cstring>
#include <iterator>

using namespace zel;
using tag::Opcode;
using tag::Payload;
namespace stream = zel::tag::stream;
using stream::Frame;
using stream::Instruction;

namespace {

constexpr std::uint8_t kPartNumber = 0x01;
constexpr std::uint8_t kFirmwareText = 0x04;
constexpr std::uint8_t kFullVersion = 4;
constexpr std::uint8_t kFileName = 7;
constexpr std::uint8_t kSerialNumber = 0x05;
constexpr std::uint8_t kVersion = 0x03;

// What is asked for of each, however much its buffer holds.
constexpr int kFileNameLength = 8;
constexpr int kFullVersionLength = 3;
constexpr int kPartNumberLength = 3;
constexpr int kSerialNumberPages = 4;

// Each text has a buffer of its own, good until it is asked for again.
constinit char fileName[65] = {};
constinit char fullVersion[65] = {};
constinit char partNumber[25] = {};
constinit unsigned char serialNumber[32] = {};

std::uint32_t bigEndian(const std::uint8_t* bytes) {
    return std::uint32_t{bytes[0]} << 24 | std::uint32_t{bytes[1]} << 16 |
           std::uint32_t{bytes[2]} << 8 | bytes[3];
}

// Takes `count` characters one by one; the first that `ask` doesn't get ends the text.
template <std::size_t Size>
char* readText(char (&text)[Size], int count, bool (*ask)(int index, char& character)) {
    if (iActDev < 0 || iActDev > kMaxDevices)
        return nullptr;
    std::memset(text, 0, Size);
    for (int i = 0; i < count; ++i)
        if (!ask(i, text[i]))
            return nullptr;
    return text;
}

bool askReport(const Payload& request, std::int64_t error, char& character) {
    Payload reply;
    if (!tag::query(request, reply))
        return tag::fail(error);
    character = static_cast<char>(reply[0]);
    return true;
}

bool askStream(int index, char& character) {
    Frame frame(Instruction::Service, kPartNumber, index);
    if (!stream::readEight(frame))
        return false;
    character = static_cast<char>(frame.data()[0]);
    return true;
}

// The first byte of a version on a stream echoes the command, the second one the unit.
std::uint32_t versionOnStream(int unit, int slot) {
    Frame frame(Instruction::Multi, kVersion, unit, slot);
    const bool answers = stream::read(frame, 4, 8);
    const std::uint8_t* const data = frame.data();
    if (data[0] == kVersion && data[1] == lowByte(unit))
        return bigEndian(data + 3);
    return answers ? 1 : 0;
}

std::uint32_t versionOnUsb(tsDevDat& record, int unit, int slot) {
    const Payload request = tag::command(Opcode::Multi, kVersion, lowByte(unit), lowByte(slot));
    if (!tag::send(request))
        return 0;
    Payload reply;
    if (!tag::fetch(reply)) {
        tag::fail(ZELTAGAPI_ERR_SERVICE);
        return 0;
    }
    const bool echoes = std::equal(request.begin(), request.begin() + 4, reply.begin());
    const std::uint32_t version = echoes ? bigEndian(&reply[4]) : 0;
    record.FWVerTbl[lowByte(unit) % tag::kFirmwareUnits][lowByte(slot) % tag::kFirmwareSlots] =
        version;
    return version;
}

} // namespace

char* zeltag_GetFWFilename() {
    tag::clearError();
    return readText(fileName, kFileNameLength, [](int i, char& character) {
        return askReport(tag::command(Opcode::Service, kFirmwareText, kFileName, lowByte(i)),
                         ZELTAGAPI_ERR_FILE_NAME, character);
    });
}

char* zeltag_GetFullFWVersion() {
    tag::clearError();
    return readText(fullVersion, kFullVersionLength, [](int i, char& character) {
        return askReport(tag::command(Opcode::Service, kFirmwareText, kFullVersion, lowByte(i)),
                         ZELTAGAPI_ERR_FULL_VERSION, character);
    });
}

char* zeltag_getPartNumberString() {
    if (stream::isActive())
        return readText(partNumber, kPartNumberLength, askStream);
    return readText(partNumber, kPartNumberLength, [](int i, char& character) {
        return askReport(tag::command(Opcode::Service, kPartNumber, lowByte(i)), ZELTAGAPI_ERR_READ,
                         character);
    });
}

unsigned char* zeltag_getESN() {
    if (!IsFastWriteReader())
        return nullptr;
    tag::clearError();
    std::memset(serialNumber, 0, sizeof serialNumber);
    for (int page = 0; page < kSerialNumberPages; ++page) {
        Payload reply;
        if (!tag::query(tag::command(Opcode::Service, kSerialNumber, lowByte(page)), reply)) {
            tag::fail(ZELTAGAPI_ERR_SERVICE);
            return nullptr;
        }
        std::copy(reply.begin(), reply.end(),
                  serialNumber + page * static_cast<std::ptrdiff_t>(reply.size()));
    }
    return serialNumber;
}

unsigned int zeltag_SendGetFirmwareVersion(int unit, int slot) {
    tsDevDat& record = activeRecord();
    if (record.iTagPlusState != tag::kMultiConfig)
        return 0;
    return stream::isActive() ? versionOnStream(unit, slot) : versionOnUsb(record, unit, slot);
}

unsigned int zeltag_GetFirmwareVersion(short unit, short slot) {
    const bool inside =
        unit >= 0 && unit < tag::kFirmwareUnits && slot >= 0 && slot < tag::kFirmwareSlots;
    const tsDevDat& record = activeRecord();
    if (!hasActiveDevice() || !inside || record.iTagPlusState != tag::kMultiConfig)
        return 0;
    return record.FWVerTbl[unit][slot];
}
