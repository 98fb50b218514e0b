// SPDX-License-Identifier: MIT
// The frame around each hidraw test; without the mock machine the whole program is skipped.
#include "tests/hidraw/hidraw_test.h"

#include "frame/zelTagAPI.h"
#include "frame/zelTagState.h"
#include "tests/hidraw/descriptors.h"
#include "tests/support/virtual_time.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <map>

namespace zel::test {

namespace {

bool canMock() {
    const MockBed bed;
    return bed.isSeen();
}

class MockMachine : public ::testing::Environment {
    void SetUp() override {
        if (!canMock())
            skipProgram("libumockdev-preload isn't in front of libc");
    }
};

[[maybe_unused]] const auto* const kMachine = ::testing::AddGlobalTestEnvironment(new MockMachine);

} // namespace

void HidrawTest::SetUp() { takePausedMicroseconds(); }

void HidrawTest::TearDown() {
    disconnect();
    EXPECT_EQ(openDescriptors(bed.root()), (std::map<int, std::string>{}));
}

Names HidrawTest::openNodes() const {
    Names nodes;
    for (const auto& [descriptor, file] : openDescriptors(bed.root()))
        nodes.push_back(file);
    std::sort(nodes.begin(), nodes.end());
    return nodes;
}

Names connect() {
    zeltag_USBDeviceConnect(ZELTAG_USB_VENDOR, ZELTAG_USB_PRODUCT, nullptr);
    Names names;
    for (int index = 0; index < GetDevCnt(); ++index)
        names.emplace_back(DevDat[index].szDevName);
    return names;
}

// The index of the record that the next found device fills outlives a disconnect.
void disconnect() {
    USBDisconnect();
    cbIndex = 0;
}

void skipProgram(const char* why) {
    std::printf("hidraw tests skipped: %s\n", why);
    std::exit(77);
}

} // namespace zel::test
