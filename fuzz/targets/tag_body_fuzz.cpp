// SPDX-License-Identifier: MIT
// The settings of one configuration as a template file tells them, taken into a reader's record;
// now and then written again, which must bring the same. The first byte is the form of the reader's
// field data.
#include "cfgfile/field_data_file.h"
#include "cfgfile/tag_file.h"
#include "fuzz/support/any_reader.h"
#include "fuzz/support/memory_file.h"

#include <cstdio>
#include <iterator>
#include <string>

using namespace zel::fuzz;

namespace {

constexpr std::uint8_t kForms[] = {0, 12, 0x24, 0xFF};

void read(const char* name) {
    std::FILE* const file = std::fopen(name, "r");
    require(file && ReadFCfgBody(file) == 1);
    std::fclose(file);
}

void start(std::uint8_t form, Input& answers) {
    tsTagCfg& config = plugAnyReader(1, answers).Cfg[0];
    config.bCfgValid = 1;
    config.uSFD.bytes[0] = form;
}

std::string written() {
    setOutput({});
    std::FILE* const file = std::fopen(kOutputFile, "w");
    require(file && WriteFCfgBody(file) == 1);
    std::fclose(file);
    return std::string(output());
}

// Whether each row of the field data shows as many bytes as it counts, all of them its own.
bool isRegular(const tsTagCfg& config) {
    const zel::cfgfile::FieldDataShape shape = zel::cfgfile::shapeOf(config.uSFD);
    return shape.header > 0 && (shape.fields == 0 || shape.fieldWidth > 0) &&
           (shape.separators == 0 || shape.separatorWidth > 0) && !zel::cfgfile::showsKeys(config);
}

void requireSameAgain(std::uint8_t form, Input& answers) {
    const std::string text = written();
    const bool all = isRegular(DevDat[0].Cfg[0]);
    start(form, answers);
    read(kOutputFile);
    const std::size_t size = all ? text.npos : text.find("BEGIN");
    require(written().substr(0, size) == text.substr(0, size));
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Input input(data, size);
    const std::uint8_t form = kForms[input.byte() % std::size(kForms)];
    Input silence(nullptr, 0);
    start(form, silence);
    setInput(input.text());
    read(kInputFile);
    require(DevDat[0].iProduct == 1 && DevDat[0].Cfg[1].bCfgValid == 0);
    if (isOneOf(128, input.text()))
        requireSameAgain(form, silence);
    return 0;
}
