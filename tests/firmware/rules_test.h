// SPDX-License-Identifier: MIT
// A proximity reader in the table, and the number of the rule that refused.
#pragma once

#include "firmware/rules.h"
#include "tests/support/library_test.h"

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>

namespace zel::test {

// Takes each file's trailer for good.
class TrustingRules : public BootloadRules {
public:
    bool checkFileTampered(const char*) override { return true; }
};

class RulesTest : public LibraryTest {
protected:
    RulesTest() {
        iDevsFnd = 1;
        DevDat[0].iProduct = 1;
        DevDat[0].iTagPlusState = 2;
        setReader("ZT7", "ZT7_0302");
        errorString.clear();
    }
    ~RulesTest() override { errorString.clear(); }

    static void setReader(const std::string& partNumber, const std::string& firmware) {
        std::strcpy(DevDat[0].szPartNum, partNumber.c_str());
        std::strcpy(DevDat[0].szFWFile, firmware.c_str());
    }

    // Version words: the main processor's, the second one's boot loader and its application.
    static void setCurrent(std::uint32_t word) { DevDat[0].FWVerTbl[0][1] = word; }
    static void setSecondBoot(std::uint32_t word) { DevDat[0].FWVerTbl[1][1] = word; }
    static void setSecondApp(std::uint32_t word) { DevDat[0].FWVerTbl[1][0] = word; }

    // Whose rule refused, 0 when all passed; forgets the message.
    static int refusal(bool passed) {
        const int code = std::atoi(errorString.c_str());
        EXPECT_EQ(passed, errorString.empty()) << errorString;
        errorString.clear();
        return code;
    }

    BootloadRules rules;
};

} // namespace zel::test
