// SPDX-License-Identifier: MIT
// Firmware files in a folder, and readers that they are made for.
#pragma once

#include "tests/cli/command_line_test.h"
#include "tests/firmware/firmware_file.h"
#include "tests/support/temporary_folder.h"

namespace zel::test {

class FirmwareCommandTest : public CommandLineTest {
protected:
    static constexpr int kLines = 10;

    FirmwareCommandTest() { writeText("f.hex", file().text()); }

    // Ten lines of one byte each, the numbers of the lines.
    static FirmwareFile file() {
        FirmwareFile file;
        file.body = {":01", ":02", ":03", ":04", ":05", ":06", ":07", ":08", ":09", ":0A"};
        return file;
    }
    static std::vector<std::uint8_t> flashed() { return {1, 2, 3, 4, 5, 6, 7, 8, 9, 10}; }

    // Which f.hex is made for.
    static std::shared_ptr<sim::TagReader> plugZt7(const std::string& name = "a",
                                                   const std::string& firmware = "ZT7_0302") {
        sim::TagOptions options;
        options.partNumber = "ZT7";
        options.fileName = firmware;
        auto reader =
            plugReader({sim::TagReader::kVendor, sim::TagReader::kProduct, name}, options);
        reader->bootLoader().options().lines = kLines;
        return reader;
    }

    // Whether anything of a flash reached the bus since the trace was taken last.
    static bool isFlashTraced() {
        return bus().takeTrace().find("enter boot loader") != std::string::npos;
    }

private:
    TemporaryFolder folder_;
};

} // namespace zel::test
