// SPDX-License-Identifier: MIT
// Template files of proximity readers, read without a reader. The first byte says for how many
// configurations and whether as a reader would keep them; the file follows.
#include "cfgfile/tag_file.h"
#include "frame/zelTagFiles.h"
#include "fuzz/support/memory_file.h"
#include "fuzz/target.h"

#include <array>
#include <cstring>

using namespace zel::fuzz;

namespace {

constexpr int kMost = 3;
using Configs = std::array<tsTagCfg, kMost>;

// What no load of a file stands for.
Configs untouched() {
    Configs configs;
    std::memset(configs.data(), 0x5A, sizeof configs);
    return configs;
}

// A file or a place that isn't there.
void requireNothing() {
    tsTagCfg config = {};
    require(zelTagAPI_readTemplate(nullptr, &config, 1, 0) == 0);
    require(zelTagAPI_readTemplate("", &config, 1, 0) == 0);
    require(zelTagAPI_readTemplate(kInputFile, nullptr, 1, 0) == 0);
    require(zelTagAPI_readTemplate(kInputFile, &config, 0, 0) == 0);
    require(zelTagAPI_readTemplate(kInputFile, &config, 99, 0) == 0);
    require(ReadFCfgBody(nullptr) == 0 && zeltag_ReadDevCfgFmFile("") == 0);
    require(zeltag_ReadDevCfgFmFile(nullptr) == 0);
    require(ProcessFCfgTokenVal(nullptr, 0, &config) == 0);
    require(ProcessFCfgTokenVal("x", 0, nullptr) == 0);
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const Configs before = untouched();
    static Configs configs;
    Input input(data, size);
    const std::uint8_t way = input.byte();
    const int count = 1 + way % kMost;
    std::memcpy(configs.data(), before.data(), sizeof configs);
    setInput(input.text());
    const int found = zelTagAPI_readTemplate(kInputFile, configs.data(), count, way >> 7);
    require(found >= 0 && found <= count);
    const auto behind = static_cast<std::size_t>(found);
    require(std::memcmp(&configs.data()[behind], &before.data()[behind],
                        (kMost - behind) * sizeof(tsTagCfg)) == 0);
    if (isOneOf(512, input.text()))
        requireNothing();
    return 0;
}
