// SPDX-License-Identifier: MIT
// Writes lines of a template file.
#include "cfgfile/text_writer.h"

#include "cfgfile/text_lines.h"
#include "frame/state/state.h"
#include "frame/zelTagAPI.h"

namespace zel::cfgfile {

void writeHead(std::FILE* file, const char* title) {
    const unsigned id = activeRecord().iDID;
    std::fprintf(file, "/%s\n", title);
    std::fprintf(file, ":Library Version: %d.%d.%d \n", ZELTAGAPI_VERSION_MAJOR,
                 ZELTAGAPI_VERSION_MINOR, ZELTAGAPI_VERSION_BUILD);
    std::fprintf(file, ":Device FW Version: %u%u.%u%u \n", id >> 12 & 15, id >> 8 & 15,
                 id >> 4 & 15, id & 15);
}

void writeHeading(std::FILE* file, const char* heading) { std::fprintf(file, "\n/ %s\n", heading); }

void writeRow(std::FILE* file, const tsNamePair& pair, std::uint16_t value) {
    std::fprintf(file, "%s = %hu     / %s\n", textOf(pair.name), value, textOf(pair.description));
}

} // namespace zel::cfgfile
