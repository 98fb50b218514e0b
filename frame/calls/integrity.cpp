// SPDX-License-Identifier: MIT
// The exported calls that seal a file with a checksum and check such a seal.
#include "cfgfile/tag_file.h"
#include "firmware/crc.h"
#include "firmware/trailer.h"
#include "frame/calls/settings_check.h"
#include "frame/state/state.h"
#include "frame/zelTagAPI.h"
#include "frame/zelTagFiles.h"

#include <exception>

using namespace zel;

namespace {

void noteFailure() { activeRecord().lLastErr |= ZELTAGAPI_ERR_INTEGRITY; }

// A text that doesn't fit the memory fails its check.
bool hasTrailer(const char* name, int kind) {
    return zelTagAPI_checkFile(name, kind, nullptr) != 0;
}

bool seal(const char* name) {
    try {
        return CRC().generateAppendCRC(name) == 0;
    } catch (const std::exception&) {
        return false;
    }
}

} // namespace

int zelTagAPI_checkFile(const char* name, int kind, zelFileCheck* check) {
    zelFileCheck found = firmware::finding(ZELTAGAPI_FAULT_OPEN, 0);
    try {
        CRC crc;
        found =
            isSettings(kind) ? checkSettings(name, kind) : firmware::checkTrailer(crc, name, kind);
    } catch (const std::exception&) {
        // Stays what it was: not to be read.
    }
    if (check)
        *check = found;
    return firmware::holds(found);
}

// A reader that didn't answer still has a file, with a head alone, and that is sealed too.
int WriteDevCfgToSecureFile(const char* name) {
    activeRecord().lLastErr = 0;
    if (!hasActiveTag())
        return 1;
    if (zeltag_WriteDevCfgToFile(name) == 0)
        return unsupportedValue();
    if (seal(name))
        return 1;
    noteFailure();
    return unsupportedValue();
}

int ReadDevCfgFromSecureFile(const char* name) {
    activeRecord().lLastErr = 0;
    if (!hasTrailer(name, ZELTAGAPI_FILE_TEMPLATE)) {
        noteFailure();
        return 0;
    }
    const bool isRefused = hasActiveTag() && zeltag_ReadDevCfgFmFile(name) == 0;
    return isRefused ? unsupportedValue() : 1;
}

int CheckTamperedFirmwareFile(const char* name) {
    return hasTrailer(name, ZELTAGAPI_FILE_FIRMWARE);
}

int GenerateSecureFirmwareFile(const char*) { return 0; }
