// SPDX-License-Identifier: MIT
// Matching, handles and retries above the platform's HID services.
#include "transport/usb_driver.h"

#include "base/pause.h"
#include "frame/state/state.h"
#include "transport/observer.h"
#include "transport/usb_identity.h"
#include "transport/usb_platform.h"

#include <algorithm>
#include <unistd.h>

namespace {

constexpr int kSendTries = 6;
constexpr useconds_t kSendRetryPause = 80'000; // µs

constinit UsbBackend backend = {};
constinit bool backendRuns = false;

bool isComplete(const UsbBackend& b) {
    return b.start && b.stop && b.list && b.ids && b.open && b.unlist && b.close && b.setFeature &&
           b.getFeature;
}

bool tableHoldsHandle() {
    return std::any_of(std::begin(DevDat), std::end(DevDat), zel::holdsHandle);
}

struct Match {
    bool found;
    int row;
};

bool isTag(unsigned vendor, unsigned product) {
    return vendor == zel::kTagIdentity.vendor && product == zel::kTagIdentity.product;
}

// A row with vendor 0 ends the filter list; of several matching rows the last one wins.
Match matchFilterList(unsigned vendor, unsigned product) {
    Match match = {false, -1};
    int row = 0;
    for (const tsVidPidRow& entry : zelTagVidPid.rows) {
        if (entry.vendor == 0)
            break;
        if (entry.product != 0 && entry.vendor == vendor && entry.product == product)
            match = {true, row};
        ++row;
    }
    return match;
}

Match matchTag(unsigned vendor, unsigned product) {
    return isTag(vendor, product) ? Match{true, -1} : matchFilterList(vendor, product);
}

const char* nameOf(const void* handle) {
    const auto* const record =
        std::find_if(std::begin(DevDat), std::end(DevDat),
                     [handle](const tsDevDat& one) { return one.hDev == handle; });
    return record == std::end(DevDat) ? "" : record->szDevName;
}

void closeObserved(void* handle) {
    zel::Observed closing(ZELTAGAPI_TRACE_USB, zel::observer.call ? nameOf(handle) : "");
    backend.close(handle);
    closing.tell(ZELTAGAPI_TRACE_CLOSE, true);
}

zel::Observed exchange() {
    const tsDevDat& record = zel::activeRecord();
    return {ZELTAGAPI_TRACE_USB, record.szDevName, static_cast<int>(record.iProduct)};
}

bool trySend(void* handle, unsigned char reportId, const unsigned char* data, long size) {
    if (!zel::observer.call)
        return backend.setFeature(handle, reportId, data, size) != 0;
    const zel::Observed sending = exchange();
    const bool isSent = backend.setFeature(handle, reportId, data, size) != 0;
    const long skipped = reportId == 0 || size == 0 ? 0 : 1;
    sending.tell(ZELTAGAPI_TRACE_SEND, isSent, data + skipped, size - skipped);
    return isSent;
}

bool receive(void* handle, unsigned char* buffer, long size) {
    if (!zel::observer.call)
        return backend.getFeature(handle, buffer[0], buffer + 1, &size) != 0;
    const zel::Observed receiving = exchange();
    const bool came = backend.getFeature(handle, buffer[0], buffer + 1, &size) != 0;
    receiving.tell(ZELTAGAPI_TRACE_RECEIVE, came, came ? buffer + 1 : nullptr, came ? size : 0);
    return came;
}

// Opens the listed device `index` and hands it over. Whether that went well.
bool handOver(int index, int row, zelFoundDevice found) {
    char name[ZELTAGAPI_NAME_SIZE] = {};
    zel::Observed opening(ZELTAGAPI_TRACE_USB, name);
    void* const handle = backend.open(index, name);
    name[sizeof name - 1] = '\0';
    opening.tell(ZELTAGAPI_TRACE_OPEN, zel::isOpenHandle(handle));
    if (!zel::isOpenHandle(handle))
        return false;
    found(name, handle, row);
    return true;
}

} // namespace

int UsbDriver_Init() {
    if (backendRuns)
        return 1;
    if (!backend.start)
        backend = zel::platformUsbBackend();
    backendRuns = backend.start() != 0;
    return backendRuns ? 1 : 0;
}

void UsbDriver_Exit() {
    if (backendRuns)
        backend.stop();
    backendRuns = false;
}

int UsbDriver_UseBackend(const UsbBackend* replacement) {
    const UsbBackend next = replacement ? *replacement : zel::platformUsbBackend();
    if (!isComplete(next) || tableHoldsHandle())
        return 0;
    UsbDriver_Exit();
    backend = next;
    return UsbDriver_Init();
}

// A failed open ends the scan with the list still held, as UsbBackend says.
int UsbDriver_Generator(unsigned int vendor, unsigned int product, zelFoundDevice found) {
    if (!backendRuns)
        return 0;
    const bool wantsTags = isTag(vendor, product);
    int handedOver = 0;
    const int count = backend.list();
    for (int index = 0; index < count; ++index) {
        unsigned itsVendor = 0;
        unsigned itsProduct = 0;
        backend.ids(index, &itsVendor, &itsProduct);
        const Match match = wantsTags ? matchTag(itsVendor, itsProduct) : Match{false, -1};
        if (!match.found)
            continue;
        if (!handOver(index, match.row, found))
            return 0;
        ++handedOver;
    }
    backend.unlist();
    return handedOver > 0 ? 1 : 0;
}

int UsbDriver_Close(void* handle) {
    if (zel::isOpenHandle(handle))
        closeObserved(handle);
    return 1;
}

void* UsbDriver_CreateFile(const char*) { return nullptr; }

void* UsbDriver_tagAdv_CreateFile(const char*) { return nullptr; }

int UsbDriver_IsDevOurs(const char*, unsigned int, unsigned int, void*) { return 1; }

// Without a handle there is nothing to retry: fails at once, with no pause.
int UsbDriver_SendFR(int length, int, const unsigned char* buffer) {
    void* const handle = zel::activeRecord().hDev;
    if (!zel::isOpenHandle(handle) || length < 0)
        return 0;
    const unsigned char reportId = buffer[0];
    const unsigned char* const data = reportId == 0 ? buffer + 1 : buffer;
    const long size = reportId == 0 ? length : length + 1L;
    for (int attempt = 0; attempt < kSendTries; ++attempt) {
        if (trySend(handle, reportId, data, size))
            return 1;
        zel::pauseFor(kSendRetryPause);
    }
    return 0;
}

int UsbDriver_RecvFR(int length, int, unsigned char* buffer) {
    void* const handle = zel::activeRecord().hDev;
    if (!zel::isOpenHandle(handle) || length < 0)
        return 0;
    return receive(handle, buffer, length) ? 1 : 0;
}

int UsbDriver_WaitForData(void*, int, unsigned char*) { return 1; }
