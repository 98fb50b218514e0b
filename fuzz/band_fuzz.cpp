// SPDX-License-Identifier: MIT
// Files of a magnetic stripe reader's settings, loaded and checked. An input is what stands behind
// the title; alone it is tried as a file too.
#include "cfgfile/band_file.h"
#include "frame/zelTagFiles.h"
#include "frame/zelTagState.h"
#include "fuzz/target.h"

#include <cstring>
#include <memory>

using namespace zel::fuzz;

namespace {

constexpr char kTitle[] = "//--- zelBand Configuration Template File ---\n";

// Whether two records differ in their LUID and their settings alone.
bool isLikewise(const tsDevDat& changed, const tsDevDat& before) {
    const auto rest = std::make_unique<tsDevDat>(changed);
    rest->iLUID = before.iLUID;
    std::memcpy(&rest->Band.HaltKBSend, &before.Band.HaltKBSend,
                sizeof(tsBand) - offsetof(tsBand, HaltKBSend));
    return std::memcmp(rest.get(), &before, sizeof before) == 0;
}

// What a load has made is what its own file brings again.
void requireSameAgain() {
    const InputFile file("");
    require(zelband_WriteDevCfgToFile(file.path()) == 1);
    const auto before = std::make_unique<tsDevDat>(DevDat[0]);
    DevDat[0].Band = {};
    DevDat[0].iLUID = 0;
    require(zelband_ReadDevCfgFmFile(file.path()) == 1);
    require(std::memcmp(&DevDat[0], before.get(), sizeof *before) == 0);
}

int load(const InputFile& file) {
    DevDat[0] = {};
    const auto before = std::make_unique<tsDevDat>(DevDat[0]);
    const int loaded = zelband_ReadDevCfgFmFile(file.path());
    require(isLikewise(DevDat[0], *before));
    zelFileCheck check = {};
    const int holds = zelTagAPI_checkFile(file.path(), ZELTAGAPI_FILE_BAND, &check);
    require(holds == (check.fault == ZELTAGAPI_FAULT_NONE));
    require(loaded == (check.fault != ZELTAGAPI_FAULT_TITLE));
    return loaded;
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text(textOf(data, size));
    load(InputFile(text));
    require(load(InputFile(kTitle + text)) == 1);
    requireSameAgain();
    return 0;
}
