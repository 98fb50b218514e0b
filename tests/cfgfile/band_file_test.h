// SPDX-License-Identifier: MIT
// A magnetic stripe reader in the table, without a device behind it, and texts that it loads.
#pragma once

#include "cfgfile/band_file.h"
#include "tests/cfgfile/template_test.h"
#include "tests/family/tag/tag_record.h"

namespace zel::test {

constexpr char kBandTitle[] = "//--- zelBand Configuration Template File ---\n";

class BandFileTest : public TemplateTest {
protected:
    BandFileTest() {
        iDevsFnd = 1;
        record().iProduct = ZELTAGAPI_ZELBAND;
    }

    static tsBand& band() { return record().Band; }
    static BandUserField& field(int index) { return band().UserField[index]; }

    static int loadWhole(const std::string& text) {
        writeText("in", text);
        return ReadDevCfgFmFile("in");
    }

    // Lines behind a title.
    static int load(const std::string& lines) { return loadWhole(kBandTitle + lines); }

    // The bytes of the record, the gaps between its words among them.
    static std::string image() {
        return {reinterpret_cast<const char*>(&record()), sizeof(tsDevDat)};
    }
};

} // namespace zel::test
