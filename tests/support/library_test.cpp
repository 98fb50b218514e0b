// SPDX-License-Identifier: MIT
// Puts the library back to what it is when loaded, before and after each test.
#include "tests/support/library_test.h"

#include <cstring>

namespace zel::test {

LibraryTest::LibraryTest() {
    setVirtualMicroseconds(kStartOfTime);
    bus().clear();
    EXPECT_TRUE(bus().install());
    bus().startTrace();
    SetDevTypeSrch(0); // no test looks on lines or in the network unless it says so
    onPause([](std::uint64_t us) { bus().note("~ " + std::to_string(us / 1000) + " ms"); });
    takePausedMicroseconds();
}

LibraryTest::~LibraryTest() {
    USBDisconnect();
    EXPECT_EQ(bus().openHandles(), 0) << "a handle stayed open";
    for (const auto& reader : plugged_)
        EXPECT_EQ(reader->violations(), 0) << reader->lastViolation();
    plugged_.clear();
    onPause({});
    _APIinit();
    cbIndex = 0;
    std::memset(&zelTagVidPid, 0, sizeof zelTagVidPid);
    std::memset(activeIDBuf, 0, sizeof activeIDBuf);
    activeIDBufSz = 0;
    errorString.clear();
    baudrate = defaultbaudrate = 9600;
    SetIpPort(0, 0, 0, 0, 0);
    EXPECT_TRUE(sim::UsbBus::uninstall());
}

std::shared_ptr<sim::TagReader> LibraryTest::plugReader(const sim::UsbIdentity& identity,
                                                        const sim::TagOptions& options) {
    auto reader = std::make_shared<sim::TagReader>(options);
    bus().plug(reader, identity);
    plugged_.push_back(reader);
    return reader;
}

std::shared_ptr<sim::TagReader> LibraryTest::plugReader(const std::string& name) {
    return plugReader({sim::TagReader::kVendor, sim::TagReader::kProduct, name});
}

int LibraryTest::connect() {
    zeltag_USBDeviceConnect(ZELTAG_USB_VENDOR, ZELTAG_USB_PRODUCT, nullptr);
    return GetDevCnt();
}

std::shared_ptr<sim::TagReader> LibraryTest::connectReader(const sim::TagOptions& options) {
    auto reader =
        plugReader({sim::TagReader::kVendor, sim::TagReader::kProduct, "reader"}, options);
    EXPECT_EQ(connect(), 1);
    bus().takeTrace();
    return reader;
}

void LibraryTest::traceNothing() {
    bus().clear();
    onPause({});
}

void LibraryTest::setFilterRow(int row, unsigned short vendor, unsigned short product) {
    zelTagVidPid.rows[row].vendor = vendor;
    zelTagVidPid.rows[row].product = product;
}

} // namespace zel::test
