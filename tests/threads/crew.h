// SPDX-License-Identifier: MIT
// Threads of a test, each known to move on, to wait at the library's lock or to have ended.
#pragma once

#include <functional>
#include <thread>
#include <vector>

namespace zel::test {

// One crew at a time. All members count as moving from the start, also those not yet started.
class Crew {
public:
    static constexpr int kOutsider = -1; // a thread that isn't of the crew, such as the test's own

    explicit Crew(int size);
    ~Crew() { join(); }
    Crew(const Crew&) = delete;
    Crew& operator=(const Crew&) = delete;

    // Starts the next member, the first one being 0.
    void start(std::function<void()> work);
    void join();

    // The member that runs on this thread.
    static int self();

    // How often a member found the library's lock held by another one.
    static int waits(int member);

    // Makes an exchange slow: the first member in one stays until no other gets any further. Who
    // comes in meanwhile, past the lock, doesn't stay.
    static void stayInExchange();

    // Returns when the member stays in an exchange, or has ended.
    static void awaitExchangeOf(int member);

private:
    std::vector<std::thread> threads_;
};

} // namespace zel::test
