// SPDX-License-Identifier: MIT
// A freshly loaded library, a simulated bus with its trace, and a clock that the test owns. A test
// also fails when a command came earlier than a plugged reader allows.
#pragma once

#include "frame/zelTagAPI.h"
#include "frame/zelTagState.h"
#include "sim/tag/reader.h"
#include "sim/wire/usb_bus.h"
#include "tests/support/virtual_time.h"

#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <vector>

namespace zel::test {

class LibraryTest : public ::testing::Test {
protected:
    LibraryTest();
    ~LibraryTest() override;

    // Plugs in a reader of the built-in identity, or of another one.
    static std::shared_ptr<sim::TagReader> plugReader(const std::string& name = "reader");
    static std::shared_ptr<sim::TagReader> plugReader(const sim::UsbIdentity& identity,
                                                      const sim::TagOptions& options = {});

    // Scans USB as an application does; returns the number of devices in the table.
    static int connect();

    // A reader in the table and the trace empty: the next lines are the test's own.
    static std::shared_ptr<sim::TagReader> connectReader(const sim::TagOptions& options = {});

    // A row of the device filter list.
    static void setFilterRow(int row, unsigned short vendor, unsigned short product);

    // For a test of so many exchanges that their trace would take most of its time; before a reader
    // is plugged.
    static void traceNothing();

    static sim::UsbBus& bus() { return sim::usbBus(); }

    // For a test that lets a command come too early on purpose.
    static void forgiveHaste() { plugged_.clear(); }

private:
    static inline std::vector<std::shared_ptr<sim::TagReader>> plugged_;
};

} // namespace zel::test
