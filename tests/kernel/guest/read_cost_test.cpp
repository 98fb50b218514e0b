// SPDX-License-Identifier: MIT
// What a card read through the kernel costs beside a loop over the bare calls, where each
// instruction of the whole machine takes a nanosecond.
#include "frame/zelTagAPI.h"
#include "tests/kernel/guest/echo_reader.h"

#include <chrono>
#include <cstdio>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <linux/hidraw.h>
#include <sys/ioctl.h>
#include <unistd.h>

namespace zel::test {

namespace {

constexpr int kReads = 1000;
constexpr double kMostBeside = 1.1;

using Report = unsigned char[9];

void exchange(int fd, unsigned char command) {
    Report report = {0, command};
    ASSERT_EQ(ioctl(fd, HIDIOCSFEATURE(sizeof report), report), 9);
    report[0] = 0;
    ASSERT_EQ(ioctl(fd, HIDIOCGFEATURE(sizeof report), report), 9);
}

int openByHand() {
    const int fd = open("/dev/hidraw0", O_RDWR | O_CLOEXEC);
    hidraw_devinfo info = {};
    EXPECT_EQ(ioctl(fd, HIDIOCGRAWINFO, &info), 0);
    EXPECT_EQ(static_cast<unsigned short>(info.product), 0x9D23);
    return fd;
}

// Instructions of one read, of so many.
template <class Read> double costOf(const Read& read) {
    read();
    const auto start = std::chrono::steady_clock::now();
    for (int i = 0; i < kReads; ++i)
        read();
    const std::chrono::nanoseconds took = std::chrono::steady_clock::now() - start;
    return static_cast<double>(took.count()) / kReads;
}

TEST(ReadCost, IsThatOfItsFourCallsOfTheKernel) {
    const EchoReader reader;
    SetDevTypeSrch(0);
    ASSERT_EQ(USBConnect(nullptr), 1);
    const double library = costOf([] {
        unsigned char id[32];
        ASSERT_EQ(GetActiveID(id, 8), 0x8E) << "an echo of the query";
    });
    USBDisconnect();
    const int fd = openByHand();
    const double byHand = costOf([fd] {
        exchange(fd, 0x8F);
        exchange(fd, 0x8E);
    });
    close(fd);
    std::printf("card read through the kernel: library %.1f thousand instructions, bare calls "
                "%.1f thousand, ratio %.3f\n",
                library / 1000, byHand / 1000, library / byHand);
    EXPECT_LT(library, byHand * kMostBeside);
}

} // namespace

} // namespace zel::test
