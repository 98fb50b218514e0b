// SPDX-License-Identifier: MIT
// The kind of interface that a file of another tool names.
#include "cfgfile/interface_kind.h"

#include "tests/cfgfile/template_test.h"

using namespace zel::test;

namespace {

class InterfaceKind : public TemplateTest {
protected:
    static int kindOf(const std::string& text) {
        writeText("in", text);
        return zelband_ReadDevTypeFromFile("in");
    }
};

constexpr int kUsb = 0;
constexpr int kSerial = 1;
constexpr int kUnknown = 65535;
constexpr std::size_t kHead = 257;

} // namespace

TEST_F(InterfaceKind, IsTheWordBehindItsMark) {
    EXPECT_EQ(kindOf("Interface: USB\n"), kUsb);
    EXPECT_EQ(kindOf("x\nInterface:SERIAL\n"), kSerial);
    EXPECT_EQ(kindOf("SERIAL\nInterface:\n\nsome USB"), kUsb) << "on a later line";
    EXPECT_EQ(kindOf("Interface: SERIAL, not USB"), kUsb) << "USB is looked for first";
}

TEST_F(InterfaceKind, IsUnknownWithoutMarkOrWord) {
    for (const char* text :
         {"", "USB", "USB\nInterface: none", "interface: USB", "Interface: usb", "Interface USB"})
        EXPECT_EQ(kindOf(text), kUnknown) << text;
    EXPECT_EQ(kindOf(goldenFile("plain")), kUnknown);
}

TEST_F(InterfaceKind, IsLookedForInTheFirst257Bytes) {
    const std::string text = "Interface: USB";
    EXPECT_EQ(kindOf(std::string(kHead - text.size(), 'x') + text), kUsb);
    EXPECT_EQ(kindOf(std::string(kHead - text.size() + 1, 'x') + text), kUnknown);
    EXPECT_EQ(kindOf(std::string(5, '\0') + text), kUsb);
}

TEST_F(InterfaceKind, IsThatOfThisFileAlone) {
    EXPECT_EQ(kindOf(std::string(100, 'x') + "Interface: USB"), kUsb);
    EXPECT_EQ(kindOf("Interface: "), kUnknown);
}

TEST_F(InterfaceKind, IsUnknownForWhatIsNoFile) {
    const auto files = openDescriptors();
    for (const char* name : {"", "missing", "/", "."})
        EXPECT_EQ(zelband_ReadDevTypeFromFile(name), kUnknown) << name;
    EXPECT_EQ(zelband_ReadDevTypeFromFile(nullptr), kUnknown);
    EXPECT_EQ(openDescriptors(), files);
}

TEST_F(InterfaceKind, IsAskedForWithAMagneticStripeReaderActive) {
    writeText("in", "Interface: SERIAL");
    SetUnsupportedProductErrorCode(-7);
    const std::pair<std::uint32_t, int> answers[] = {
        {ZELTAGAPI_ZELTAG, -7}, {ZELTAGAPI_ZELBAND, kSerial}, {ZELTAGAPI_ZELECHO, 0}, {8, -7}};
    EXPECT_EQ(ReadDevTypeFromFile("in"), -7);
    iDevsFnd = 1;
    for (const auto& [product, answer] : answers) {
        record().iProduct = product;
        EXPECT_EQ(ReadDevTypeFromFile("in"), answer) << product;
    }
    iDevsFnd = 0;
}
