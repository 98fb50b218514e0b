// SPDX-License-Identifier: MIT
// A scan for which there is no memory. This program takes the place of realloc() for the library.
#include "frame/zelTagAPI.h"
#include "tests/hidraw/hidraw_test.h"

#include <cstddef>
#include <dlfcn.h>
#include <gmock/gmock.h>
#include <string_view>

namespace zel::test {

namespace {

using ::testing::IsSubsetOf;
using ::testing::SizeIs;

int left = -1; // growths of the library's list that there is memory for; -1: any number

bool isLibrary(const void* code) {
    Dl_info info = {};
    return dladdr(code, &info) != 0 &&
           std::string_view(info.dli_fname).find("libzelTagAPI") != std::string_view::npos;
}

using HidrawScarceMemory = HidrawTest;

TEST_F(HidrawScarceMemory, KeepsWhatThereIsRoomForAndFindsAllOnceThereIsMore) {
    Names all;
    for (unsigned number = 0; number < 20; ++number) {
        bed.plug(number);
        all.push_back("/dev/hidraw" + std::to_string(number));
    }
    left = 0;
    EXPECT_EQ(connect(), Names{});
    EXPECT_EQ(openNodes(), Names{});
    left = 1;
    const Names found = connect();
    EXPECT_THAT(found, SizeIs(16));
    EXPECT_THAT(found, IsSubsetOf(all));
    EXPECT_EQ(openNodes().size(), 16U);
    disconnect();
    left = -1;
    EXPECT_EQ(connect(), all);
}

} // namespace

static bool isRefused(const void* caller) {
    if (left < 0 || !isLibrary(caller))
        return false;
    if (left == 0)
        return true;
    --left;
    return false;
}

} // namespace zel::test

extern "C" __attribute__((visibility("default"))) void* realloc(void* block,
                                                                std::size_t size) noexcept {
    static const auto next =
        reinterpret_cast<void* (*)(void*, std::size_t)>(dlsym(RTLD_NEXT, "realloc"));
    return zel::test::isRefused(__builtin_return_address(0)) ? nullptr : next(block, size);
}
