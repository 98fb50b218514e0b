// SPDX-License-Identifier: MIT
// A flash on a simulated reader: a library that has learned nothing of boot loaders yet, firmware
// files, and the progress in the trace.
#pragma once

#include "tests/support/library_test.h"
#include "tests/support/temporary_folder.h"

#include <csignal>
#include <cstdint>
#include <fstream>
#include <numeric>
#include <string>
#include <vector>

namespace zel::test {

class FlashTest : public LibraryTest {
protected:
    FlashTest() {
        forget();
        std::signal(SIGUSR1, [](int) {
            progress_ = progress_ + 1;
            bus().note("* progress");
        });
        progress_ = 0;
    }
    ~FlashTest() override {
        forget();
        for (const int signal : {SIGUSR1, SIGINT, SIGABRT, SIGTERM})
            std::signal(signal, SIG_DFL);
    }

    // What a freshly loaded library knows of its reader's boot loader.
    static void forget() { ReaderIsLark = giTargetMicro = fastBootloader = delayNextLine = 0; }

    // The signals of progress since the last call.
    static int takeProgress() {
        const int signals = progress_;
        progress_ = 0;
        return signals;
    }

    // Bytes 1, 2, 3 and so on.
    static std::vector<std::uint8_t> bytes(std::size_t count) {
        std::vector<std::uint8_t> values(count);
        std::iota(values.begin(), values.end(), std::uint8_t{1});
        return values;
    }

    // A body line with the bytes 01, 02 and so on, without a line end.
    static std::string bodyLine(std::size_t count) {
        static constexpr char kDigits[] = "0123456789ABCDEF";
        std::string line = ":";
        for (const std::uint8_t byte : bytes(count))
            line.append({kDigits[byte >> 4], kDigits[byte & 15]});
        return line;
    }

    // Writes a firmware file; the result is its name.
    const char* file(const std::string& text) {
        std::ofstream("firmware.hex", std::ios::binary) << text;
        return "firmware.hex";
    }
    const char* fileOf(int lines, std::size_t bytesALine = 8) {
        std::string text = "M0\n";
        for (int line = 0; line < lines; ++line)
            text += bodyLine(bytesALine) + '\n';
        return file(text);
    }

    // Two readers, the second one active; the first has the record of the conversation's words.
    static std::vector<std::shared_ptr<sim::TagReader>> connectTwo() {
        std::vector readers = {plugReader("first"), plugReader("second")};
        EXPECT_EQ(connect(), 2);
        EXPECT_EQ(SetActDev(1), 1);
        bus().takeTrace();
        return readers;
    }

    struct Words {
        std::int64_t first;
        std::int64_t active;
        bool operator==(const Words&) const = default;
    };
    static Words words() { return {DevDat[0].lLastErr, DevDat[1].lLastErr}; }

private:
    static inline volatile std::sig_atomic_t progress_ = 0;
    TemporaryFolder folder_;
};

} // namespace zel::test
