// SPDX-License-Identifier: MIT
// The floor of the library: the device table and the rules for touching it.
#pragma once

#include "frame/zelTagState.h"

#include <cstdint>

namespace zel {

constexpr int kMaxDevices = ZELTAGAPI_MAX_DEVICES;

// Product codes, as iProduct of a record holds them.
enum Product : std::uint32_t { kNoProduct = 0, kTag = 1, kBand = 2, kEcho = 4 };

// Bit of lLastCnctErr: no device where one was looked for, or one whose first read failed.
constexpr std::uint64_t kConnectFailed = 0x10000;

// Values of iCnctDevType: which transports a connect tries.
enum Search : std::uint16_t { kUsb = 0, kSerial = 1, kNetwork = 2, kAllTransports = 65535 };

// Whether a connect tries USB.
inline bool searchesUsb() { return iCnctDevType == kUsb || iCnctDevType == kAllTransports; }

// Whether it tries serial lines, or the network.
inline bool searchesLines() { return iCnctDevType == kSerial || iCnctDevType == kAllTransports; }
inline bool searchesNetwork() { return iCnctDevType == kNetwork || iCnctDevType == kAllTransports; }

// The product code of the active device, kNoProduct without one. Read afresh on each call.
std::uint32_t activeProduct();

// Whether the active device is a proximity reader.
inline bool hasActiveTag() { return activeProduct() == kTag; }

// The value of hDev in a record that holds no USB handle.
inline void* noHandle() { return reinterpret_cast<void*>(UINTPTR_MAX); }

// Whether a record holds a handle. 0 is held too: arrivals keep it for a device that isn't open.
inline bool holdsHandle(const tsDevDat& record) { return record.hDev != noHandle(); }

// Handles that may go to a backend: 0 and all ones stand for no device.
inline bool isOpenHandle(void* handle) { return handle != nullptr && handle != noHandle(); }

// Whether the active index lies inside the table in use. Tested afresh on each call.
bool hasActiveDevice();

// The record of iActDev; record 0 when an application moved the index out of the table.
tsDevDat& activeRecord();

// The configuration that a record's iActConfig selects; configuration 0 for an index outside.
const tsTagCfg& activeConfig(const tsDevDat& record);
tsTagCfg& activeConfig(tsDevDat& record);

// Takes all devices out of use and asks the next call that locks to close them. Safe inside a
// signal handler.
void requestDisconnect();

// Whether that was asked for; answering clears the request.
bool takeDisconnectRequest();

// The value of a call that nothing can serve.
std::int16_t unsupportedValue();
void setUnsupportedValue(std::int16_t value);

// Products that connect tries, as bits.
std::uint32_t connectProducts();
void setConnectProducts(std::uint32_t mask);

// Bit count of the last identifier read, kept with activeIDBuf.
std::int32_t lastIdBits();
void setLastIdBits(std::int32_t bits);

// An element of a queued identifier, as GetQueuedID_index() numbers them; 0 for no such one.
std::int64_t queuedElement(const tsQueuedID& queued, int index);

// Leaves a word alone that is as it shall be, so that the pages of a record that nobody used stay
// those of the library's file.
inline void settle(std::uint32_t& word, std::uint32_t value) {
    if (word != value)
        word = value;
}

// The words that each connect and disconnect starts anew.
void startRecord(tsDevDat& record);

// Every record as the library holds it after loading.
void clearTable();

// The two text objects among the exported data; built once, when the library is loaded.
void buildExportedTexts();

} // namespace zel
