// SPDX-License-Identifier: MIT
// More readers than the table holds. The kernel gives 64 nodes at most and umockdev serves 50 open
// ones, so this program takes the place of open() and ioctl() for the nodes; sysfs is umockdev's.
#include "frame/zelTagAPI.h"
#include "frame/zelTagState.h"
#include "tests/hidraw/hidraw_test.h"

#include <cerrno>
#include <cstdarg>
#include <cstring>
#include <dlfcn.h>
#include <fcntl.h>
#include <gmock/gmock.h>
#include <linux/hidraw.h>
#include <sys/ioctl.h>

namespace zel::test {

namespace {

std::string bedRoot;
int nodesOpened = 0;

using HidrawCrowd = HidrawTest;

TEST_F(HidrawCrowd, Of500ReadersKeeps127InTheOrderOfTheirNumbersAndClosesTheOthers) {
    bedRoot = bed.root();
    Names first;
    for (unsigned number = 0; number < 500; ++number)
        bed.plugUnserved(number);
    for (unsigned number = 0; number < 127; ++number)
        first.push_back("/dev/hidraw" + std::to_string(number));
    EXPECT_EQ(connect(), first);
    EXPECT_EQ(GetDevCnt(), 127);
    EXPECT_STREQ(DevDat[126].szDevName, "/dev/hidraw126");
    EXPECT_EQ(nodesOpened, 500);
    EXPECT_THAT(openNodes(), ::testing::UnorderedElementsAreArray(first));
}

} // namespace

static const char* nodeInBed(const char* file, std::string& inBed) {
    if (std::strncmp(file, "/dev/hidraw", 11) != 0)
        return file;
    ++nodesOpened;
    inBed = bedRoot + file;
    return inBed.c_str();
}

static int tellIdentity(void* argument) {
    auto* const info = static_cast<hidraw_devinfo*>(argument);
    info->vendor = static_cast<std::int16_t>(kTagReader.vendor);
    info->product = static_cast<std::int16_t>(kTagReader.product);
    return 0;
}

} // namespace zel::test

extern "C" {

__attribute__((visibility("default"))) int open(const char* file, int flags, ...) {
    static const auto next =
        reinterpret_cast<int (*)(const char*, int, ...)>(dlsym(RTLD_NEXT, "open"));
    mode_t mode = 0;
    if ((flags & O_CREAT) != 0) {
        va_list arguments;
        va_start(arguments, flags);
        mode = va_arg(arguments, mode_t);
        va_end(arguments);
    }
    std::string inBed;
    return next(zel::test::nodeInBed(file, inBed), flags, mode);
}

__attribute__((visibility("default"))) int ioctl(int descriptor, unsigned long request,
                                                 ...) noexcept {
    static const auto next =
        reinterpret_cast<int (*)(int, unsigned long, ...)>(dlsym(RTLD_NEXT, "ioctl"));
    va_list arguments;
    va_start(arguments, request);
    void* const argument = va_arg(arguments, void*);
    va_end(arguments);
    if (request == HIDIOCGRAWINFO)
        return zel::test::tellIdentity(argument);
    return next(descriptor, request, argument);
}
}
