// SPDX-License-Identifier: MIT
// Files of a sensor's settings, loaded and checked.
#include "cfgfile/echo_file.h"
#include "family/echo/echo.h"
#include "frame/zelTagFiles.h"
#include "fuzz/support/any_reader.h"
#include "fuzz/support/memory_file.h"

#include <cstring>

using namespace zel::fuzz;

namespace {

constexpr std::size_t kSettings = offsetof(tsEcho, reserved) - offsetof(tsEcho, sSonarParms);

// A sensor with settings that the checks accept.
void start() {
    Input silence(nullptr, 0);
    tsEcho& settings = plugAnyReader(4, silence).Echo;
    CheckSonarParms(&settings.sSonarParms, 1);
    CheckWalkAwayParms(&settings.sWalkAwayParms, 1);
    CheckWalkUpParms(&settings.sWalkUpParms, 1);
}

bool isAccepted(tsEcho& settings) {
    return CheckSonarParms(&settings.sSonarParms, 0) &&
           CheckWalkAwayParms(&settings.sWalkAwayParms, 0) &&
           CheckWalkUpParms(&settings.sWalkUpParms, 0) && settings.bDirtyIdle == 1;
}

void requireSameAgain() {
    require(zelecho_WriteDevCfgToFile(kOutputFile) == 1);
    const tsEcho taken = DevDat[0].Echo;
    start();
    require(zelecho_ReadDevCfgFmFile(kOutputFile) == 1);
    require(std::memcmp(&DevDat[0].Echo.sSonarParms, &taken.sSonarParms, kSettings) == 0);
    require(zelTagAPI_checkFile(kOutputFile, ZELTAGAPI_FILE_ECHO, nullptr) == 1);
}

void check(const tsEcho& settings) {
    zelFileCheck check = {};
    const int holds = zelTagAPI_checkFile(kInputFile, ZELTAGAPI_FILE_ECHO, &check);
    require(holds == (check.fault == ZELTAGAPI_FAULT_NONE));
    require(!holds || (settings.bDirtySonar && settings.bDirtyWalkAway && settings.bDirtyWalkUp));
}

// A file that isn't there.
void requireNoFile() {
    for (const char* name : {static_cast<const char*>(nullptr), ""}) {
        require(zelecho_WriteDevCfgToFile(name) == 0 && zelecho_ReadDevCfgFmFile(name) == 0);
        require(zelTagAPI_checkFile(name, ZELTAGAPI_FILE_ECHO, nullptr) == 0);
    }
    require(ProcessSonarTokenVal(nullptr, 0, nullptr) == 0);
    require(ProcessSonarTokenVal("x", 0, nullptr) == 0);
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text = Input(data, size).text();
    start();
    setInput(text);
    require(zelecho_ReadDevCfgFmFile(kInputFile) == 1);
    require(isAccepted(DevDat[0].Echo) && DevDat[0].Echo.reserved[0] == 0);
    if (size % 2 == 0)
        check(DevDat[0].Echo);
    if (isOneOf(128, text)) {
        requireNoFile();
        requireSameAgain();
    }
    return 0;
}
