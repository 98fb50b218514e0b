// SPDX-License-Identifier: MIT
// The rules that a firmware must pass. An input is the version words of the reader, then names and
// values up to a line end each, then the reader's answers.
#include "firmware/rules.h"
#include "frame/zelTagState.h"
#include "fuzz/support/any_reader.h"

using namespace zel::fuzz;

namespace {

void requireName(BootloadRules& rules, const std::string& name) {
    const std::string upper = convertToUppercase(name);
    require(upper.size() == name.size());
    const std::string bare = rules.removeSVN(upper);
    require(bare.size() <= upper.size() && upper.compare(0, bare.size(), bare) == 0);
}

void judge(BootloadRules& rules, const std::string& name, const std::string& ps, int isOverridden) {
    errorString.clear();
    const bool passes = rules.checkRule1(name, ps);
    require(passes == errorString.empty());
    rules.checkTKGRule(name);
    rules.checkCurrentFwWithTargetFw(name, isOverridden);
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Input input(data, size);
    const std::uint8_t known = input.byte();
    const std::uint8_t versions[] = {input.byte(), input.byte(), input.byte()};
    const std::string name(input.textUpTo('\n'));
    const std::string ps(input.textUpTo('\n'));
    tsDevDat& record = plugAnyReader(1, input);
    record.iTagPlusState = 2;
    record.FWVerTbl[0][1] = 0x10400U + versions[0] % 16;
    record.FWVerTbl[1][0] = versions[1] * 0x101U;
    record.FWVerTbl[1][1] = 0x10400U + versions[2] % 16;
    BootloadRules rules;
    requireName(rules, name);
    judge(rules, name, ps, known % 2);
    return 0;
}
