// SPDX-License-Identifier: MIT
// What a user is told who ends a flash with Ctrl-C.
#pragma once

#include "cli/command/failure.h"

#include <csignal>
#include <iterator>

namespace zel::cli {

// While it lives, a SIGINT or SIGTERM before the boot loader was entered ends the program with a
// failure, and so does the library's exit() between two lines; each is told as a line on stderr and
// as JSON on stdout when that is asked for. The library puts handlers of its own in place of these
// once the boot loader is entered; afterwards those before the flash are back. Before the first
// line and behind the last one the reader's state is uncertain. One at a time.
class FlashInterruption {
public:
    FlashInterruption(const Failure& uncertain, const Failure& leftThere, bool json);
    ~FlashInterruption();
    FlashInterruption(const FlashInterruption&) = delete;
    FlashInterruption& operator=(const FlashInterruption&) = delete;

private:
    static constexpr int kSignals[] = {SIGINT, SIGTERM, SIGABRT};
    struct sigaction before_[std::size(kSignals)] = {};
};

} // namespace zel::cli
