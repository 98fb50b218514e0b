// SPDX-License-Identifier: MIT
// A presence sensor in the table, without a device behind it, and texts that it loads.
#pragma once

#include "cfgfile/echo_file.h"
#include "tests/cfgfile/template_test.h"
#include "tests/family/tag/tag_record.h"

namespace zel::test {

class EchoFileTest : public TemplateTest {
protected:
    EchoFileTest() {
        iDevsFnd = 1;
        record().iProduct = ZELTAGAPI_ZELECHO;
        fillAccepted();
    }

    static tsEcho& echo() { return record().Echo; }

    // Words that the checks accept.
    static void fillAccepted() {
        echo().sSonarParms = {1, 400, 20, 14, 60, 3, 4, 5};
        echo().sWalkAwayParms = {2, 128, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14};
        echo().sWalkUpParms = {3, 192, 6, 5, 4, 3, 2, 1, 0, 9, 8, 7, 6, 5, 4, 3};
        echo().sIdleParms = {9, 60, 2, 30, 1, 10, 120, 6};
    }

    static int load(const std::string& text) {
        writeText("in", text);
        return ReadDevCfgFmFile("in");
    }

    // Which records are marked for writing: sonar, walk away, walk up, idle.
    static std::string marks() {
        std::string digits;
        for (const std::uint32_t mark :
             {echo().bDirtySonar, echo().bDirtyWalkAway, echo().bDirtyWalkUp, echo().bDirtyIdle})
            digits += std::to_string(mark);
        return digits;
    }

    static std::string image() {
        return {reinterpret_cast<const char*>(&record()), sizeof(tsDevDat)};
    }

    static void clearMarks() {
        echo().bDirtySonar = echo().bDirtyWalkAway = echo().bDirtyWalkUp = echo().bDirtyIdle = 0;
    }
};

} // namespace zel::test
