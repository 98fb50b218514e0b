// SPDX-License-Identifier: MIT
// The search for readers in a folder laid out as the kernel does.
#include "cli/device/system_readers_linux.h"

#include <cerrno>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <unistd.h>

namespace zel::cli {

namespace {

namespace fs = std::filesystem;

// By the node's number; the nodes themselves are not needed, nor is an unprivileged user.
int scriptedAccess(const char* path, int mode) {
    EXPECT_EQ(mode, R_OK | W_OK);
    const std::string node = path;
    errno = node.ends_with("1") ? EACCES : node.ends_with("2") ? ENOENT : EIO;
    return node.ends_with("0") ? 0 : -1;
}

class SystemReaders : public ::testing::Test {
protected:
    SystemReaders()
        : root_(fs::path(::testing::TempDir()) / ("zeltag" + std::to_string(getpid()))) {
        fs::create_directories(root_);
    }
    ~SystemReaders() override { fs::remove_all(root_); }

    void add(const std::string& entry, const std::string& uevent) const {
        fs::create_directories(root_ / entry / "device");
        std::ofstream(root_ / entry / "device" / "uevent") << uevent;
    }

    // "NODE:ACCESS " for each reader found.
    std::string found() const {
        std::string text;
        for (const SystemReader& reader : findSystemReaders({root_, "/nodes", scriptedAccess}))
            text += reader.node + ":" + std::to_string(static_cast<int>(reader.access)) + " ";
        return text;
    }

    fs::path root_;
};

constexpr char kReader[] = "DRIVER=hid-generic\nHID_ID=0003:00005A3E:00009D23\nHID_NAME=x\n";

static_assert(static_cast<int>(Access::Open) == 0 && static_cast<int>(Access::Denied) == 1 &&
              static_cast<int>(Access::NoNode) == 2 && static_cast<int>(Access::Refused) == 3);

TEST_F(SystemReaders, AreFoundInTheOrderOfTheirNumbersWithWhatBlocksThem) {
    for (const char* entry : {"hidraw10", "hidraw2", "hidraw1", "hidraw3"})
        add(entry, kReader);
    EXPECT_EQ(found(), "/nodes/hidraw1:1 /nodes/hidraw2:2 /nodes/hidraw3:3 /nodes/hidraw10:0 ");
}

TEST_F(SystemReaders, AreThoseOfTheFixedFilterListToo) {
    add("hidraw0", "HID_ID=0003:00006B2D:00009D25\n");
    EXPECT_EQ(found(), "/nodes/hidraw0:0 ");
}

TEST_F(SystemReaders, OtherDevicesAreLeftOut) {
    add("hidraw0", "HID_ID=0003:00005A3E:00009D2B\n");
    add("hidraw1", "HID_ID=0003:00008E4A:00009D23\n");
    add("hidraw2x", kReader);
    add("mouse0", kReader);
    EXPECT_EQ(found(), "");
}

TEST_F(SystemReaders, DeviceWithoutAUsableAttributeIsLeftOut) {
    add("hidraw0", "");
    add("hidraw1", "HID_ID=\n");
    add("hidraw2", "HID_ID=0003:zz\n");
    fs::create_directories(root_ / "hidraw3");
    EXPECT_EQ(found(), "");
}

TEST_F(SystemReaders, MissingClassFolderMeansNone) {
    fs::remove_all(root_);
    EXPECT_EQ(found(), "");
}

} // namespace

} // namespace zel::cli
