// SPDX-License-Identifier: MIT
// A proximity reader in the table without a device behind it: what a test needs of a configuration.
#pragma once

#include "tests/support/is_same.h"
#include "tests/support/library_test.h"

#include <cstddef>
#include <cstring>

namespace zel::test {

class TagRecordTest : public LibraryTest {
protected:
    TagRecordTest() {
        iDevsFnd = 1;
        DevDat[0].iProduct = ZELTAGAPI_ZELTAG;
    }
    ~TagRecordTest() override { useACPMode = 0; }

    static tsDevDat& device() { return DevDat[0]; }
    static tsTagCfg& config() { return DevDat[0].Cfg[0]; }
};

// Names of the dirty flags that a configuration has set, in the order of the blocks.
inline std::string dirtyFlags(const tsTagCfg& config) {
    std::string names;
    const auto add = [&](std::uint32_t flag, const char* name) {
        if (flag != 0)
            names += (names.empty() ? "" : " ") + std::string(name);
    };
    add(config.bDirtyIDFrmt1, "IDFrmt1");
    add(config.bDirtyTime, "Time");
    add(config.bDirtyIDFrmt2, "IDFrmt2");
    add(config.bDirtyExt, "Ext");
    add(config.bDirtySepFld, "SepFld");
    return names;
}

// A record whose eight words are first, first + 1 and so on.
template <class Record> Record countedFrom(std::int16_t first) {
    std::int16_t words[8];
    for (std::int16_t& word : words)
        word = first++;
    Record record;
    static_assert(sizeof record == sizeof words);
    std::memcpy(&record, words, sizeof record);
    return record;
}

} // namespace zel::test
