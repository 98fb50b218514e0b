// SPDX-License-Identifier: MIT
// Single lines of the template files of all families. The first byte chooses the family.
#include "cfgfile/band_keys.h"
#include "cfgfile/echo_file.h"
#include "cfgfile/tag_file.h"
#include "cfgfile/text_lines.h"
#include "fuzz/target.h"

#include <array>
#include <cstring>

using namespace zel::cfgfile;
using namespace zel::fuzz;

namespace {

using Line = std::array<char, 258>;

void takeTag(Line& line) {
    static tsTagCfg config;
    const KeyValue setting = keyValueIn(line.data());
    if (setting.key) {
        const int known =
            ProcessFCfgTokenVal(setting.key, static_cast<short>(setting.value), &config);
        require(known == 0 || known == 1);
    }
}

void takeEcho(Line& line) {
    static tsEcho settings;
    const KeyValue setting = keyValueIn(line.data());
    if (setting.key)
        ProcessSonarTokenVal(setting.key, setting.value,
                             reinterpret_cast<std::uint16_t*>(&settings));
    require(settings.bEchoHalt == 0 && settings.reserved[0] == 0);
}

// What a line stores is what the key then has, as far as its place reaches.
void takeBand(const Line& line) {
    static tsDevDat record;
    const BandValue value = bandValueIn(line.data());
    if (!value.key)
        return;
    store(*value.key, record, value.number);
    const long kept = valueOf(*value.key, record);
    require(kept >= -32768 && kept <= 65535);
    store(*value.key, record, kept);
    require(valueOf(*value.key, record) == kept);
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Input input(data, size);
    const int family = input.byte() % 3;
    Line line = {};
    input.text().copy(line.data(), line.size() - 1);
    if (family == 0)
        takeTag(line);
    else if (family == 1)
        takeEcho(line);
    else
        takeBand(line);
    return 0;
}
