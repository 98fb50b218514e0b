// SPDX-License-Identifier: MIT
// The table of messages; each begins with its number.
#include "firmware/messages.h"

#include "frame/zelTagState.h"

ErrorCodes::ErrorCodes() { initMapForErrorCode(); }

// 204, 219 and 220 are raised by nothing.
void ErrorCodes::initMapForErrorCode() {
    messages_ = {
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
}

void ErrorCodes::errorEncountered(int code) {
    const auto found = messages_.find(code);
    if (found != messages_.end())
        errorString = found->second;
}

bool zel::firmware::refuse(int code) {
    if (errorCodes)
        errorCodes->errorEncountered(code);
    return false;
}
