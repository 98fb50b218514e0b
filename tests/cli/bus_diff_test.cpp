// SPDX-License-Identifier: MIT
// `zeltag config diff`: equal, different, and what a file doesn't tell.
#include "tests/cli/command_line_test.h"
#include "tests/cli/files_here.h"
#include "tests/support/temporary_folder.h"

namespace zel::test {

namespace {

using cli::ExitCode;

constexpr char kTitle[] = "/--- zelTag and OEM Reader Configuration Template File ---\n";

class BusDiff : public CommandLineTest {
protected:
    static void write(const std::string& name, const std::string& lines) {
        std::ofstream(name) << kTitle << lines;
    }

private:
    TemporaryFolder folder_;
};

TEST_F(BusDiff, ReaderIsEqualToItsExport) {
    plugPlus(3);
    run({"config", "export", "a.txt"});
    EXPECT_EQ(run({"config", "diff", "a.txt"}), (CommandRun{ExitCode::Done, "", ""}));
    EXPECT_EQ(run({"config", "diff", "a.txt", "--json"}).out,
              R"({"path":"a.txt","with":"plus","equal":true,"configurations":[3,3],)"
              R"("differences":[]})"
              "\n");
}

TEST_F(BusDiff, LeadsFromTheFileToTheReader) {
    plugReader("a");
    write("a.txt", "iIDHoldTO = 2000\nAZERTYShiftlock = 1\nBEGIN sFldSepData\n0C.01\n");
    EXPECT_EQ(run({"config", "diff", "a.txt"}),
              (CommandRun{ExitCode::Failed,
                          "a.txt -> a\nAZERTYShiftLock  1 -> 0\n"
                          "TimeParms.iIDHoldTO  2000 ms -> 1000 ms\nuSFD[1]  0x01 -> 0x00\n",
                          ""}));
}

TEST_F(BusDiff, ComparesEachConfiguration) {
    const auto reader = plugPlus(3);
    reader->configuration(2).cardType = 0x1234;
    run({"config", "export", "a.txt"});
    reader->configuration(1).block[1][2] = 2;
    reader->configuration(2).cardType = 1;
    EXPECT_EQ(run({"config", "diff", "a.txt"}).out,
              "a.txt -> plus\nconfiguration 1\n  TimeParms.iIDHoldTO  1000 ms -> 100 ms\n"
              "configuration 2\n  CardType  4660 -> 1\n");
}

TEST_F(BusDiff, FileOfMoreConfigurationsThanTheReaderDiffers) {
    plugPlus(3);
    run({"config", "export", "a.txt"});
    bus().clear();
    plugReader("a");
    EXPECT_EQ(run({"config", "diff", "a.txt"}),
              (CommandRun{ExitCode::Failed, "a.txt -> a\nconfigurations  3 -> 1\n", ""}));
}

TEST_F(BusDiff, TwoFilesNeedNoReader) {
    write("a.txt", "iIDHoldTO = 2000\nbBeepID = 1\n");
    write("b.txt", "bBeepID, 1 / no matter how\niELDelim = 13\n");
    EXPECT_EQ(run({"config", "diff", "a.txt", "b.txt"}),
              (CommandRun{ExitCode::Failed,
                          "a.txt -> b.txt\nIDDispParms.iELDelim  - -> 13\n"
                          "TimeParms.iIDHoldTO  2000 ms -> -\n",
                          ""}));
    EXPECT_EQ(run({"config", "diff", "a.txt", "a.txt"}), (CommandRun{ExitCode::Done, "", ""}));
}

TEST_F(BusDiff, SealIsNoSetting) {
    plugPlus(2);
    run({"config", "export", "a.txt"});
    run({"config", "export", "b.txt", "--sealed"});
    EXPECT_EQ(run({"config", "diff", "a.txt", "b.txt"}), (CommandRun{ExitCode::Done, "", ""}));
}

TEST_F(BusDiff, SecondFileIsCheckedToo) {
    write("a.txt", "bBeepID = 1\n");
    EXPECT_EQ(run({"config", "diff", "a.txt", "b.txt"}),
              (CommandRun{ExitCode::MissingFile, "",
                          "zeltag: b.txt can't be read: No such file or directory; "
                          "check its name\n"}));
}

} // namespace

} // namespace zel::test
