// SPDX-License-Identifier: MIT
// A device whose sysfs attributes say nothing useful is left out, and costs the others nothing.
#include "tests/hidraw/hidraw_test.h"

#include <functional>
#include <ostream>

namespace zel::test {

namespace {

constexpr std::size_t kPage = 4096;
const std::string kReaderLine = "HID_ID=0003:00005A3E:00009D23\n";

// Lines without an identity, `size` bytes together.
std::string filler(std::size_t size) {
    constexpr std::size_t kLine = 64;
    std::string text;
    while (text.size() + 2 * kLine <= size)
        text += std::string(kLine - 1, 'F') + '\n';
    return text + std::string(size - text.size() - 1, 'F') + '\n';
}

struct Attribute {
    const char* name;
    std::string uevent;
};

void PrintTo(const Attribute& attribute, std::ostream* out) { *out << attribute.name; }

// Names a row's test.
const auto nameOf = [](const auto& row) { return std::string(row.param.name); };

// Between two sound readers, number 1 with the uevent of the row.
class WithUevent : public HidrawTest, public ::testing::WithParamInterface<Attribute> {
protected:
    void SetUp() override {
        HidrawTest::SetUp();
        for (unsigned number : {0u, 1u, 2u})
            bed.plug(number);
        write(bed.uevent(1), GetParam().uevent);
    }
};

class UselessUevent : public WithUevent {};

TEST_P(UselessUevent, LeavesItsDeviceOutAndUnopened) {
    EXPECT_EQ(connect(), (Names{"/dev/hidraw0", "/dev/hidraw2"}));
    EXPECT_EQ(bed.reader(1).trace(), "");
}

INSTANTIATE_TEST_SUITE_P(
    Hidraw, UselessUevent,
    ::testing::Values(
        Attribute{"Empty", ""}, Attribute{"WithoutIdentity", "DRIVER=hid-generic\nHID_NAME=x\n"},
        Attribute{"WithoutLineEnd", "DRIVER=hid-generic"},
        Attribute{"IdentityBeyondThePage", filler(kPage) + kReaderLine},
        Attribute{"IdentityCutInItsKeyAtThePagesEnd", filler(kPage - 5) + kReaderLine},
        Attribute{"IdentityCutInItsProductAtThePagesEnd",
                  filler(kPage - kReaderLine.size() + 2) + kReaderLine},
        Attribute{"IdentityCutAtThePagesEndWhereTheReadersEnds",
                  filler(kPage - kReaderLine.size() + 1) + "HID_ID=0003:00005A3E:00009D230\n"},
        Attribute{"KeyInsideALine", "HID_NAME=HID_ID=0003:00005A3E:00009D23\n"},
        Attribute{"LongerKey", "XHID_ID=0003:00005A3E:00009D23\n"},
        Attribute{"OnlyTheKey", "HID_ID=\n"}, Attribute{"OnlyTheBus", "HID_ID=0003\n"},
        Attribute{"NoProduct", "HID_ID=0003:00005A3E\n"},
        Attribute{"EmptyVendor", "HID_ID=0003::00009D23\n"},
        Attribute{"EmptyProduct", "HID_ID=0003:00005A3E:\n"},
        Attribute{"OtherSeparators", "HID_ID=0003 00005A3E 00009D23\n"},
        Attribute{"Prefixed", "HID_ID=0003:0x5A3E:0x9D23\n"},
        Attribute{"Negative", "HID_ID=0003:-A5C2:-62DD\n"},
        Attribute{"VendorWiderThanSixteenBits", "HID_ID=0003:00015A3E:00009D23\n"},
        Attribute{"ProductWiderThanSixteenBits", "HID_ID=0003:00005A3E:00019D23\n"},
        Attribute{"ProductTooLongForAnyNumber", "HID_ID=0003:00005A3E:0000000100009D23\n"},
        Attribute{"TextBehindTheProduct", "HID_ID=0003:00005A3E:00009D23Z\n"},
        Attribute{"FourthField", "HID_ID=0003:00005A3E:00009D23:0001\n"},
        Attribute{"ZeroByteInTheKey", std::string("HID\0_ID=0003:00005A3E:00009D23\n", 31)}),
    nameOf);

class UsableUevent : public WithUevent {};

TEST_P(UsableUevent, FindsItsDevice) {
    EXPECT_EQ(connect(), (Names{"/dev/hidraw0", "/dev/hidraw1", "/dev/hidraw2"}));
}

INSTANTIATE_TEST_SUITE_P(
    Hidraw, UsableUevent,
    ::testing::Values(
        Attribute{"IdentityOnly", kReaderLine},
        Attribute{"IdentityAtTheStartOfALongPage",
                  kReaderLine + filler(kPage - kReaderLine.size())},
        Attribute{"IdentityAtTheEndOfALongPage", filler(kPage - kReaderLine.size()) + kReaderLine},
        Attribute{"OnAnotherBus", "DRIVER=hid-generic\nHID_ID=0005:00005A3E:00009D23\n"}),
    nameOf);

using HidrawAttribute = HidrawTest;

TEST_F(HidrawAttribute, MissingFromHalfOfTheDevicesCostsTheOthersNothing) {
    for (unsigned number = 0; number < 8; ++number) {
        bed.plug(number);
        if (number % 2 == 0)
            std::filesystem::remove(bed.uevent(number));
    }
    EXPECT_EQ(connect(), (Names{"/dev/hidraw1", "/dev/hidraw3", "/dev/hidraw5", "/dev/hidraw7"}));
}

struct Loss {
    const char* name;
    std::function<void(const MockBed&)> happen;
};

void PrintTo(const Loss& loss, std::ostream* out) { *out << loss.name; }

class LostAttribute : public HidrawTest, public ::testing::WithParamInterface<Loss> {};

TEST_P(LostAttribute, LeavesItsDeviceOutAndUnopened) {
    for (unsigned number : {0u, 1u, 2u})
        bed.plug(number);
    GetParam().happen(bed);
    EXPECT_EQ(connect(), (Names{"/dev/hidraw0", "/dev/hidraw2"}));
    EXPECT_EQ(bed.reader(1).trace(), "");
}

INSTANTIATE_TEST_SUITE_P(
    Hidraw, LostAttribute,
    ::testing::Values(Loss{"BetweenListingAndOpening",
                           [](const MockBed& bed) { std::filesystem::remove(bed.uevent(1)); }},
                      Loss{"BetweenOpeningAndReading",
                           [](const MockBed& bed) { replaceByFolder(bed.uevent(1)); }},
                      Loss{"WithItsWholeDevice",
                           [](const MockBed& bed) {
                               std::filesystem::remove_all(bed.uevent(1).parent_path());
                           }}),
    nameOf);

} // namespace

} // namespace zel::test
