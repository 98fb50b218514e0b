// SPDX-License-Identifier: MIT
// Serves the simulated lines in real time.
#pragma once

#include <atomic>
#include <thread>

namespace zel::sim {

// Pumps the lines in a thread of its own from its making to its end.
class LineThread {
public:
    LineThread();
    ~LineThread();
    LineThread(const LineThread&) = delete;
    LineThread& operator=(const LineThread&) = delete;

private:
    void serve() const;

    std::atomic<bool> isOver_ = false;
    std::thread thread_; // last, so that it finds the rest made
};

} // namespace zel::sim
