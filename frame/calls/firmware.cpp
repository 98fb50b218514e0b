// SPDX-License-Identifier: MIT
// The exported calls that load firmware.
#include "base/text.h"
#include "firmware/boot_loader.h"
#include "firmware/flash.h"
#include "firmware/header_lines.h"
#include "firmware/image.h"
#include "firmware/rules.h"
#include "frame/state/state.h"
#include "frame/zelTagAPI.h"
#include "frame/zelTagFiles.h"

#include <memory>
#include <string>
#include <unistd.h>
#include <vector>

using namespace zel;
using zel::firmware::headerOf;

namespace {

constexpr char kDone[] = "Your operation is successfully executed.";
constexpr char kFailed[] = "Bootload API failed.";

bool isOnUsb() { return hasActiveTag() && activeRecord().iDevType == 0; }

const char* check(const char* name) {
    return BootloadRules().checkRulesForBootload(name) == 1 ? nullptr : errorString.c_str();
}

const char* checkAndLoad(const char* name) {
    if (const char* const refusal = check(name))
        return refusal;
    return Bootload(name) != 0 ? kDone : kFailed;
}

// Nothing thrown leaves the library: a text is the answer, all else a failure.
const char* guarded(const char* (*operation)(const char*), const char* name) {
    if (!isOnUsb())
        return kFailed;
    try {
        return operation(name);
    } catch (const char* text) {
        return text;
    } catch (...) {
        return kFailed;
    }
}

bool describe(const char* name, zelFirmwareFile& file) {
    Utilities image;
    if (!image.openInputFile(name))
        return false;
    const auto header = headerOf(name);
    if (!header)
        return false;
    BootloadRules rules;
    const int section = rules.getIndexNewFW(*header);
    const std::string value = section < 0 ? "" : rules.getFNValueForNewFW(*header, section);
    copyText(file.name, value.empty() ? "" : convertToUppercase(value.substr(1)).c_str());
    file.micro = image.micro() < 0 ? -1 : static_cast<unsigned char>(image.micro());
    file.lines = static_cast<int>(image.lines().size());
    return true;
}

} // namespace

const char* CheckRulesAndBootload(const char* name) { return guarded(checkAndLoad, name); }

const char* zelTagAPI_checkFirmware(const char* name) { return guarded(check, name); }

int zelTagAPI_readFirmware(const char* name, zelFirmwareFile* file) {
    if (!name || !file || access(name, R_OK) != 0)
        return 0;
    *file = {};
    try {
        return describe(name, *file) ? 1 : 0;
    } catch (...) {
        return 0;
    }
}

int Bootload(const char* name) {
    try {
        FlashReader flash;
        const std::unique_ptr<IBootload> loader(flash.getProductInterfaceType());
        return loader ? flash.fwFlash(loader.get(), name) : 0;
    } catch (...) { // the file can't be read, or there is no memory for it
        activeRecord().lLastErr |= ZELTAGAPI_ERR_BOOT_FILE;
        return 0;
    }
}
