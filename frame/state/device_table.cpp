// SPDX-License-Identifier: MIT
// The device table. As it starts it stands in the library's file, so that loading the library
// touches none of its 1 MB, and a process has pages of its own for those records alone that it
// uses.
#include "frame/state/exported.h"
#include "frame/state/state.h"

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstring>
#include <iterator>

namespace {

// Configurations whose field data start in their old form: all but the last one.
constexpr std::size_t kPresetConfigs = ZELTAGAPI_MAX_CONFIGS - 1;
constexpr std::uint8_t kOldFieldDataHeader = 12;

constexpr bool kIsLittle = std::endian::native == std::endian::little;

// A record by words: a handle of all ones is no constant expression.
using Word = std::uint32_t;

struct RecordStorage {
    alignas(tsDevDat) Word words[sizeof(tsDevDat) / sizeof(Word)];
};
static_assert(sizeof(RecordStorage) == sizeof(tsDevDat));

constexpr void setByte(RecordStorage& record, std::size_t offset, Word byte) {
    const std::size_t place = offset % sizeof(Word);
    record.words[offset / sizeof(Word)] |= byte
                                           << 8 * (kIsLittle ? place : sizeof(Word) - 1 - place);
}

constexpr void set(RecordStorage& record, std::size_t offset, std::size_t size,
                   std::uint64_t value) {
    for (std::size_t byte = 0; byte < size; ++byte, value >>= 8)
        setByte(record, offset + (kIsLittle ? byte : size - 1 - byte), value & 0xFF);
}

#define ZEL_SET(member, value)                                                                     \
    set(record, offsetof(tsDevDat, member), sizeof(tsDevDat::member), value)

constexpr void presetFieldData(RecordStorage& record) {
    for (std::size_t config = 0; config < kPresetConfigs; ++config)
        set(record, offsetof(tsDevDat, Cfg) + config * sizeof(tsTagCfg) + offsetof(tsTagCfg, uSFD),
            1, kOldFieldDataHeader);
}

// As _APIinit() leaves each record; what isn't told is 0.
constexpr RecordStorage startingRecord() {
    RecordStorage record = {};
    ZEL_SET(hDev, UINTPTR_MAX);
    presetFieldData(record);
    ZEL_SET(bSepFldOK, 1);
    ZEL_SET(bPartNumOK, 1);
    ZEL_SET(Band.iActTrack, 2);
    ZEL_SET(Band.iActLength, ZELTAGAPI_ID_SIZE);
    ZEL_SET(Band.iActTerm, 255);
    return record;
}

#undef ZEL_SET

constexpr RecordStorage kStarting = startingRecord();

struct TableStorage {
    RecordStorage records[ZELTAGAPI_MAX_DEVICES];
};

constexpr TableStorage startingTable() {
    TableStorage table = {};
    std::fill(std::begin(table.records), std::end(table.records), kStarting);
    return table;
}

} // namespace

extern "C" {
extern TableStorage zelDeviceTable ZEL_LABEL(DevDat);
ZELTAGAPI_EXPORT constinit TableStorage zelDeviceTable = startingTable();
}
ZEL_ALIAS(DevDat)

void zel::startRecord(tsDevDat& record) {
    settle(record.bSepFldOK, 1);
    settle(record.bPartNumOK, 1);
    settle(record.bTagOpen, 0);
    settle(record.iTagPlusState, 0);
    settle(record.bTagAdv, 0);
}

void zel::clearTable() {
    for (tsDevDat& record : DevDat)
        std::memcpy(&record, &kStarting, sizeof record);
}
