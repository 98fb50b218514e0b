// SPDX-License-Identifier: MIT
// Texts and numbers that a reader tells of itself.
#include "family/tag/error_words.h"
#include "family/tag/feature_report.h"
#include "family/tag/services.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <iterator>

using namespace zel;
using tag::Opcode;
using tag::Payload;

namespace {

constexpr std::uint8_t kPartNumber = 0x01;
constexpr std::uint8_t kFirmwareText = 0x04;
constexpr std::uint8_t kFullVersion = 4;
constexpr std::uint8_t kFileName = 7;
constexpr std::uint8_t kSerialNumber = 0x05;
constexpr std::uint8_t kVersion = 0x03;
constexpr int kUnits = 3;
constexpr int kSlots = 5;

// Each text has a buffer of its own, good until it is asked for again.
constinit char fileName[65] = {};
constinit char fullVersion[65] = {};
constinit char partNumber[25] = {};
constinit unsigned char serialNumber[32] = {};

std::uint8_t low(int value) { return static_cast<std::uint8_t>(value); }

// Asks for `count` characters one by one; the first that fails ends the text.
template <std::size_t Size>
char* readText(char (&text)[Size], int count, std::int64_t error, Payload (*request)(int)) {
    if (iActDev < 0 || iActDev > kMaxDevices)
        return nullptr;
    std::memset(text, 0, Size);
    for (int i = 0; i < count; ++i) {
        Payload reply;
        if (!tag::query(request(i), reply)) {
            tag::fail(error);
            return nullptr;
        }
        text[i] = static_cast<char>(reply[0]);
    }
    return text;
}

std::uint32_t bigEndian(const Payload& reply) {
    return std::uint32_t{reply[4]} << 24 | std::uint32_t{reply[5]} << 16 |
           std::uint32_t{reply[6]} << 8 | reply[7];
}

} // namespace

char* zeltag_GetFWFilename() {
    tag::clearError();
    return readText(fileName, 8, tag::kFileNameFailed, [](int i) {
        return tag::command(Opcode::Service, kFirmwareText, kFileName, low(i));
    });
}

char* zeltag_GetFullFWVersion() {
    tag::clearError();
    return readText(fullVersion, 3, tag::kFullVersionFailed, [](int i) {
        return tag::command(Opcode::Service, kFirmwareText, kFullVersion, low(i));
    });
}

char* zeltag_getPartNumberString() {
    return readText(partNumber, 3, tag::kReadFailed,
                    [](int i) { return tag::command(Opcode::Service, kPartNumber, low(i)); });
}

unsigned char* zeltag_getESN() {
    if (!IsFastWriteReader())
        return nullptr;
    tag::clearError();
    std::memset(serialNumber, 0, sizeof serialNumber);
    for (int page = 0; page < 4; ++page) {
        Payload reply;
        if (!tag::query(tag::command(Opcode::Service, kSerialNumber, low(page)), reply)) {
            tag::fail(tag::kServiceFailed);
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
    const Payload request = tag::command(Opcode::Multi, kVersion, low(unit), low(slot));
    if (!tag::send(request))
        return 0;
    Payload reply;
    if (!tag::fetch(reply))
        return static_cast<unsigned>(tag::fail(tag::kServiceFailed));
    const bool echoes = std::equal(request.begin(), request.begin() + 4, reply.begin());
    const std::uint32_t version = echoes ? bigEndian(reply) : 0;
    record.FWVerTbl[low(unit) % kUnits][low(slot) % kSlots] = version;
    return version;
}

unsigned int zeltag_GetFirmwareVersion(short unit, short slot) {
    const bool inside = unit >= 0 && unit < kUnits && slot >= 0 && slot < kSlots;
    const tsDevDat& record = activeRecord();
    if (!hasActiveDevice() || !inside || record.iTagPlusState != tag::kMultiConfig)
        return 0;
    return record.FWVerTbl[unit][slot];
}
