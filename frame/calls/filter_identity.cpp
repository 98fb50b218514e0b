// SPDX-License-Identifier: MIT
// What the device filter list says of the active device.
#include "frame/state/state.h"
#include "frame/zelTagAPI.h"

#include <cstring>
#include <iterator>

using namespace zel;

namespace {

constexpr char kBuiltInName[] = "5A3E:9D23 Norvanex";
constexpr char kKeystrokeReader[] = "6B2D:9D25 Norvanex KQ7";
constexpr char kNoName[] = "";
constexpr int kRows = std::size(decltype(zelTagVidPid.rows){});
constexpr int kPairs = std::size(decltype(zelTagVidPid.defaults){});
constexpr int kPairWithData = 1;

// The row that the active device matched, or null.
const tsVidPidRow* matchedRow() {
    const int row = activeRecord().iVidPidIdx;
    return row >= 0 && row < kRows ? &zelTagVidPid.rows[row] : nullptr;
}

bool isOnUsb(const tsDevDat& record) {
    return !tcpipUSBmode && record.iDevType != 1 && record.iDevType != 2;
}

const tsFilterPair* filterOf(int index) {
    const tsVidPidRow* const row = matchedRow();
    const bool ofRow = hasActiveDevice() && row && activeRecord().iProduct == kTag;
    if (ofRow && index == kPairWithData)
        return &row->filter[kPairWithData];
    return index >= 0 && index < kPairs ? &zelTagVidPid.defaults[index] : nullptr;
}

} // namespace

const char* GetVidPidVendorName() {
    if (!hasActiveDevice())
        return kBuiltInName;
    const tsDevDat& record = activeRecord();
    if (record.iProduct != kTag || !isOnUsb(record))
        return kNoName;
    const tsVidPidRow* const row = matchedRow();
    return row ? row->vendorName : kBuiltInName;
}

int getVidPidVendorName_char(short index) {
    const char* const name = GetVidPidVendorName();
    const int length = static_cast<int>(std::strlen(name));
    return index >= 0 && index < length ? static_cast<unsigned char>(name[index]) : 0;
}

int64_t GetVidPidFilterMask(int index) {
    const tsFilterPair* const filter = filterOf(index);
    return filter ? static_cast<int64_t>(filter->mask) : 0;
}

int64_t GetVidPidFilterCompare(int index) {
    const tsFilterPair* const filter = filterOf(index);
    return filter ? static_cast<int64_t>(filter->compare) : 0;
}

int isKQ7Reader() { return std::strcmp(GetVidPidVendorName(), kKeystrokeReader) == 0 ? 1 : 0; }

void unlockKeystrokeModeOfKQ7() { BeepNow(0, 0); }
