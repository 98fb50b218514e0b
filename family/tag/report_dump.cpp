// SPDX-License-Identifier: MIT
// Writes a reader's reports to a text file, as support asks for them.
#include "base/runtime.h"
#include "family/tag/card_data.h"
#include "family/tag/feature_report.h"
#include "family/tag/multi_config.h"
#include "frame/state/state.h"
#include "frame/zelTagAPI.h"

#include <algorithm>
#include <cstdio>
#include <iterator>
#include <sys/stat.h>

using namespace zel;
using tag::Payload;

namespace {

constexpr std::uint8_t kOpcodes[] = {0x80, 0x81, 0x82, 0x83, 0x84, 0x85, 0x87, 0x88,
                                     0x89, 0x8A, 0x8B, 0x8C, 0x8D, 0x8E, 0x8F};

void writePayload(std::FILE* file, const Payload& payload) {
    for (const std::uint8_t byte : payload)
        std::fprintf(file, "%02X ", unsigned{byte});
}

// Whether both reports went through and the file took them.
bool dumpReport(std::FILE* file, std::uint8_t opcode) {
    const Payload request = {opcode};
    if (!tag::send(request))
        return false;
    std::fputs("Tx: ", file);
    writePayload(file, request);
    std::fputs("\nRx: ", file);
    Payload reply;
    if (!tag::fetch(reply))
        return false;
    writePayload(file, reply);
    std::fputc('\n', file);
    return std::ferror(file) == 0;
}

// A reader that doesn't follow is dumped all the same.
void activate(int config) {
    zeltag_SendSelectActConfig(config);
    SetActConfig(static_cast<short>(config));
}

void writeHead(std::FILE* file, int highest) {
    std::fputs("# 8 byte USB Feature Reports\n", file);
    std::fprintf(file, "# Reader Type ZelTag%s\n", highest != 0 ? "Plus" : "");
}

bool dumpConfiguration(std::FILE* file, int config, int highest) {
    activate(config);
    if (highest != 0)
        std::fprintf(file, "# Configuration %d\n", config + 1);
    return std::all_of(std::begin(kOpcodes), std::end(kOpcodes),
                       [&](std::uint8_t opcode) { return dumpReport(file, opcode); });
}

bool dumpAll(std::FILE* file, int highest) {
    writeHead(file, highest);
    for (int config = 0; config <= highest; ++config)
        if (!dumpConfiguration(file, config, highest))
            return false;
    return true;
}

bool isRegular(std::FILE* file) {
    struct stat status = {};
    return fstat(fileno(file), &status) == 0 && S_ISREG(status.st_mode);
}

// Closes the file. What isn't whole is removed; only a device or a pipe of that name stays.
int finish(std::FILE* file, const char* name, bool isDumped) {
    const bool isRemovable = isRegular(file);
    const bool isWritten = std::ferror(file) == 0;
    const bool isStored = std::fclose(file) == 0 && isWritten;
    if (isDumped && isStored)
        return 1;
    if (isRemovable)
        std::remove(name);
    return 0;
}

int dumpTo(std::FILE* file, const char* name, int highest, int before) {
    if (!dumpAll(file, highest)) {
        finish(file, name, false);
        activate(before);
        return 0;
    }
    activate(before);
    std::fputs("# End", file);
    return finish(file, name, true);
}

} // namespace

int zeltag_DumpRawFeatureReports(const char* name) {
    if (!name || !hasActiveTag())
        return 0;
    const int highest = GetMaxConfig();
    const int before = highest != 0 ? activeRecord().iActConfig : 0;
    std::FILE* file = nullptr;
    if (fopen_s(&file, name, "w") != 0)
        return 0;
    std::setvbuf(file, nullptr, _IOLBF, BUFSIZ);
    return dumpTo(file, name, highest, before);
}
