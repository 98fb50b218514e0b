// SPDX-License-Identifier: MIT
// Files of a magnetic stripe reader's settings, loaded and checked. What has no title gets one; the
// file alone is tried too.
#include "cfgfile/band_file.h"
#include "cfgfile/interface_kind.h"
#include "frame/zelTagFiles.h"
#include "frame/zelTagState.h"
#include "fuzz/support/any_reader.h"
#include "fuzz/support/memory_file.h"

#include <cstring>
#include <memory>

using namespace zel::fuzz;

namespace {

constexpr std::string_view kTitle = "//--- zelBand Configuration Template File ---\n";
constexpr std::size_t kMostText = 4096;

// Whether two records differ in their LUID and their settings alone.
bool isLikewise(const tsDevDat& changed, const tsDevDat& before) {
    constexpr std::size_t kBegin = offsetof(tsDevDat, Band.HaltKBSend);
    constexpr std::size_t kEnd = offsetof(tsDevDat, Band) + sizeof(tsBand);
    const auto* const a = reinterpret_cast<const char*>(&changed);
    const auto* const b = reinterpret_cast<const char*>(&before);
    return std::memcmp(a, b, offsetof(tsDevDat, iLUID)) == 0 &&
           std::memcmp(a + offsetof(tsDevDat, iDID), b + offsetof(tsDevDat, iDID),
                       kBegin - offsetof(tsDevDat, iDID)) == 0 &&
           std::memcmp(a + kEnd, b + kEnd, sizeof changed - kEnd) == 0;
}

// What a load has made is what its own file brings again.
void requireSameAgain() {
    static tsDevDat taken;
    require(zelband_WriteDevCfgToFile(kOutputFile) == 1);
    std::memcpy(&taken, &DevDat[0], sizeof taken);
    DevDat[0].Band = {};
    DevDat[0].iLUID = 0;
    DevDat[0].Band.bBandOpen = taken.Band.bBandOpen;
    require(zelband_ReadDevCfgFmFile(kOutputFile) == 1);
    require(std::memcmp(&DevDat[0].Band.HaltKBSend, &taken.Band.HaltKBSend,
                        sizeof(tsBand) - offsetof(tsBand, HaltKBSend)) == 0);
    require(DevDat[0].iLUID == taken.iLUID);
}

int load(std::string_view text, bool isChecked) {
    static tsDevDat before;
    Input silence(nullptr, 0);
    std::memcpy(&before, &plugAnyReader(2, silence), sizeof before);
    setInput(text);
    const int loaded = zelband_ReadDevCfgFmFile(kInputFile);
    require(isLikewise(DevDat[0], before));
    if (!isChecked)
        return loaded;
    zelFileCheck check = {};
    const int holds = zelTagAPI_checkFile(kInputFile, ZELTAGAPI_FILE_BAND, &check);
    require(holds == (check.fault == ZELTAGAPI_FAULT_NONE));
    require(loaded == (check.fault != ZELTAGAPI_FAULT_TITLE));
    return loaded;
}

// A file that isn't there.
void requireNoFile() {
    for (const char* name : {static_cast<const char*>(nullptr), ""}) {
        require(zelband_WriteDevCfgToFile(name) == 0 && zelband_ReadDevCfgFmFile(name) == 0);
        require(zelband_ReadDevTypeFromFile(name) == 65535);
        require(zelTagAPI_checkFile(name, ZELTAGAPI_FILE_BAND, nullptr) == 0);
    }
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static char text[kMostText + kTitle.size()];
    static const std::size_t title = kTitle.copy(text, kTitle.size());
    const std::size_t rest = Input(data, size).text().copy(text + title, kMostText);
    const std::string_view all(text, title + rest);
    const std::string_view bare = all.substr(title);
    const bool isFew = isOneOf(512, bare);
    require(load(all, bare.size() % 2 == 0) == 1);
    if (!isFew)
        return 0;
    requireSameAgain();
    requireNoFile();
    load(bare, true);
    const int kind = zelband_ReadDevTypeFromFile(kInputFile);
    require(kind == 0 || kind == 1 || kind == 65535);
    return 0;
}
