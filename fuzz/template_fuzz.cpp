// SPDX-License-Identifier: MIT
// Template files: read for their own sake, and into a plain reader and one of three configurations,
// whose settings are then written.
#include "cfgfile/tag_file.h"
#include "frame/zelTagFiles.h"
#include "fuzz/fuzzed_reader.h"

#include <algorithm>
#include <cstdio>
#include <vector>

using namespace zel::fuzz;

namespace {

void readAlone(const InputFile& file, int forReader) {
    std::vector<tsTagCfg> configs(ZELTAGAPI_MAX_CONFIGS);
    const int found =
        zelTagAPI_readTemplate(file.path(), configs.data(), ZELTAGAPI_MAX_CONFIGS, forReader);
    require(found >= 0 && found <= ZELTAGAPI_MAX_CONFIGS);
}

void withStream(const InputFile& file, const char* mode, int (*operation)(FILE*)) {
    std::FILE* const stream = std::fopen(file.path(), mode);
    require(stream && operation(stream) == 1);
    std::fclose(stream);
}

// A body needs no title, so each input gets there.
void readInto(FuzzedReaders& readers, std::size_t index, const InputFile& file) {
    readers.start(index);
    ReadDevCfgFmFile(file.path());
    readers.start(index);
    withStream(file, "rt", ReadFCfgBody);
    require(WriteDevCfgToFile(InputFile("").path()) == 1);
}

// Any header of field data, since a reader keeps the form of its own.
void writeAnyHeader(std::string_view text) {
    const std::size_t size = std::min(text.size(), sizeof(uSFD));
    std::copy_n(text.begin(), size, DevDat[iActDev].Cfg[0].uSFD.bytes);
    withStream(InputFile(""), "wt", WriteFCfgBody);
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static FuzzedReaders readers(
        {{}, {.tagPlusConfigurations = 3, .features = 0xC0, .fieldPages = 16}});
    const InputFile file(textOf(data, size));
    readAlone(file, 0);
    readAlone(file, 1);
    readInto(readers, 1, file);
    readInto(readers, 0, file);
    writeAnyHeader(textOf(data, size));
    return 0;
}
