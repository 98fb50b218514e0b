// SPDX-License-Identifier: MIT
// The library on the macOS backend, with nothing attached to the fake IOKit and an empty table.
#pragma once

#include "family/tag/tag.h"
#include "frame/state/state.h"
#include "frame/zelTagAPI.h"
#include "tests/iokit/fake_iokit.h"
#include "tests/support/virtual_time.h"
#include "transport/usb_driver.h"
#include "transport/usb_platform.h"

#include <gtest/gtest.h>

namespace zel::test {

class IokitTest : public ::testing::Test {
protected:
    void SetUp() override {
        resetFakeIokit();
        onPause([](std::uint64_t pause) { noteCall("pause " + std::to_string(pause)); });
    }

    void TearDown() override {
        USBDisconnect();
        UsbDriver_Exit();
        cbIndex = 0;
        onPause(nullptr);
        resetFakeIokit();
    }

    static int useIokit() { return UsbDriver_UseBackend(&iokitUsbBackend()); }

    static int scan() { return UsbDriver_Generator(0x5A3E, 0x9D23, zeltag_FoundDevice); }

    // Starts the backend with these devices attached.
    static void attach(std::vector<FakeHidDevice> devices) {
        fakeIokit().devices = std::move(devices);
        useIokit();
        takeCalls();
    }

    // Finds these devices too, so that the first one is active.
    static void connect(std::vector<FakeHidDevice> devices) {
        attach(std::move(devices));
        scan();
        takeCalls();
    }

    static FakeHidDevice readerAt(std::string path) { return {.path = std::move(path)}; }
};

} // namespace zel::test
