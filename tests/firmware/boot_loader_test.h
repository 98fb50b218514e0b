// SPDX-License-Identifier: MIT
// A boot loader of a simulated reader, spoken to line by line.
#pragma once

#include "firmware/boot_loader.h"
#include "tests/firmware/flash_test.h"

#include <algorithm>
#include <array>

namespace zel::test {

inline constexpr char kNoReply = static_cast<char>(0x80);
inline constexpr unsigned kPollAgain = 0xFFFFFFFF;

class BootLoader : public FlashTest {
protected:
    // A reader with this boot loader in the table and the trace empty.
    void connectKind(sim::TagBootKind kind) {
        reader_ = connectReader();
        boot().options().kind = kind;
    }
    sim::TagBoot& boot() { return reader_->bootLoader(); }

    // The same, entered.
    void enterKind(sim::TagBootKind kind, unsigned char micro = 0) {
        connectKind(kind);
        EXPECT_EQ(loader_.enterBlMode(micro), 1);
        bus().takeTrace();
    }

    int sendLine(std::size_t count) {
        std::vector<std::uint8_t> data = bytes(21);
        status_ = 0;
        return loader_.sendLine(static_cast<int>(count), reinterpret_cast<char*>(data.data()),
                                &status_);
    }

    std::string traceOfEntry(unsigned char micro) {
        loader_.enterBlMode(micro);
        return bus().takeTrace();
    }
    std::string traceOfLine(std::size_t count) {
        EXPECT_EQ(sendLine(count), 1);
        EXPECT_EQ(status_, '.');
        return bus().takeTrace();
    }

    std::uint64_t pauseBeforePoll(unsigned char pollsLeft) {
        takePausedMicroseconds();
        loader_.customSleep(pollsLeft);
        return takePausedMicroseconds();
    }

    // The pause that a reply to a line asks for, in milliseconds.
    std::uint64_t pauseOf(const sim::TagBlock& reply) {
        std::array<unsigned char, 9> report = {};
        std::copy(reply.begin(), reply.end(), report.begin() + 1);
        takePausedMicroseconds();
        EXPECT_EQ(loader_.verifyReturnedChar(report[2], report.data()), 1U);
        return takePausedMicroseconds() / 1'000;
    }

    unsigned verdict(char status, char detail = 0) {
        const unsigned char report[9] = {0, 0, static_cast<unsigned char>(status),
                                         static_cast<unsigned char>(detail)};
        return loader_.verifyReturnedChar(report[2], report);
    }

    static std::int64_t word() { return DevDat[0].lLastErr; }

    ZelTagUsbBootload loader_;
    std::shared_ptr<sim::TagReader> reader_;
    char status_ = 0;
};

} // namespace zel::test
