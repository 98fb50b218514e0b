// SPDX-License-Identifier: MIT
// A stand-in for the kernel's hidraw: the program's own ioctl() and open() take the place of
// libc's, and so does usleep(), which returns at once.
//
// Every shared library of the process reaches them too. Nodes under /dev/hidraw open as /dev/null,
// so that opening and closing one costs a plain system call; an exchange costs a few instructions.
#pragma once

namespace zel::bench {

// The card that the stand-in answers with.
constexpr unsigned char kCardId[8] = {0xB8, 0x1B, 0x1A, 0x00, 0x00, 0x00, 0x00, 0x00};
constexpr int kCardBits = 26;

constexpr unsigned char kIdCommand = 0x8F;
constexpr unsigned char kBitCountCommand = 0x8E;
constexpr int kReportSize = 9; // report ID 0, then the eight bytes of a command or a reply

struct IoctlCount {
    long sends; // feature reports out
    long gets;  // feature reports in
    long others;
};

IoctlCount ioctlCount();

} // namespace zel::bench
