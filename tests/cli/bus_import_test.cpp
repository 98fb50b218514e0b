// SPDX-License-Identifier: MIT
// `zeltag config import` into one reader: what it shows, writes, refuses and leaves alone.
#include "tests/cli/command_line_test.h"
#include "tests/cli/files_here.h"
#include "tests/cli/unprivileged.h"
#include "tests/support/temporary_folder.h"

namespace zel::test {

namespace {

using cli::ExitCode;

constexpr char kTitle[] = "/--- zelTag and OEM Reader Configuration Template File ---\n";

class BusImport : public CommandLineTest {
protected:
    static void write(const std::string& lines) { std::ofstream("a.txt") << kTitle << lines; }

    static std::uint8_t stored(const sim::TagReader& reader, std::size_t configuration,
                               std::size_t block, std::size_t byte) {
        return reader.committed().configuration.at(configuration).block.at(block).at(byte);
    }

private:
    TemporaryFolder folder_;
};

// 2000 ms are 40 steps of 50 ms in byte 2 of block 1; the flag is bit 4 of byte 1 of block 2.
TEST_F(BusImport, StoresWhatTheFileChanges) {
    const auto reader = plugReader("a");
    write("bBeepID = 1\niIDHoldTO = 2000\niTotalBitCnt = 26\n");
    EXPECT_EQ(run({"config", "import", "a.txt"}),
              (CommandRun{ExitCode::Done,
                          "CfgFlags2.bBeepID  0 -> 1\nTimeParms.iIDHoldTO  1000 ms -> 2000 ms\n"
                          "2 changes were written\n",
                          ""}));
    EXPECT_EQ(stored(*reader, 0, 1, 2), 40);
    EXPECT_EQ(stored(*reader, 0, 2, 1), 0x10);
}

TEST_F(BusImport, DryRunShowsTheSameAndSendsNothing) {
    plugReader("a");
    write("iIDHoldTO = 2000\nbVolatile_LC = 1\niRedLEDState = 1\n");
    run({"config", "show"});
    bus().takeTrace();
    run({"config", "show"});
    const std::string reads = bus().takeTrace();
    EXPECT_EQ(run({"config", "import", "a.txt", "--dry-run"}),
              (CommandRun{ExitCode::Done,
                          "TimeParms.iIDHoldTO  1000 ms -> 2000 ms\nLEDCtrl.iRedLEDState  0 -> 1\n"
                          "LEDCtrl.bVolatile  0 -> 1\nnothing was written: --dry-run\n",
                          ""}));
    EXPECT_EQ(bus().takeTrace(), reads);
}

TEST_F(BusImport, FileThatChangesNothingSendsNothing) {
    plugReader("a");
    run({"config", "export", "a.txt"});
    bus().takeTrace();
    run({"config", "show"});
    const std::string reads = bus().takeTrace();
    EXPECT_EQ(run({"config", "import", "a.txt"}),
              (CommandRun{ExitCode::Done, "nothing was written: no value is new\n", ""}));
    EXPECT_EQ(bus().takeTrace(), reads);
}

TEST_F(BusImport, VolatileRecordIsSentOnceAndNotAsAChangeToKeep) {
    const auto reader = plugReader("a");
    write("bVolatile_LC = 1\niRedLEDState = 1\n");
    bus().takeTrace();
    EXPECT_EQ(run({"config", "import", "a.txt"}).out,
              "LEDCtrl.iRedLEDState  0 -> 1\nLEDCtrl.bVolatile  0 -> 1\n"
              "2 changes were written\n");
    EXPECT_TRUE(reader->isRedOn());
    const std::string trace = bus().takeTrace();
    EXPECT_EQ(trace.find("block 2 data"), trace.rfind("block 2 data")) << trace;
}

TEST_F(BusImport, ValueThatTheReaderRoundsIsToldAsKept) {
    plugReader("a");
    write("iIDHoldTO = 2030\niIDBitCnt = 200\n");
    EXPECT_EQ(run({"config", "import", "a.txt"}).out,
              "IDBitCnts.iIDBitCnt  16 -> 200\n"
              "TimeParms.iIDHoldTO  1000 ms -> 2030 ms\n"
              "IDBitCnts.iIDBitCnt  16 -> 200, but the reader kept 72\n"
              "TimeParms.iIDHoldTO  1000 ms -> 2030 ms, kept as 2000 ms: "
              "the reader counts in steps of 50 ms\n"
              "2 changes were written\n");
}

TEST_F(BusImport, RecordOutOfRangeIsToldByNameAndTheOthersLoad) {
    const auto reader = plugReader("a");
    write("iIDHoldTO = 12751\niBitStrmTO = 4\nbBeepID = 1\n");
    EXPECT_EQ(run({"config", "import", "a.txt"}),
              (CommandRun{ExitCode::Failed, "CfgFlags2.bBeepID  0 -> 1\n1 change was written\n",
                          "zeltag: TimeParms isn't imported into a: iIDHoldTO can't be 12751; "
                          "it takes 0 to 12750 ms\n"}));
    EXPECT_EQ(stored(*reader, 0, 1, 2), 20);
    EXPECT_EQ(stored(*reader, 0, 2, 1), 0x10);
}

TEST_F(BusImport, DryRunTellsRefusedRecordsToo) {
    plugReader("a");
    write("iLeadChrCnt = 4\n");
    EXPECT_EQ(run({"config", "import", "a.txt", "--dry-run", "--json"}),
              (CommandRun{ExitCode::Failed,
                          R"({"device":{"index":0,"name":"a"},"result":"refused in part",)"
                          R"("written":false,"changes":[],"refused":[{"config":0,)"
                          R"("record":"IDDispParms2",)"
                          R"("reason":"iLeadChrCnt can't be 4; it takes 0 to 3"}],"remarks":[]})"
                          "\n",
                          "zeltag: IDDispParms2 isn't imported into a: iLeadChrCnt can't be 4; "
                          "it takes 0 to 3\n"}));
}

TEST_F(BusImport, FieldDataAreShownByteByByte) {
    const auto reader = plugReader("a");
    write("BEGIN sFldSepData\n0C.11.AB\nEND sFldSepData\n");
    EXPECT_EQ(run({"config", "import", "a.txt"}).out,
              "uSFD[1]  0x00 -> 0x11\nuSFD[2]  0x00 -> 0xAB\n2 changes were written\n");
    EXPECT_EQ(reader->committed().configuration[0].page[0][2], 0xAB);
}

TEST_F(BusImport, FieldDataOfAnotherFormAreLeftOutWithAWarning) {
    plugReader("a");
    write("iExOutputFormat = 1\nBEGIN sFldSepData\n24.00\nEND sFldSepData\n");
    EXPECT_EQ(run({"config", "import", "a.txt"}),
              (CommandRun{ExitCode::Done, "nothing was written: no value is new\n",
                          "zeltag: warning: a.txt: the field data aren't imported: those of a have "
                          "another form\n"
                          "zeltag: warning: a.txt: iExOutputFormat isn't imported: the field data "
                          "of a have none\n"}));
}

TEST_F(BusImport, EachConfigurationIsShownUnderItsNumber) {
    const auto reader = plugPlus(3);
    reader->configuration(1).block[1][2] = 2;
    run({"config", "export", "a.txt"});
    reader->configuration(1).block[1][2] = 20;
    reader->configuration(2).block[2][1] = 0x10;
    reader->activate(1);
    EXPECT_EQ(run({"config", "import", "a.txt"}),
              (CommandRun{ExitCode::Done,
                          "configuration 1\n  TimeParms.iIDHoldTO  1000 ms -> 100 ms\n"
                          "configuration 2\n  CfgFlags2.bBeepID  1 -> 0\n2 changes were written\n",
                          ""}));
    EXPECT_EQ(stored(*reader, 1, 1, 2), 2);
    EXPECT_EQ(stored(*reader, 2, 2, 1), 0);
}

// The first configuration has long parity, the second takes 15 bits.
TEST_F(BusImport, RecordIsRefusedByTheConfigurationItIsFor) {
    const auto reader = plugPlus(2);
    reader->configuration(0).block[1][7] = 0x80;
    run({"config", "export", "a.txt"});
    std::string text = textOf("a.txt");
    for (std::size_t at = 0; (at = text.find("iTrailParityBitCnt = ", at)) != std::string::npos;)
        text.insert(at += 21, "10");
    std::ofstream("a.txt") << text;
    const CommandRun tried = run({"config", "import", "a.txt", "--dry-run"});
    EXPECT_TRUE(tried.out.starts_with("configuration 0\n  IDBitCnts.iTrailParityBitCnt "))
        << tried.out;
    EXPECT_TRUE(tried.err.starts_with("zeltag: IDBitCnts of configuration 1 isn't imported into "
                                      "plus: iTrailParityBitCnt can't be 10"))
        << tried.err;
}

TEST_F(BusImport, FileOfOneConfigurationLeavesTheOthers) {
    const auto reader = plugPlus(2);
    write("iIDHoldTO = 2000\n");
    EXPECT_EQ(run({"config", "import", "a.txt"}),
              (CommandRun{ExitCode::Done,
                          "configuration 0\n  TimeParms.iIDHoldTO  1000 ms -> 2000 ms\n"
                          "1 change was written\n",
                          "zeltag: warning: a.txt: the file has 1 of the 2 configurations of plus: "
                          "the others stay as they are\n"}));
    EXPECT_EQ(stored(*reader, 1, 1, 2), 20);
}

TEST_F(BusImport, ReaderOfOneConfigurationTakesTheFirst) {
    const auto plus = plugPlus(2);
    plus->configuration(0).block[1][2] = 40;
    run({"config", "export", "a.txt"});
    bus().clear();
    plugReader("a");
    EXPECT_EQ(run({"config", "import", "a.txt"}),
              (CommandRun{ExitCode::Done,
                          "TimeParms.iIDHoldTO  1000 ms -> 2000 ms\n1 change was written\n",
                          "zeltag: warning: a.txt: a has 1 of the file's 2 configurations: the "
                          "others aren't imported\n"}));
}

TEST_F(BusImport, ChangesAreShownBeforeAWriteThatFails) {
    plugReader("a");
    write("iIDHoldTO = 2000\n");
    connectReplies();
    const int before = bus().exchanges(0);
    run({"config", "get", "bBeepID"});
    bus().failExchange(0, bus().exchanges(0) - before + 1, 12);
    const CommandRun failed = run({"config", "import", "a.txt"});
    EXPECT_EQ(failed.exit, ExitCode::Failed);
    EXPECT_EQ(failed.out, "TimeParms.iIDHoldTO  1000 ms -> 2000 ms\n");
    EXPECT_TRUE(failed.err.starts_with("zeltag: writing a failed (library error 0x")) << failed.err;
    EXPECT_TRUE(failed.err.ends_with("; check its cable, then import the file again: a part may be "
                                     "written\n"))
        << failed.err;
}

TEST_F(BusImport, FileThatIsNoneIsRefusedBeforeAConnect) {
    std::ofstream("text.txt") << "iIDHoldTO = 2000\n";
    std::ofstream("empty.txt");
    std::filesystem::create_directory("folder");
    const auto no = [](const char* name) { return run({"config", "import", name}); };
    EXPECT_EQ(no("text.txt"),
              refused(ExitCode::DamagedFile,
                      "text.txt is no template file; `zeltag config export` writes one"));
    EXPECT_EQ(no("empty.txt").exit, ExitCode::DamagedFile);
    EXPECT_EQ(no("missing.txt"),
              refused(ExitCode::MissingFile,
                      "missing.txt can't be read: No such file or directory; check its name"));
    EXPECT_EQ(no("folder"), refused(ExitCode::MissingFile,
                                    "folder can't be read: it is a folder; check its name"));
}

TEST_F(BusImport, FileWithoutPermissionIsTold) {
    write("");
    std::filesystem::permissions("a.txt", std::filesystem::perms{});
    std::filesystem::permissions(".", std::filesystem::perms{0755});
    const Unprivileged rights;
    EXPECT_EQ(run({"config", "import", "a.txt"}),
              refused(ExitCode::NoPermission, "a.txt can't be read: Permission denied; "
                                              "ask its owner for the right to read it"));
}

TEST_F(BusImport, SealedFileIsImported) {
    const auto reader = plugReader("a");
    reader->configuration(0).block[1][2] = 40;
    run({"config", "export", "a.txt", "--sealed"});
    reader->configuration(0).block[1][2] = 20;
    EXPECT_EQ(run({"config", "import", "a.txt", "--sealed"}),
              (CommandRun{ExitCode::Done,
                          "TimeParms.iIDHoldTO  1000 ms -> 2000 ms\n1 change was written\n", ""}));
    EXPECT_EQ(stored(*reader, 0, 1, 2), 40);
}

TEST_F(BusImport, ChangedSealedFileIsRefusedWithLineAndReason) {
    plugReader("a");
    run({"config", "export", "a.txt", "--sealed"});
    std::string text = textOf("a.txt");
    text.replace(text.find("iIDHoldTO = 1000"), 16, "iIDHoldTO = 2000");
    std::ofstream("a.txt") << text;
    const auto lines = std::count(text.begin(), text.end(), '\n') + 1;
    const CommandRun refusal = run({"config", "import", "a.txt", "--sealed"});
    EXPECT_EQ(refusal.exit, ExitCode::DamagedFile);
    EXPECT_TRUE(refusal.err.starts_with("zeltag: a.txt is damaged: line " + std::to_string(lines) +
                                        " tells the checksum "))
        << refusal.err;
}

TEST_F(BusImport, ChangedSealedFileIsLoadedWithAWarningUnlessSealedIsDemanded) {
    plugReader("a");
    run({"config", "export", "a.txt", "--sealed"});
    std::string text = textOf("a.txt");
    text.replace(text.find("iIDHoldTO = 1000"), 16, "iIDHoldTO = 2000");
    std::ofstream("a.txt") << text;
    const CommandRun loaded = run({"config", "import", "a.txt"});
    EXPECT_EQ(loaded.exit, ExitCode::Done);
    EXPECT_NE(loaded.err.find("warning: a.txt is damaged: "), std::string::npos);
    EXPECT_NE(loaded.err.find("; --sealed refuses such a file\n"), std::string::npos);
}

TEST_F(BusImport, FileWithoutASealIsRefusedAsSealed) {
    write("");
    EXPECT_EQ(run({"config", "import", "a.txt", "--sealed"}),
              refused(ExitCode::DamagedFile,
                      "a.txt is damaged: it has no trailer; take a fresh copy of it"));
}

} // namespace

} // namespace zel::test
