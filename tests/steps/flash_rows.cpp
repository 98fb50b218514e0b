// SPDX-License-Identifier: MIT
// A firmware of two lines loaded into a fast boot loader. What ends a load is told anew by what
// called it, so one word stands for all failures of the lines.
#include "frame/zelTagAPI.h"
#include "frame/zelTagState.h"
#include "tests/steps/files.h"
#include "tests/steps/rows.h"
#include "tests/steps/sights.h"

#include <csignal>

namespace zel::test::steps {

namespace {

constexpr std::int64_t kNotEntered = 0x90100000;
constexpr std::int64_t kLineFailed = 0x90700000;

void prepare() {
    std::signal(SIGUSR1, SIG_IGN); // it tells the progress
    ReaderIsLark = giTargetMicro = fastBootloader = delayNextLine = 0;
    apparatus().tag->bootLoader().options().kind = sim::TagBootKind::Fast;
    writeText("firmware.hex", "M0\n:0102030405060708\n:1112131415161718\n");
}

// This boot loader takes a line when it is asked about it, and not when its answer is lost. A
// reader that wasn't told to enter isn't asked otherwise, and its answer is none of a boot
// loader's.
Steps steps() {
    const auto lost = [](const char* seen) { return ends(0, kLineFailed, seen); };
    const Outcome good = passes(1, 0, "+");
    return {query("F000", ends(0, kNotEntered, ".", "<"), ends(0, kNotEntered, "."), good,
                  ends(0, kNotEntered, ".")),
            order("0701", lost(".")),
            order("0108", lost(".")),
            query("00", lost("."), lost("."), good, lost("!")),
            order("0711", lost("!")),
            order("0118", lost("!")),
            query("00", lost("!"), lost("!"), good, lost("+"))};
}

} // namespace

std::vector<Operation> flashRows() {
    return {{.name = "Firmware",
             .place = Place::TagReports,
             .calls = {{"Bootload", [] { return Bootload("firmware.hex") + 0LL; }}},
             .prepare = prepare,
             .sights = {{"the boot loader's memory",
                         [] { return shown(apparatus().tag->bootLoader().memory()); }}},
             .steps = steps()}};
}

} // namespace zel::test::steps
