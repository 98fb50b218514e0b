// SPDX-License-Identifier: MIT
// The rules that a firmware file must pass. An input is the way and the version words of the
// reader, its firmware's name and its part number, a line each, then the header of a file. Where
// the way isn't odd, that is a name and a processor's value, a line each, for the chain of rules
// alone.
#include "firmware/header_lines.h"
#include "firmware/rules.h"
#include "frame/zelTagState.h"
#include "fuzz/support/any_reader.h"
#include "fuzz/support/memory_stream.h"

#include <iterator>

using namespace zel::fuzz;

namespace {

// Takes the header from memory, and its file's trailer for granted.
class MemoryRules : public BootloadRules {
public:
    explicit MemoryRules(std::string_view header) : header_(header) {}

    std::vector<std::string> storeFile(std::string) override {
        static MemoryStream file;
        return zel::firmware::headerLinesOf(file.of(header_));
    }
    bool checkFileTampered(const char*) override { return true; }

private:
    std::string_view header_;
};

void requireName(BootloadRules& rules, const std::string& name) {
    const std::string upper = convertToUppercase(name);
    require(upper.size() == name.size());
    const std::string bare = rules.removeSVN(upper);
    require(bare.size() <= upper.size() && upper.compare(0, bare.size(), bare) == 0);
}

// A refusal has its message, and nothing else has one.
void judgeFile(BootloadRules& rules) {
    const short passes = rules.checkRulesForBootload("");
    require((passes == 1) == errorString.empty());
}

// Values that no rule uses.
void readUnused(BootloadRules& rules) {
    const std::vector<std::string> lines = rules.storeFile("");
    const int section = rules.getIndexNewFW(lines);
    rules.getFWBLValueForCurrentReader(lines);
    rules.getCPU1AP1ValueForCurrentReader(lines);
    rules.getCPU1BL1ValueForCurrentReader(lines);
    rules.getPSValueForNewFW(lines, section);
    rules.getFWBLValueForNewFW(lines, section);
}

void judgeName(BootloadRules& rules, Input header, bool isOverridden) {
    const std::string name(header.textUpTo('\n'));
    const std::string ps(header.textUpTo('\n'));
    requireName(rules, name);
    require(rules.checkRule1(name, ps) == errorString.empty());
    rules.checkTKGRule(name);
    rules.checkCurrentFwWithTargetFw(name, isOverridden ? 1 : 0);
}

std::uint32_t versionOf(std::uint8_t choice) {
    constexpr std::uint32_t kVersions[] = {0,       0x10407, 0x10408, 0x10409,  0x10500, 0x10501,
                                           0x10502, 0x10505, 0x10506, 0xFFFFFF, 0x10A09, 0x20001};
    return kVersions[choice % std::size(kVersions)];
}

void knowReader(tsDevDat& record, Input& input) {
    record.iTagPlusState = 2;
    record.FWVerTbl[0][1] = versionOf(input.byte());
    record.FWVerTbl[1][0] = versionOf(input.byte());
    record.FWVerTbl[1][1] = versionOf(input.byte());
    input.textUpTo('\n').copy(record.szFWFile, sizeof record.szFWFile);
    input.textUpTo('\n').copy(record.szPartNum, sizeof record.szPartNum);
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Input input(data, size);
    const std::uint8_t way = input.byte();
    Input silence(nullptr, 0);
    knowReader(plugAnyReader(1, silence), input);
    const std::string_view header = input.text();
    errorString.clear();
    MemoryRules rules(header);
    if (way % 2 != 0)
        judgeFile(rules);
    else
        judgeName(rules, input, (way & 2) != 0);
    if (isOneOf(256, header))
        readUnused(rules);
    return 0;
}
