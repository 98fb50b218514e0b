// SPDX-License-Identifier: MIT
// The calls on single words, each found by its name: 80 words, a get and a set of each, in two
// layers.
#pragma once

#include "tests/api/accessor_rows.h"
#include "tests/support/library_test.h"

#include <dlfcn.h>
#include <string>

namespace zel::test {

using GetWord = int (*)();
using SetWord = int (*)(short);

template <class Function> Function find(const std::string& name) {
    void* const symbol = dlsym(RTLD_DEFAULT, name.c_str());
    EXPECT_NE(symbol, nullptr) << name;
    return reinterpret_cast<Function>(symbol);
}

// One word's calls of one layer.
struct Pair {
    const RecordRow& record;
    std::size_t word;
    std::string name;
    GetWord get;
    SetWord set;
};

// The number of pairs visited.
template <class Visit> int forEachPair(const std::string& layer, Visit visit) {
    int pairs = 0;
    for (const RecordRow& record : kAccessorRows)
        for (std::size_t word = 0; word < record.words.size(); ++word) {
            const std::string name = std::string(record.name) + "_" + record.words[word];
            SCOPED_TRACE(layer + " " + name);
            visit(Pair{record, word, name, find<GetWord>(layer + "get" + name),
                       find<SetWord>(layer + "set" + name)});
            ++pairs;
        }
    return pairs;
}

template <class Visit> int forEachPair(Visit visit) {
    return forEachPair("", visit) + forEachPair("zeltag_", visit);
}

// Legal words, each with a value of its own.
inline Words legalWords(const RecordRow& record) {
    Words words = {0, 1, 2, 3, 4, 5, 6, 7};
    if (record.is("IDBitCnts"))
        words[3] = 26;
    if (record.hasVolatile())
        words[7] = 0;
    return words;
}

class Accessors : public LibraryTest {
protected:
    ~Accessors() override { SetUnsupportedProductErrorCode(0); }

    static tsTagCfg& config() { return DevDat[0].Cfg[0]; }

    // A reader whose configuration was read; the trace and the marks are the test's own.
    static void connectAndRead() {
        connectReader({.volume = 1});
        ASSERT_EQ(ReadCfg(), 1);
        bus().takeTrace();
    }

    // The blocks marked for writing, in the manner of RecordRow.
    static std::string marks() {
        const auto text = [](std::uint32_t mark, const char* name) { return mark ? name : ""; };
        return std::string(text(config().bDirtyIDFrmt1, " 0")) + text(config().bDirtyTime, " 1") +
               text(config().bDirtyIDFrmt2, " 2") + text(config().bDirtyExt, " 3");
    }

    static void clearMarks() {
        config().bDirtyIDFrmt1 = config().bDirtyTime = 0;
        config().bDirtyIDFrmt2 = config().bDirtyExt = 0;
    }

    static void expectAll(int result) {
        forEachPair([&](const Pair& pair) {
            EXPECT_EQ(pair.get(), result);
            EXPECT_EQ(pair.set(3), result);
        });
    }
};

} // namespace zel::test
