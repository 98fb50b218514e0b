// SPDX-License-Identifier: MIT
// The device table filled by hand: readers on the bus and devices on byte streams.
#pragma once

#include "family/tag/tag.h"
#include "frame/state/state.h"
#include "tests/support/library_test.h"
#include "transport/hot_plug.h"
#include "transport/port_objects.h"
#include "transport/usb_driver.h"

#include <cstring>
#include <initializer_list>
#include <string>

namespace zel::test {

class DeviceTable : public LibraryTest {
protected:
    static constexpr const char* kTagName = R"(\\?\HID#Vid_5a3e&Pid_9d23)";
    static constexpr const char* kEchoName = R"(\\?\HID#Vid_8e4a&Pid_9d2a)";

    // Readers on the bus, in the table; the trace is empty behind it.
    static void connectReaders(std::initializer_list<const char*> names) {
        const int before = GetDevCnt();
        for (const char* name : names)
            plugReader(name);
        EXPECT_EQ(connect(), before + std::ssize(names));
        bus().takeTrace();
    }

    static void addSerial(const char* name) {
        tsDevDat& record = DevDat[iDevsFnd++];
        freshPort(record);
        record.iDevType = 1;
        std::strcpy(record.szDevName, name);
    }

    // The names in use, each with "-" behind one without a handle and "0" behind one with handle 0.
    static std::string list() {
        std::string text;
        for (int index = 0; index < iDevsFnd; ++index) {
            const tsDevDat& record = DevDat[index];
            text += index == 0 ? "" : " ";
            text += record.szDevName;
            text += !holdsHandle(record) ? "-" : record.hDev == nullptr ? "0" : "";
        }
        return text;
    }

    // The whole table full of records of arrivals.
    static void fill() {
        for (int index = 0; index < kMaxDevices; ++index)
            DevDat[index].hDev = nullptr;
        iDevsFnd = kMaxDevices;
    }
};

} // namespace zel::test
