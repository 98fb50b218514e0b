// SPDX-License-Identifier: MIT
// A connected reader with a card, on a slow wire.
#pragma once

#include "tests/support/library_test.h"
#include "tests/threads/crew.h"
#include "tests/threads/slow_wire.h"

#include <vector>

namespace zel::test {

class ThreadsTest : public LibraryTest {
protected:
    ThreadsTest() {
        onPause({});
        bus().clear();
        EXPECT_TRUE(installSlowWire());
        reader_ = plugReader();
        reader_->present(sim::cardOf(0x0341B71, 26));
        EXPECT_EQ(USBConnect(nullptr), 1);
        takeEvents();
    }

    // What a call does on the wire when nothing else goes on.
    template <class Call> static std::vector<std::string> wireOf(Call call) {
        takeEvents();
        call();
        std::vector<std::string> wire;
        for (const Event& event : takeEvents())
            wire.push_back(event.text);
        return wire;
    }

    std::shared_ptr<sim::TagReader> reader_;
};

} // namespace zel::test
