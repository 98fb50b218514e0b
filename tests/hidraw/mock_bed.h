// SPDX-License-Identifier: MIT
// A machine with mock hidraw nodes: their sysfs, their files in /dev, the readers behind them.
#pragma once

#include "tests/hidraw/mock_reader.h"

#include <filesystem>
#include <map>
#include <string_view>
#include <umockdev.h>

namespace zel::test {

class MockBed {
public:
    MockBed();
    ~MockBed();
    MockBed(const MockBed&) = delete;
    MockBed& operator=(const MockBed&) = delete;

    // Whether this process sees the bed in place of its machine; else nothing can be tested.
    bool isSeen() const { return umockdev_in_mock_environment() != 0; }

    // Plugs in a device as /dev/hidraw<number>.
    MockReader& plug(unsigned number, Identity identity = kTagReader);

    // The same with nobody behind the node: its files alone.
    void plugUnserved(unsigned number, Identity identity = kTagReader);

    void unplug(unsigned number);

    MockReader& reader(unsigned number) { return readers_.at(number); }

    // Lets other users than the one who runs the tests see the bed and its nodes.
    void openToAllUsers() const;

    // Where the bed keeps the files behind /sys and /dev.
    const std::filesystem::path& root() const { return root_; }
    std::filesystem::path node(unsigned number) const;
    std::filesystem::path uevent(unsigned number) const;

private:
    static gboolean serve(UMockdevIoctlBase*, UMockdevIoctlClient* client, gpointer bed);

    UMockdevTestbed* bed_;
    UMockdevIoctlBase* handler_;
    std::filesystem::path root_;
    std::map<unsigned, MockReader> readers_;
};

// Replaces a file's text.
void write(const std::filesystem::path& file, std::string_view text);

// Puts a folder in a file's place: it opens for reading and can't be read, and not for writing.
void replaceByFolder(const std::filesystem::path& file);

} // namespace zel::test
