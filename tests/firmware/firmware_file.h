// SPDX-License-Identifier: MIT
// Makes firmware files: header, micro line, body, trailer.
#pragma once

#include "tests/support/crc32.h"
#include "tests/support/files.h"

#include <string>
#include <vector>

namespace zel::test {

using Lines = std::vector<std::string>;

inline std::string joined(const Lines& lines, const std::string& end = "\n") {
    std::string text;
    for (const std::string& line : lines)
        text += line + end;
    return text;
}

// A text with its trailer behind it.
inline std::string sealed(const std::string& text) { return text + crcDigits(text); }

// What a header tells; the defaults let the reader of the tests, ZT7 with ZT7_0302, pass.
struct FirmwareHeader {
    std::string overrideNumber = "1";
    std::string ps = "128";
    std::string partNumber = "ZT7";
    std::string readerFirmware = "ZT7_0302";
    std::string newName = "ZT7_0303_TEST";

    Lines lines() const {
        return {"OVR " + overrideNumber,
                "DATE 2024-01-31",
                "FORMAT 2",
                "COUNT 1",
                "PS " + ps,
                "PN " + partNumber,
                "FWBL 148",
                "FN " + readerFirmware,
                "CPU1AP1 103",
                "CPU1BL1 149",
                "#NEW FW",
                "PN " + partNumber,
                "PS " + ps,
                "FWBL 150",
                "FN " + newName};
    }
};

constexpr int kSection = 10; // index of "#NEW FW" among those lines

struct FirmwareFile {
    Lines header = FirmwareHeader{}.lines();
    std::string micro = "M0";
    Lines body = {":000102030405060708090A0B0C0D0E0F1011121314"};
    std::string lineEnd = "\n";

    std::string text() const {
        return sealed(joined(header, lineEnd) + micro + lineEnd + joined(body, lineEnd));
    }
};

} // namespace zel::test
