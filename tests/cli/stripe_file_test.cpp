// SPDX-License-Identifier: MIT
// `zeltag config export`, `import` and `diff` with a magnetic stripe reader's file.
#include "tests/cli/files_here.h"
#include "tests/cli/stripe_test.h"
#include "tests/support/temporary_folder.h"

#include <algorithm>

namespace zel::test {

namespace {

using cli::ExitCode;
using nlohmann::json;

class StripeFile : public StripeTest {
protected:
    static void write(const std::string& name, const std::string& lines) {
        std::ofstream(name) << "//--- zelBand Configuration Template File ---\n" << lines;
    }

    static constexpr char kNoSealed[] =
        "a magnetic stripe reader's file has no checksum form; leave --sealed out";

private:
    TemporaryFolder folder_;
};

TEST_F(StripeFile, ExportWritesAllSettings) {
    reader().settings().system[0] = 5;
    EXPECT_EQ(run({"config", "export", "a.txt"}),
              (CommandRun{ExitCode::Done, "a.txt  1 configuration of COM1:\n", ""}));
    const std::string text = textOf("a.txt");
    EXPECT_NE(text.find("\nTrackEnables: 5 "), std::string::npos);
    EXPECT_EQ(std::count(text.begin(), text.end(), '\n'), 2 + 309 + 2);
}

TEST_F(StripeFile, ReaderIsEqualToItsExport) {
    reader().settings().system[4] = 0xF0; // a LUID that the file tells as a negative number
    run({"config", "export", "a.txt"});
    EXPECT_EQ(run({"config", "diff", "a.txt"}), (CommandRun{ExitCode::Done, "", ""}));
}

TEST_F(StripeFile, FullDiskLeavesNoFile) {
    CommandRun done;
    {
        const FullDisk disk(8192);
        done = run({"config", "export", "a.txt"});
    }
    EXPECT_EQ(done.exit, ExitCode::CannotWrite) << done.err;
    EXPECT_EQ(filesHere(), Files());
}

TEST_F(StripeFile, SealedFormIsRefused) {
    write("a.txt", "Beeper: 1\n");
    EXPECT_EQ(run({"config", "export", "b.txt", "--sealed"}), refused(ExitCode::Usage, kNoSealed));
    EXPECT_EQ(run({"config", "import", "a.txt", "--sealed"}), refused(ExitCode::Usage, kNoSealed));
    EXPECT_EQ(filesHere().size(), 1U);
}

TEST_F(StripeFile, DiffLeadsFromTheFileToTheReader) {
    write("a.txt", "TrackEnables: 3 // x\nLUID: -1\nBeeper: 25\n Beeper: 3\nKeyPressTime: 12\n");
    EXPECT_EQ(run({"config", "diff", "a.txt"}),
              (CommandRun{ExitCode::Failed,
                          "a.txt -> COM1:\nLUID  65535 -> 0\nTrackEnables  3 -> 7\n"
                          "KeyPressTime  12 ms -> 8 ms\n",
                          ""}));
}

TEST_F(StripeFile, FilesAreCompared) {
    write("a.txt", "Beeper: 1\nUserField[1].Skip: 2\n");
    write("b.txt", "Beeper: 2\nUserField[1].Skip: 1\nUserField[10].Skip: 0\n");
    EXPECT_EQ(runCommand({"config", "diff", "a.txt", "b.txt"}),
              (CommandRun{ExitCode::Failed,
                          "a.txt -> b.txt\nBeeper  1 -> 2\nUserField[10].Skip  - -> 0\n", ""}));
    EXPECT_EQ(lines().opens(), 0);
}

TEST_F(StripeFile, DryRunTellsWhatWouldChange) {
    write("a.txt", "TrackEnables: 3\nBeeper: 25\n");
    EXPECT_EQ(
        run({"config", "import", "a.txt", "--dry-run"}),
        (CommandRun{ExitCode::Done, "TrackEnables  7 -> 3\nnothing was written: --dry-run\n", ""}));
    EXPECT_EQ(reader().committed().system[0], 7);
}

TEST_F(StripeFile, ImportWritesWhatDiffers) {
    write("a.txt", "TrackEnables: 3\nUserField[2].Keybyte[0]: 254\nKeyReleaseTime: 10\n");
    EXPECT_EQ(run({"config", "import", "a.txt"}),
              (CommandRun{ExitCode::Done,
                          "TrackEnables  7 -> 3\nUserField[2].Keybyte[0]  0 -> 254\n"
                          "KeyReleaseTime  8 ms -> 10 ms\n"
                          "KeyReleaseTime  8 ms -> 10 ms, kept as 8 ms: the reader counts in "
                          "steps of 4 ms\n3 changes were written\n",
                          ""}));
    EXPECT_EQ(reader().committed().system[0], 3);
    EXPECT_EQ(reader().committed().field[2].first[1], 254);
}

TEST_F(StripeFile, NeedlessImportWritesNothing) {
    run({"config", "export", "a.txt"});
    const int before = reader().commands();
    EXPECT_EQ(run({"config", "import", "a.txt"}).out, "nothing was written: no value is new\n");
    const int import = reader().commands() - before;
    run({"config", "show"});
    EXPECT_EQ(reader().commands() - before, 2 * import);
}

TEST_F(StripeFile, ImportIsToldInJson) {
    write("a.txt", "HaltKBSend: 1\n");
    const json told = runJson({"config", "import", "a.txt"});
    EXPECT_EQ(told.at("result"), "written");
    EXPECT_EQ(told.at("changes"),
              (json{{{"config", 0}, {"name", "HaltKBSend"}, {"old", 0}, {"new", 1}, {"kept", 1}}}));
}

TEST_F(StripeFile, FailedWriteIsTold) {
    write("a.txt", "HaltKBSend: 1\n");
    reader().replyWith("FW", "E");
    const CommandRun failed = run({"config", "import", "a.txt"});
    EXPECT_EQ(failed.exit, ExitCode::Failed);
    EXPECT_TRUE(failed.err.starts_with("zeltag: writing COM1: failed")) << failed.err;
}

TEST_F(StripeFile, FileOfTheOtherKindOfReaderIsRefused) {
    std::ofstream("tag.txt") << "/--- zelTag and OEM Reader Configuration Template File ---\n"
                                "iIDHoldTO = 2000\n";
    write("a.txt", "Beeper: 1\n");
    const CommandRun refusal = refused(
        ExitCode::DamagedFile, "tag.txt is of a proximity reader, and COM1: is a zelBand; take a "
                               "file that `zeltag config export` wrote of such a reader");
    EXPECT_EQ(run({"config", "diff", "tag.txt"}), refusal);
    EXPECT_EQ(run({"config", "import", "tag.txt"}), refusal);
    EXPECT_EQ(runCommand({"config", "diff", "a.txt", "tag.txt"}).exit, ExitCode::DamagedFile);
    plugReader("a");
    EXPECT_EQ(runCommand({"config", "import", "a.txt"}).exit, ExitCode::DamagedFile);
}

} // namespace

} // namespace zel::test
