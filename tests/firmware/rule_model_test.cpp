// SPDX-License-Identifier: MIT
// Random files and readers: the library's verdicts are those of a second implementation.
#include "tests/firmware/message_texts.h"
#include "tests/firmware/random_firmware.h"
#include "tests/firmware/rules_test.h"
#include "tests/support/temporary_folder.h"

#include <map>
#include <set>

using namespace zel::test;

namespace {

constexpr int kFiles = 6000;

class RandomFiles : public RulesTest {
protected:
    static void become(const RuleModel::Reader& reader) {
        setReader(reader.partNumber, reader.firmware);
        setCurrent(reader.current);
        setSecondBoot(reader.secondBoot);
        setSecondApp(reader.secondApp);
    }

    TemporaryFolder folder;
    TrustingRules trusting;
};

} // namespace

TEST_F(RandomFiles, GetTheVerdictAndTheMessageOfTheModel) {
    RandomFirmware random(74);
    std::map<int, int> seen;
    for (int i = 0; i < kFiles; ++i) {
        const RuleModel::Reader reader = random.reader();
        const std::string text = random.file(reader);
        const int expected = RuleModel(text, reader).refusal();
        ++seen[expected];
        writeText("random.hex", text);
        become(reader);
        errorString.clear();
        EXPECT_EQ(trusting.checkRulesForBootload("random.hex"), expected == 0 ? 1 : 0);
        ASSERT_EQ(errorString, messageOf(expected)) << reader.firmware << '\n' << text;
    }
    for (const int code : {0, 205, 207, 209, 210, 211, 212, 213, 214, 215, 216, 217, 221})
        EXPECT_GT(seen[code], 9) << code;
    EXPECT_EQ(seen.size(), 13U);
    EXPECT_EQ(bus().takeTrace(), "");
}

// What no rule reads is looked up all the same, in files of any shape.
TEST_F(RandomFiles, AreSearchedForAllValuesWithoutHarm) {
    RandomFirmware random(75);
    std::set<std::string> found;
    for (int i = 0; i < kFiles / 10; ++i) {
        const RuleModel::Reader reader = random.reader();
        writeText("random.hex", random.file(reader));
        become(reader);
        const Lines lines = rules.storeFile("random.hex");
        const int section = rules.getIndexNewFW(lines);
        found.insert(rules.getFWBLValueForCurrentReader(lines));
        found.insert(rules.getCPU1AP1ValueForCurrentReader(lines));
        found.insert(rules.getCPU1BL1ValueForCurrentReader(lines));
        found.insert(rules.getPSValueForNewFW(lines, section));
        found.insert(rules.getFWBLValueForNewFW(lines, section));
    }
    for (const char* const value : {" 148", " 103", " 149", "Not Found", " 256", " 150", ""})
        EXPECT_EQ(found.count(value), 1U) << value;
}
