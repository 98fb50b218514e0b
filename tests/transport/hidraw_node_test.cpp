// SPDX-License-Identifier: MIT
// Names of hidraw nodes and the attribute that tells their identity.
#include "transport/hidraw_node.h"

#include <gtest/gtest.h>

namespace zel::test {

namespace {

constexpr HidrawNode kNone = {4711, 1, 2};

bool refusesName(std::string_view name) {
    HidrawNode node = kNone;
    return !takesName(name, node);
}

// Whether a text is refused and the identity stays.
bool refusesIds(std::string_view text) {
    HidrawNode node = kNone;
    return !takesIds(text, node) && node.vendor == kNone.vendor && node.product == kNone.product;
}

} // namespace

TEST(HidrawName, IsTheWordAndItsNumber) {
    HidrawNode node = kNone;
    EXPECT_TRUE(takesName("hidraw12", node));
    EXPECT_EQ(node.number, 12U);
}

TEST(HidrawName, IsNoOtherNodeAndNothingBehindTheNumber) {
    for (const char* name : {"", "hidraw", "event3", "hidraw1x", "hidraw-1", "hidraw4294967296"})
        EXPECT_TRUE(refusesName(name)) << name;
}

TEST(HidrawIds, StandInALineOfTheAttribute) {
    HidrawNode node = kNone;
    EXPECT_TRUE(takesIds("DRIVER=hid\nHID_ID=0003:00005A3E:00009D23\nHID_NAME=x\n", node));
    EXPECT_EQ(node.vendor, 0x5A3E);
    EXPECT_EQ(node.product, 0x9D23);
}

TEST(HidrawIds, OfAnotherFormLeaveTheNodeAsItWas) {
    for (const char* text : {"", "DRIVER=hid\n", "HID_ID=", "HID_ID=3:5\n", "HID_ID=3:5:6:7\n",
                             "XHID_ID=3:5:6\n", "HID_ID=3:15A3E:6\n", "HID_ID=3:5A3E:16\tx\n"})
        EXPECT_TRUE(refusesIds(text)) << text;
}

TEST(HidrawIds, CutByTheEndOfThePageCountForNothing) {
    EXPECT_TRUE(refusesIds("HID_ID=0003:00005A3E:00009D23"));
}

} // namespace zel::test
