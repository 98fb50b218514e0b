// SPDX-License-Identifier: MIT
// Files of a sensor's settings, loaded and checked.
#include "cfgfile/echo_file.h"
#include "family/echo/echo.h"
#include "frame/zelTagAPI.h"
#include "frame/zelTagFiles.h"
#include "frame/zelTagState.h"
#include "fuzz/target.h"

#include <cstring>
#include <memory>

using namespace zel::fuzz;

namespace {

// A sensor in the table, with settings that the checks accept.
void start() {
    DevDat[0] = {};
    DevDat[0].iProduct = ZELTAGAPI_ZELECHO;
    iActDev = 0;
    iDevsFnd = 1;
    tsEcho& settings = DevDat[0].Echo;
    CheckSonarParms(&settings.sSonarParms, 1);
    CheckWalkAwayParms(&settings.sWalkAwayParms, 1);
    CheckWalkUpParms(&settings.sWalkUpParms, 1);
}

bool isAccepted() {
    tsEcho& settings = DevDat[0].Echo;
    return CheckSonarParms(&settings.sSonarParms, 0) &&
           CheckWalkAwayParms(&settings.sWalkAwayParms, 0) &&
           CheckWalkUpParms(&settings.sWalkUpParms, 0) && settings.bDirtyIdle == 1;
}

// Whether two records differ in what a load sets alone.
bool isLikewise(const tsDevDat& changed, const tsDevDat& before) {
    const auto rest = std::make_unique<tsDevDat>(changed);
    std::memcpy(&rest->Echo.bDirtySonar, &before.Echo.bDirtySonar,
                offsetof(tsEcho, reserved) - offsetof(tsEcho, bDirtySonar));
    return std::memcmp(rest.get(), &before, sizeof before) == 0;
}

void requireSameAgain() {
    const InputFile file("");
    require(zelecho_WriteDevCfgToFile(file.path()) == 1);
    const tsEcho before = DevDat[0].Echo;
    start();
    require(zelecho_ReadDevCfgFmFile(file.path()) == 1);
    require(std::memcmp(&DevDat[0].Echo.sSonarParms, &before.sSonarParms,
                        offsetof(tsEcho, reserved) - offsetof(tsEcho, sSonarParms)) == 0);
    require(zelTagAPI_checkFile(file.path(), ZELTAGAPI_FILE_ECHO, nullptr) == 1);
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const InputFile file(textOf(data, size));
    start();
    const auto before = std::make_unique<tsDevDat>(DevDat[0]);
    require(zelecho_ReadDevCfgFmFile(file.path()) == 1);
    require(isLikewise(DevDat[0], *before) && isAccepted());
    zelFileCheck check = {};
    const int holds = zelTagAPI_checkFile(file.path(), ZELTAGAPI_FILE_ECHO, &check);
    require(holds == (check.fault == ZELTAGAPI_FAULT_NONE));
    tsEcho& settings = DevDat[0].Echo;
    require(!holds || (settings.bDirtySonar && settings.bDirtyWalkAway && settings.bDirtyWalkUp));
    requireSameAgain();
    return 0;
}
