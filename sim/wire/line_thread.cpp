// SPDX-License-Identifier: MIT
// The thread that pumps.
#include "sim/wire/line_thread.h"

#include "sim/wire/line.h"

namespace zel::sim {

namespace {

// A line that is opened, an unasked byte and the end of the thread are noticed so late at most.
constexpr int kTurn = 5; // ms

} // namespace

LineThread::LineThread() : thread_([this] { serve(); }) {}

LineThread::~LineThread() {
    isOver_ = true;
    thread_.join();
}

void LineThread::serve() const {
    while (!isOver_) {
        lines().wait(kTurn);
        lines().pump();
    }
}

} // namespace zel::sim
