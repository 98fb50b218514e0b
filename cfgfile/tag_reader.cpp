// SPDX-License-Identifier: MIT
// Reads a proximity reader's text file and writes what it changes to the reader.
#include "base/runtime.h"
#include "cfgfile/tag_body.h"
#include "cfgfile/tag_file.h"
#include "cfgfile/tag_tables.h"
#include "frame/state/state.h"
#include "frame/zelTagAPI.h"
#include "frame/zelTagFiles.h"

#include <algorithm>
#include <cstdint>
#include <string_view>

using namespace zel;
using namespace zel::cfgfile;

namespace {

constexpr std::size_t kTitleWithin = 128;
constexpr int kHighestConfig = ZELTAGAPI_MAX_CONFIGS - 1;

bool hasTitle(std::FILE* file) {
    char head[kTitleWithin];
    const std::size_t read = std::fread(head, 1, sizeof head, file);
    const bool isAtBegin = std::fseek(file, 0, SEEK_SET) == 0; // a pipe can't be read again
    return isAtBegin && std::string_view(head, read).find(kTitle) != std::string_view::npos;
}

void dropLine(std::FILE* file) {
    char rest[257];
    if (!std::fgets(rest, sizeof rest, file)) {
        // At the end of the file nothing is left to drop.
    }
}

// A line of another form leaves the configuration as it was. A card type without a priority behind
// it leaves the priority 0.
void readCardLines(std::FILE* file, tsTagCfg& config) {
    long type = 0;
    if (std::fscanf(file, "CardType: %ld", &type) == 1) {
        config.iCardType = static_cast<std::uint16_t>(type);
        config.iCardPriority = 0;
    }
    dropLine(file);
    int priority = 0;
    if (std::fscanf(file, "CardPriority: %d", &priority) == 1)
        config.iCardPriority = static_cast<std::uint16_t>(priority);
    dropLine(file);
}

// A file that ends where it can't be read on isn't a short one.
bool wasRead(std::FILE* file) { return std::ferror(file) == 0; }

// Marks the next configuration as filled before anything is known of it.
void markNext(int index) {
    if (index < kHighestConfig)
        activeRecord().Cfg[index + 1].bCfgValid = 1;
}

// Once a write failed the others are still read and no longer written.
int readConfigs(std::FILE* file, int highest) {
    const int active = GetActConfig();
    int result = -1;
    for (int index = 0; index <= highest; ++index) {
        SetActConfig(static_cast<short>(index));
        result &= ReadFCfgBody(file);
        readCardLines(file, activeConfig(activeRecord()));
        markNext(index);
        dropLine(file);
        if (!wasRead(file))
            result = 0;
        if (result != 0)
            result = static_cast<std::int16_t>(WriteCfg());
    }
    if (result != 0) // after a failed write the last configuration stays active
        SetActConfig(static_cast<short>(active));
    return result;
}

int readFrom(std::FILE* file) {
    if (!hasTitle(file))
        return 0;
    const int highest = std::min<int>(activeRecord().iMaxConfig, kHighestConfig);
    if (highest > 0)
        return readConfigs(file, highest);
    ReadFCfgBody(file);
    return wasRead(file) ? static_cast<std::int16_t>(WriteCfg()) : 0;
}

// As a reader of `count` configurations takes them.
int parseConfigs(std::FILE* file, tsTagCfg* configs, int count, bool forReader) {
    if (!hasTitle(file))
        return 0;
    for (int index = 0; index < count; ++index) {
        tsTagCfg config = configs[index];
        if (!parseBody(file, config))
            return index;
        if (forReader)
            keepForm(configs[index], config);
        if (count > 1)
            readCardLines(file, config);
        dropLine(file);
        configs[index] = config;
    }
    return count;
}

} // namespace

int zelTagAPI_readTemplate(const char* name, tsTagCfg* configs, int count, int forReader) {
    std::FILE* file = nullptr;
    if (!name || !configs || count < 1 || count > ZELTAGAPI_MAX_CONFIGS)
        return 0;
    if (fopen_s(&file, name, "rt") != 0)
        return 0;
    const int found = parseConfigs(file, configs, count, forReader != 0);
    const bool isWhole = wasRead(file);
    std::fclose(file);
    return isWhole ? found : 0;
}

int zeltag_ReadDevCfgFmFile(const char* name) {
    std::FILE* file = nullptr;
    if (!name || fopen_s(&file, name, "rt") != 0)
        return 0;
    const int result = readFrom(file);
    std::fclose(file);
    return result;
}
