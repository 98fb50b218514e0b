// SPDX-License-Identifier: MIT
// A connected reader whose configuration is read and written, and its whole traces.
#pragma once

#include "family/tag/multi_config.h"
#include "family/tag/read_config.h"
#include "family/tag/services.h"
#include "family/tag/write_config.h"
#include "tests/family/tag/config_marks.h"
#include "tests/support/library_test.h"

#include <fstream>
#include <string>

namespace zel::test {

// A send is tried this often before it counts as failed.
constexpr int kSendTries = 6;

class ConfigTest : public LibraryTest {
protected:
    ConfigTest() { enhanceSecurityFlagCurrFWState = false; }
    ~ConfigTest() override { enhanceSecurityFlagCurrFWState = false; }

    static tsDevDat& record() { return DevDat[0]; }
    static tsTagCfg& config(int n = 0) { return DevDat[0].Cfg[n]; }

    // A reader of several configurations that the library has found to be one; the trace is empty.
    static std::shared_ptr<sim::TagReader> connectPlus(const sim::TagOptions& options) {
        auto reader = connectReader(options);
        EXPECT_EQ(SendGetTagPlus(), 1);
        bus().takeTrace();
        return reader;
    }

    // A reader whose configuration has just been read; the trace is empty.
    static std::shared_ptr<sim::TagReader> connectRead(const sim::TagOptions& options = {}) {
        auto reader = connectReader(options);
        EXPECT_EQ(ReadCfg(), 1);
        bus().takeTrace();
        return reader;
    }

    // Makes room for a reader of another kind.
    static void unplugAll() {
        USBDisconnect();
        bus().clear();
        bus().startTrace();
        cbIndex = 0;
        record().iTagPlusState = 0;
    }

    // The reader ends what it works on.
    static void wait() { test::wait(2'000'000); }

    // The n-th exchange from now on fails, with all the tries that a send is given.
    static void failFor(int n) { bus().failExchange(0, n, kSendTries); }

    // The trace of a send that is refused until the library gives up.
    static std::string refused(const std::string& line) {
        std::string trace;
        for (int attempt = 0; attempt < kSendTries; ++attempt)
            trace += line + "\n! not sent\n~ 80 ms\n";
        return trace;
    }
};

// A trace that is too long for a test's own text; lines that begin with # are remarks.
inline std::string goldenTrace(const std::string& name) {
    std::ifstream file(std::string(ZEL_TAG_TRACES) + "/" + name + ".txt");
    std::string trace;
    for (std::string line; std::getline(file, line);)
        if (!line.starts_with('#'))
            trace += line + '\n';
    EXPECT_FALSE(trace.empty()) << name;
    return trace;
}

} // namespace zel::test
