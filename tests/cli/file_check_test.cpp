// SPDX-License-Identifier: MIT
// `zeltag file check`: the kind of a file, and where its trailer doesn't hold.
#include "cli/file/input_file.h"
#include "tests/cli/run_program.h"
#include "tests/support/files.h"
#include "tests/support/temporary_folder.h"

#include <fstream>
#include <gtest/gtest.h>

namespace zel::test {

namespace {

using cli::FileKind;

constexpr char kTitle[] = "/--- zelTag and OEM Reader Configuration Template File ---\n";

class FileCheck : public ::testing::Test {
protected:
    static Ended check(const std::string& text, const Arguments& more = {}) {
        std::ofstream("f", std::ios::binary) << text;
        Arguments arguments = {"file", "check", "f"};
        arguments.insert(arguments.end(), more.begin(), more.end());
        return runZeltag(arguments);
    }

    static Ended damaged(const std::string& reason) {
        return {65, "", "zeltag: f is damaged: " + reason + "; take a fresh copy of it\n"};
    }

private:
    TemporaryFolder folder_;
};

TEST(FileKinds, AreToldByTheBeginning) {
    EXPECT_EQ(cli::kindOf(kTitle), FileKind::Template);
    EXPECT_EQ(cli::kindOf(std::string(70, ' ') + kTitle), FileKind::Template);
    EXPECT_EQ(cli::kindOf(std::string(71, ' ') + kTitle), std::nullopt);
    EXPECT_EQ(cli::kindOf("//--- zelBand Configuration Template File ---\n"), FileKind::Band);
    EXPECT_EQ(cli::kindOf("/--- Sonar Configuration Template File ---\n"), FileKind::Echo);
    EXPECT_EQ(cli::kindOf("[Blob1]\r\n"), FileKind::Keys);
    EXPECT_EQ(cli::kindOf("[EOF]\r\n"), FileKind::Keys);
    EXPECT_EQ(cli::kindOf(":0400\n"), FileKind::Firmware);
    EXPECT_EQ(cli::kindOf("# rules\n"), FileKind::Firmware);
    EXPECT_EQ(cli::kindOf("M1\n"), FileKind::Firmware);
    EXPECT_EQ(cli::kindOf("OVERRIDE 1\nPN A\nM0\n:00\n"), FileKind::Firmware);
    EXPECT_EQ(cli::kindOf("OVERRIDE 1\r\n#NEW FW\r\n"), FileKind::Firmware);
    EXPECT_EQ(cli::kindOf("hello\nM0 is a name\n"), std::nullopt);
    EXPECT_EQ(cli::kindOf("hello\n:0400\n"), std::nullopt);
    EXPECT_EQ(cli::kindOf(""), std::nullopt);
}

TEST(FileKinds, AreTheFirstOneOfAFileWithSeveralTitles) {
    const std::string text =
        std::string("//--- zelBand Configuration Template File ---\n") + kTitle;
    EXPECT_EQ(cli::kindOf(text), FileKind::Template) << "in the order of the kinds";
    EXPECT_TRUE(cli::hasTitle(text, FileKind::Band));
    EXPECT_FALSE(cli::hasTitle(text, FileKind::Echo));
    EXPECT_FALSE(cli::hasTitle(text, FileKind::Keys)) << "these have none";
}

// The checksums are zlib's.
TEST_F(FileCheck, GoodTrailersHold) {
    EXPECT_EQ(check(std::string(kTitle) + "/--- iEndOfHwgFile \niEndOfHwgFile = B5FA5473"),
              (Ended{0, "f  template file, checksum B5FA5473 holds\n", ""}));
    EXPECT_EQ(check("# 1\n:0400\n4877976D"),
              (Ended{0, "f  firmware file, checksum 4877976D holds\n", ""}));
    EXPECT_EQ(check("[Blob1]\r\n[EOF]\r\niEndOfIniFile=527804D2\r\n", {"--json"}),
              (Ended{0,
                     R"({"path":"f","kind":"keys","sealed":true,"checksum":"527804D2"})"
                     "\n",
                     ""}));
}

TEST_F(FileCheck, WrongChecksumIsToldWithItsLine) {
    EXPECT_EQ(check("# 1\n:0401\n4877976D"),
              damaged("line 3 tells the checksum 4877976D, the text has 516CA62C"));
    EXPECT_EQ(check("[Blob2]\r\n[EOF]\r\niEndOfIniFile=527804D2\r\n"),
              damaged("line 3 tells the checksum 527804D2, the text has 40CDAB3C"));
}

TEST_F(FileCheck, MissingTrailerIsDamage) {
    EXPECT_EQ(check("# 1\n:0400\n"), damaged("it has no trailer"));
    EXPECT_EQ(check("[Blob1]\r\n"), damaged("it has no trailer"));
}

TEST_F(FileCheck, LineBehindTheTrailerIsDamage) {
    EXPECT_EQ(check("[Blob1]\r\n[EOF]\r\niEndOfIniFile=527804D2\r\n\r\n"),
              damaged("line 4 stands behind the trailer"));
}

TEST_F(FileCheck, TemplateNeedsNoTrailerUnlessAskedFor) {
    EXPECT_EQ(check(kTitle), (Ended{0, "f  template file, not sealed\n", ""}));
    EXPECT_EQ(check(kTitle, {"--json"}),
              (Ended{0,
                     R"({"path":"f","kind":"template","sealed":false,"checksum":null})"
                     "\n",
                     ""}));
    EXPECT_EQ(check(kTitle, {"--sealed"}), damaged("it has no trailer"));
}

TEST_F(FileCheck, TemplateThatLostAPartOfItsTrailerIsDamaged) {
    EXPECT_EQ(check(std::string(kTitle) + "/--- IENDOFHWGFILE \n").exit, 65);
    EXPECT_EQ(check(std::string(kTitle) + "iEndOfHwgFile = 00000000").exit, 65);
}

TEST_F(FileCheck, KindMayBeTold) {
    EXPECT_EQ(check("hello\n"), (Ended{65, "",
                                       "zeltag: f is no template, firmware or key file; --kind "
                                       "tells what it is meant to be\n"}));
    EXPECT_EQ(check("hello\n", {"--kind", "keys"}), damaged("it has no trailer"));
    EXPECT_EQ(check("hello\n", {"--kind", "music"}).exit, 64);
}

TEST_F(FileCheck, SettingsWithoutAChecksumAreCheckedByTheirLines) {
    const std::string band = "//--- zelBand Configuration Template File ---\n";
    const std::string echo = "/--- Sonar Configuration Template File ---\n";
    EXPECT_EQ(check(band + "Beeper: 1\n"),
              (Ended{0, "f  zelBand file, some settings have no line\n", ""}));
    EXPECT_EQ(check(echo + "FlagsI = 1\n", {"--json"}),
              (Ended{0,
                     R"({"path":"f","kind":"zelEcho","sealed":false,"checksum":null,"whole":false})"
                     "\n",
                     ""}));
    EXPECT_EQ(
        check(band + "Beper: 1\n"),
        (Ended{65, "", "zeltag: f is no good zelBand file: line 2 sets nothing; correct it\n"}));
    EXPECT_EQ(check(echo + "PingRateS = 1500\n"),
              (Ended{65, "",
                     "zeltag: f is no good zelEcho file: line 2 tells a number that its setting "
                     "can't have; correct it\n"}));
    EXPECT_EQ(check("Beeper: 1\n", {"--kind", "zelBand"}),
              (Ended{65, "",
                     "zeltag: f is no good zelBand file: it doesn't begin with its title; correct "
                     "it\n"}));
    EXPECT_EQ(check("FlagsI = 1\n", {"--kind", "zelEcho"}).exit, 0);
}

TEST_F(FileCheck, WholeSettingsAreToldAsSuch) {
    const std::string text = textOf(ZEL_TEMPLATES "band.txt");
    EXPECT_EQ(check(text), (Ended{0, "f  zelBand file, whole\n", ""}));
    EXPECT_EQ(check(text, {"--sealed"}),
              (Ended{65, "", "zeltag: f has no checksum; a zelBand file never has one\n"}));
}

TEST_F(FileCheck, MissingFileIsTold) {
    EXPECT_EQ(
        runZeltag({"file", "check", "missing"}),
        (Ended{66, "",
               "zeltag: missing can't be read: No such file or directory; check its name\n"}));
}

} // namespace

} // namespace zel::test
