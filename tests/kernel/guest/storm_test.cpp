// SPDX-License-Identifier: MIT
// A reader comes and goes CYCLES times while two programs connect, read and disconnect.
//
// The library's pauses are short here: after a failed report it would sleep through most of it.
#include "frame/zelTagAPI.h"
#include "frame/zelTagTrace.h"
#include "tests/kernel/guest/held.h"
#include "tests/kernel/guest/simulator.h"

#include <array>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <gtest/gtest.h>
#include <random>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

using std::chrono::microseconds;

extern "C" int usleep(useconds_t) {
    std::this_thread::sleep_for(microseconds(50));
    return 0;
}

namespace zel::test {

namespace {

constexpr long kFewCycles = 100;
constexpr int kReads = 5;
constexpr int kWarmUp = 20;
constexpr long kMemoryNoise = 64; // KiB

struct Tally {
    long connects = 0;
    long opens = 0;
    long found = 0;
    long reads = 0;
    long failedReads = 0;
    long descriptors = 0; // more than before
    long memory = 0;      // KiB more than after a few connects
    bool isFoundAtLast = false;
};

volatile std::sig_atomic_t isOver = 0;

void connectAndRead(Tally& tally) {
    ++tally.connects;
    if (USBConnect(nullptr) == 1)
        ++tally.found;
    for (int i = 0; i < kReads && GetDevCnt() > 0; ++i) {
        unsigned char id[32] = {};
        GetActiveID(id, 8);
        ++tally.reads;
        tally.failedReads += GetLastLibErr() == 0 ? 0 : 1;
    }
    USBDisconnect();
}

void countOpens(Tally& tally) {
    zelTagAPI_observe(
        [](const zelTraceEvent* event, void* counted) {
            if (event->kind == ZELTAGAPI_TRACE_OPEN)
                static_cast<Tally*>(counted)->opens += event->result;
        },
        &tally);
}

Tally weather() {
    Tally tally;
    countOpens(tally);
    const long descriptors = countDescriptors();
    for (int i = 0; i < kWarmUp; ++i)
        connectAndRead(tally);
    const long memory = residentMemory();
    while (!isOver)
        connectAndRead(tally);
    tally.memory = residentMemory() - memory;
    tally.isFoundAtLast = USBConnect(nullptr) == 1;
    USBDisconnect();
    tally.descriptors = countDescriptors() - descriptors;
    return tally;
}

// A program of its own, which tells its tally through a pipe.
class Client {
public:
    Client() {
        EXPECT_EQ(pipe(pipe_.data()), 0);
        process_ = fork();
        if (process_ != 0)
            return;
        std::signal(SIGTERM, [](int) { isOver = 1; });
        const Tally tally = weather();
        std::_Exit(write(pipe_[1], &tally, sizeof tally) == sizeof tally ? 0 : 1);
    }

    // Its exit status, 0 unless it crashed.
    int end(Tally& tally) const {
        kill(process_, SIGTERM);
        int status = -1;
        waitpid(process_, &status, 0);
        if (status != 0)
            return status;
        EXPECT_EQ(read(pipe_[0], &tally, sizeof tally), static_cast<ssize_t>(sizeof tally));
        return 0;
    }

private:
    std::array<int, 2> pipe_ = {};
    pid_t process_ = -1;
};

void storm(Simulator& simulator, long cycles) {
    std::mt19937 random; // the same storm each time
    const auto pause = [&random](int most) {
        std::this_thread::sleep_for(microseconds(random() % static_cast<unsigned>(most)));
    };
    for (long i = 0; i < cycles; ++i) {
        simulator.ask(R"({"do":"unplug"})");
        pause(1000);
        simulator.ask(R"({"do":"plug"})");
        pause(i % 8 == 0 ? 50'000 : 5000); // now and then long enough for a whole connect
    }
    EXPECT_TRUE(waitForNodes(1));
}

TEST(PlugStorm, LeavesProgramsAliveAndWithoutLeaks) {
    SetDevTypeSrch(0);
    const char* const wanted = std::getenv("CYCLES");
    const long cycles = wanted ? std::atol(wanted) : kFewCycles;
    Simulator simulator;
    const std::array<Client, 2> clients;
    const auto start = std::chrono::steady_clock::now();
    storm(simulator, cycles);
    const std::chrono::duration<double> took = std::chrono::steady_clock::now() - start;
    std::printf("%ld cycles of plug and unplug in %.1f s\n", cycles, took.count());
    long failedReads = 0;
    for (const Client& client : clients) {
        Tally tally;
        EXPECT_EQ(client.end(tally), 0) << "a crash";
        std::printf("connects %ld, opens %ld, found %ld, reads %ld, failed %ld, descriptors %+ld, "
                    "memory %+ld KiB\n",
                    tally.connects, tally.opens, tally.found, tally.reads, tally.failedReads,
                    tally.descriptors, tally.memory);
        failedReads += tally.failedReads;
        EXPECT_EQ(tally.descriptors, 0);
        EXPECT_LE(tally.memory, kMemoryNoise);
        EXPECT_TRUE(tally.isFoundAtLast);
    }
    EXPECT_GT(failedReads, 0) << "no storm: nothing went while it was used";
}

} // namespace

} // namespace zel::test
