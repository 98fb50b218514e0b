// SPDX-License-Identifier: MIT
// Counts the ioctls, allocations and system calls of card reads by the library.
//
// Prints one `name number` a line. Each counter first counts a deliberate call, so that a counter
// that sees nothing shows.
#include "bench/allocations.h"
#include "bench/standin.h"
#include "bench/system_calls.h"
#include "bench/ways.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace zel::bench;

namespace {

constexpr int kReads = 1000;

struct Report {
    bool isTrapped;
    long wrongReads;
    SystemCallCount systemCalls;
};

long readAll(const Way& way) {
    long wrong = 0;
    for (int read = 0; read < kReads; ++read)
        wrong += way.once() != kCardBits;
    return wrong;
}

// In a child, as the trap can't be taken away again.
void reportSystemCalls(const Way& way, Report& report) {
    report.isTrapped = trapSystemCalls();
    getppid();
    const SystemCallCount before = systemCallCount();
    report.isTrapped = report.isTrapped && before.others == 1;
    report.wrongReads = readAll(way);
    const SystemCallCount after = systemCallCount();
    report.systemCalls = {after.clock - before.clock, after.others - before.others};
    _exit(EXIT_SUCCESS);
}

bool countSystemCalls(const Way& way) {
    void* const shared =
        mmap(nullptr, sizeof(Report), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
    if (shared == MAP_FAILED)
        return false;
    Report& report = *static_cast<Report*>(shared);
    const pid_t child = fork();
    if (child == 0)
        reportSystemCalls(way, report);
    int status = 0;
    if (child < 0 || waitpid(child, &status, 0) != child || status != 0 || !report.isTrapped)
        return false;
    std::printf("clock_calls %ld\n", report.systemCalls.clock);
    std::printf("system_calls %ld\n", report.systemCalls.others);
    return report.wrongReads == 0;
}

bool allocationsAreSeen() {
    const long before = allocationCount();
    char* volatile copy = strdup("made inside libc"); // volatile, or clang leaves both calls out
    std::free(copy);
    return allocationCount() == before + 1;
}

bool countIoctlsAndAllocations(const Way& way) {
    const IoctlCount before = ioctlCount();
    const long allocationsBefore = allocationCount();
    const long wrong = readAll(way);
    const long allocations = allocationCount() - allocationsBefore;
    const IoctlCount after = ioctlCount();
    std::printf("sends %ld\n", after.sends - before.sends);
    std::printf("gets %ld\n", after.gets - before.gets);
    std::printf("other_ioctls %ld\n", after.others - before.others);
    if (allocationsAreSeen())
        std::printf("allocations %ld\n", allocations);
    return wrong == 0;
}

} // namespace

int main() {
    const Way* const way = findWay("read-by-library");
    if (!way->begin()) {
        std::fputs("no reader found\n", stderr);
        return EXIT_FAILURE;
    }
    std::printf("reads %d\n", kReads);
    const bool allRead = countIoctlsAndAllocations(*way);
    std::fflush(stdout);
    if (!countSystemCalls(*way))
        std::fputs("system calls can't be trapped here\n", stderr);
    way->end();
    return allRead ? EXIT_SUCCESS : EXIT_FAILURE;
}
