// SPDX-License-Identifier: MIT
// Writes a proximity reader's settings to its text file.
#include "base/runtime.h"
#include "cfgfile/field_data_file.h"
#include "cfgfile/tag_file.h"
#include "cfgfile/tag_tables.h"
#include "cfgfile/text_writer.h"
#include "frame/state/state.h"
#include "frame/zelTagAPI.h"
#include "frame/zelTagFiles.h"

#include <algorithm>
#include <cstdint>

using namespace zel;
using namespace zel::cfgfile;

namespace {

constexpr int kNothingRead = -1;
constexpr int kHighestConfig = ZELTAGAPI_MAX_CONFIGS - 1;

void writeOption(std::FILE* file, const char* heading, const tsNamePair& pair,
                 std::uint32_t value) {
    writeHeading(file, heading);
    writeRow(file, pair, static_cast<std::uint16_t>(value));
}

std::uint16_t written(const tag::Word& word, std::int16_t value) {
    return static_cast<std::uint16_t>(word.kind == tag::Kind::flag ? value != 0 : value);
}

void writeSection(std::FILE* file, const Section& section, const tsTagCfg& config) {
    writeHeading(file, section.heading);
    for (std::size_t i = section.firstWritten; i <= section.lastWritten; ++i)
        writeRow(file, section.names[i],
                 written(section.word(i), tag::get(config, section.word(i))));
}

// Whether the active configuration could be read, and so has a body.
bool writeBody(std::FILE* file) { return ReadCfg() != 0 && WriteFCfgBody(file) != 0; }

bool writeConfig(std::FILE* file, int index) {
    SetActConfig(static_cast<short>(index));
    const bool hasBody = writeBody(file);
    const tsTagCfg& config = activeRecord().Cfg[index];
    std::fprintf(file, "CardType: %d / Card type code\n", config.iCardType);
    std::fprintf(file, "CardPriority: %d / 0=Low, 1=High Priority\n",
                 static_cast<std::int16_t>(config.iCardPriority));
    std::fputs("##NEXTCONFIG##\n", file);
    return hasBody;
}

// A reader that stopped answering takes no SetActConfig() any more.
bool writeConfigs(std::FILE* file, int highest) {
    const std::uint8_t active = activeRecord().iActConfig;
    bool any = false;
    for (int index = 0; index <= highest; ++index)
        any = writeConfig(file, index) || any;
    activeRecord().iActConfig = active;
    return any;
}

} // namespace

int WriteFCfgBody(FILE* file) {
    if (!file)
        return 0;
    const tsTagCfg& config = activeConfig(activeRecord());
    writeOption(file, "AZERTYShiftLock", AZERTYShiftLock[0], config.AZERTYShiftLock);
    writeOption(file, "ExtendedPrecisionMath", ExtendedPrecisionMath[0],
                config.ExtendedPrecisionMath);
    for (const Section& section : kSections)
        writeSection(file, section, config);
    std::fprintf(file, "\n/ Note: DO NOT change the name \"%s\"!\n", kFieldData);
    std::fputs("/ Comment and Blank Lines between data bytes are optional.\n", file);
    std::fputs("/ ASCII Hex data bytes may be separated by Comma, Period, Space or Tab.\n", file);
    std::fprintf(file, "\nBEGIN %s\n", kFieldData);
    writeFieldData(file, config);
    std::fprintf(file, "\nEND %s\n", kFieldData);
    return 1;
}

int zelTagAPI_showsKeys(const tsTagCfg* config) { return config && showsKeys(*config) ? 1 : 0; }

int zeltag_WriteDevCfgToFile(const char* name) {
    std::FILE* file = nullptr;
    if (!name || fopen_s(&file, name, "wt") != 0)
        return 0;
    writeHead(file, kTitle);
    const int highest = std::min<int>(activeRecord().iMaxConfig, kHighestConfig);
    const bool any = highest == 0 ? writeBody(file) : writeConfigs(file, highest);
    std::fclose(file);
    return any ? 1 : kNothingRead;
}
