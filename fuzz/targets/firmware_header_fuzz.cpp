// SPDX-License-Identifier: MIT
// The header of a firmware file, and what the rules read of it. In front of the file stand a part
// number and a firmware name, each up to a line end.
#include "firmware/header_lines.h"
#include "firmware/rules.h"
#include "fuzz/support/memory_stream.h"
#include "fuzz/target.h"

using namespace zel::firmware;
using namespace zel::fuzz;

namespace {

// A value is empty or begins with its blank.
bool isValue(const std::string& value) { return value.empty() || value.front() == ' '; }

// What the rules ask for of the new firmware, one value an input: each call takes a copy of all
// lines.
std::string valueOfNew(const HeaderLines& lines, int section, std::size_t which) {
    BootloadRules rules;
    if (which % 4 == 0)
        return rules.getPSValueForNewFW(lines, section);
    if (which % 4 == 1)
        return rules.getFWBLValueForNewFW(lines, section);
    return which % 4 == 2 ? rules.getFNValueForNewFW(lines, section)
                          : rules.getPSValueForCurrentReader(lines);
}

void requireBlock(const HeaderLines& lines, const std::string& part, const std::string& name) {
    const ReaderBlock block(lines, part, name);
    for (const int offset : {-1, 1, 2}) {
        const std::string value = block.value(offset);
        require(value == "Not Found" || isValue(value));
    }
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static MemoryStream file;
    Input input(data, size);
    const std::string part(input.textUpTo('\n'));
    const std::string name(input.textUpTo('\n'));
    const HeaderLines lines = headerLinesOf(file.of(input.text()));
    const int section = BootloadRules().getIndexNewFW(lines);
    require(section >= -1 && section < static_cast<int>(lines.size()));
    require(isValue(valueOfNew(lines, section, part.size())));
    requireBlock(lines, part, name);
    return 0;
}
