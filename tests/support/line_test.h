// SPDX-License-Identifier: MIT
// The library's tests with simulated serial lines beside the bus, in one trace.
#pragma once

#include "sim/tag/stream.h"
#include "sim/wire/line.h"
#include "tests/support/library_test.h"

namespace zel::test {

// What the host wrote moves to the devices at the beginning of each pause, their answers at its
// end: "> FA", "~ 50 ms", "< 00 0C". The host's discards of input reach a simulated line too; what
// is lost stands behind an "x".
class LineTest : public LibraryTest {
protected:
    static constexpr const char* kPath = "/dev/ttySIM1";

    LineTest();
    ~LineTest() override;

    // A proximity reader at the end of a path; the path is given no number here.
    static std::shared_ptr<sim::TagStream>
    attachReader(const std::string& path = kPath, const sim::TagOptions& options = {},
                 sim::TagSpeech speech = sim::TagSpeech::Both);

    static sim::Lines& lines() { return sim::lines(); }

    // The trace, with equal lines in a row told once: "~ 5 ms, 99 times".
    static std::string takeShortTrace();
};

} // namespace zel::test
