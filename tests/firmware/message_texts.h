// SPDX-License-Identifier: MIT
// The messages of the rules as users know them.
#pragma once

#include <string>

namespace zel::test {

inline constexpr struct {
    int code;
    const char* text;
} kMessages[] = {
    {11, "11:- The file was either modified or tampered"},
    {204, "204:- Entered file extension for Bootloader is incorrect(Only .hex is supported)"},
    {205, "205:- The given hex File is either empty or corrupted"},
    {207, "207:- The firmware filename present in the file does not match with the reader "
          "connected to the system."},
    {209, "209:- Current Firmware does not match with the target firmware."},
    {210, "210:- Rule for CCID Firmware Failed"},
    {211, "211:- Rule for TKG Firmware Failed"},
    {212, "212:- Rule for TKA/TKB/TKC Firmware Failed"},
    {213, "213:- Rule for 256K PROCESSOR MODELS Firmware Failed"},
    {214, "214:- Rule for TKD/TKE Firmware Failed"},
    {215, "215:- Rule for TKF Firmware Failed"},
    {216, "216:- Rule for New FW with target CPU1 Firmware Failed"},
    {217, "217:- Rule failed for NON-HID Readers"},
    {218, "218:- Error in File Opening"},
    {219, "219:- One of the Rules Failed"},
    {220, "220:- Rules for Lark Reader Passed Successfully"},
    {221, "221:- Firmware FileName is not correct as per the Hex Naming Conventions"},
};

// Empty for a number without a message.
inline std::string messageOf(int code) {
    for (const auto& row : kMessages)
        if (row.code == code)
            return row.text;
    return "";
}

} // namespace zel::test
