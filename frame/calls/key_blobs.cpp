// SPDX-License-Identifier: MIT
// The exported calls on key blobs: which device they serve.
#include "firmware/key_blobs.h"
#include "firmware/crc.h"
#include "frame/state/state.h"
#include "frame/zelTagAPI.h"
#include "frame/zelTagFiles.h"

#include <exception>

using namespace zel;
using namespace zel::firmware;

namespace {

int refuseFile() {
    activeRecord().lLastErr |= ZELTAGAPI_ERR_INTEGRITY;
    return 0;
}

// The file is checked before the device is.
int load(const char* name) {
    activeRecord().lLastErr = 0;
    if (!CRC().checkCRC(name, ZELTAGAPI_FILE_KEYS))
        return refuseFile();
    return hasActiveTag() ? writeSecure().loadIniConfiguration(name) : 0;
}

} // namespace

int WriteSecureData(unsigned char* blob, int size) {
    if (!blob || !hasActiveTag())
        return 0;
    return writeSecure().WriteSecureData(blob, size);
}

int ReadSecureData(unsigned char* header, unsigned char* output) {
    if (!header || !output || !hasActiveTag())
        return 0;
    return readSecure().readSecureData(header, output);
}

int LoadIniFile(const char* name) {
    try {
        return load(name);
    } catch (const std::exception&) {
        return refuseFile(); // no memory for its text
    }
}
