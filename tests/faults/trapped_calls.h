// SPDX-License-Identifier: MIT
// Stands before the kernel's door: a process that began to trap its system calls sees the n-th of
// one kind fail, whichever library makes it.
//
// The calls are trapped by a filter of the kernel's, so those that libc makes for itself, such as
// the write() of an fclose(), are among them. A filter stays until its process ends.
#pragma once

#include <array>
#include <bitset>
#include <cstddef>
#include <span>

namespace zel::test {

using CallArguments = std::array<long, 6>;

// Stands for the kernel at trapped calls; it may make trapped calls itself, which aren't counted.
struct Kernel {
    long (*call)(long number, CallArguments arguments); // a negative result is an errno
    void (*fail)(long number, CallArguments arguments); // what a call does that fails
};

// The calls of one number from the `nth` on, from 1: so many of them fail with this errno.
struct CallFailure {
    long number = -1;
    int nth = 1;
    int error = 0;
    int times = 1;
};

constexpr std::size_t kCallNumbers = 512;
constexpr std::size_t kWatchedDescriptors = 64;

struct TrapRecord {
    std::array<int, kCallNumbers> counts = {};      // trapped calls by number
    int failures = 0;                               // calls that were let fail
    std::bitset<kWatchedDescriptors> failedAt = {}; // the descriptors, of calls that have one
};

// The kernel itself.
long callKernel(long number, CallArguments arguments);

// Traps the calls of these numbers from now on. False, with nothing trapped: not on this machine.
bool trapCalls(std::span<const long> numbers, const Kernel& kernel);

// Counts trapped calls, and lets them fail, until the end of its scope.
class Trapping {
public:
    Trapping(const CallFailure& failure, TrapRecord& record);
    ~Trapping();
    Trapping(const Trapping&) = delete;
    Trapping& operator=(const Trapping&) = delete;
};

// Within its scope this thread's calls pass: those of what stands for devices.
class Untrapped {
public:
    Untrapped();
    ~Untrapped();
    Untrapped(const Untrapped&) = delete;
    Untrapped& operator=(const Untrapped&) = delete;

private:
    bool before_;
};

} // namespace zel::test
