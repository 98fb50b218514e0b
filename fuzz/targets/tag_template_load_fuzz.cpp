// SPDX-License-Identifier: MIT
// Template files loaded into a proximity reader that answers anything, or written of one. An input
// is the way, what is known of the reader, the file up to a zero byte, then the answers.
#include "cfgfile/tag_file.h"
#include "fuzz/support/any_reader.h"
#include "fuzz/support/memory_file.h"
#include "fuzz/support/tag_reader.h"

using namespace zel::fuzz;

namespace {

int run(int way) {
    return way % 4 == 0 ? zeltag_WriteDevCfgToFile(kOutputFile)
                        : zeltag_ReadDevCfgFmFile(kInputFile);
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Input input(data, size);
    const int way = input.byte();
    const std::uint8_t known = input.byte();
    setInput(input.textUpTo('\0'));
    plugAnyReader(1, input);
    knowTag(known);
    DevDat[0].Cfg[0].uSFD.bytes[0] = static_cast<std::uint8_t>(way);
    const int result = run(way);
    require(result == 0 || result == 1 || result == -1);
    requireSoundTag();
    return 0;
}
