// SPDX-License-Identifier: MIT
// `zeltag config export`: a whole file under its name, or the folder as it was.
#include "tests/cli/command_line_test.h"
#include "tests/cli/files_here.h"
#include "tests/cli/unprivileged.h"
#include "tests/support/temporary_folder.h"

#include <algorithm>
#include <cstdlib>

namespace zel::test {

namespace {

using cli::ExitCode;

class BusExport : public CommandLineTest {
protected:
    BusExport() { std::ofstream("old.txt") << kOld; }

    // Field data of `fields` fields of 14 bytes behind a header of 4.
    static void plugWithFields(std::uint8_t fields) {
        sim::TagOptions options;
        options.fieldPages = 16;
        const auto reader =
            plugReader({sim::TagReader::kVendor, sim::TagReader::kProduct, "a"}, options);
        reader->configuration(0).page[0][1] = static_cast<std::uint8_t>(0xE0 | fields);
    }

    static constexpr char kOld[] = "the settings of yesterday";
    const Files untouched_ = {{"old.txt", kOld}};

private:
    TemporaryFolder folder_;
};

TEST_F(BusExport, WritesTheSettingsOfAReader) {
    plugReader("a")->configuration(0).block[1][2] = 40;
    EXPECT_EQ(run({"config", "export", "a.txt"}),
              (CommandRun{ExitCode::Done, "a.txt  1 configuration of a\n", ""}));
    const Files files = filesHere();
    ASSERT_EQ(files.size(), 2U);
    EXPECT_NE(files.at("a.txt").find("\niIDHoldTO = 2000     / "), std::string::npos);
    EXPECT_TRUE(files.at("a.txt").ends_with("\nEND sFldSepData\n"));
}

TEST_F(BusExport, WritesEachConfiguration) {
    plugPlus(3);
    EXPECT_EQ(run({"config", "export", "old.txt", "--json"}).out,
              R"({"device":{"index":0,"name":"plus"},"path":"old.txt","configurations":3,)"
              R"("sealed":false,"shows_keys":false})"
              "\n");
    EXPECT_TRUE(filesHere().at("old.txt").ends_with("##NEXTCONFIG##\n"));
}

TEST_F(BusExport, SealedFileHoldsItsChecksum) {
    plugPlus(2);
    EXPECT_EQ(run({"config", "export", "a.txt", "--sealed"}),
              (CommandRun{ExitCode::Done, "a.txt  2 configurations of plus, sealed\n", ""}));
    EXPECT_EQ(run({"file", "check", "a.txt", "--sealed"}).exit, ExitCode::Done);
    EXPECT_EQ(run({"config", "diff", "a.txt"}), (CommandRun{ExitCode::Done, "", ""}));
}

TEST_F(BusExport, TakesTheActiveOneOfSeveralReaders) {
    plugReader("a");
    plugReader("b");
    EXPECT_EQ(run({"config", "export", "a.txt"}).out, "a.txt  1 configuration of a\n");
    EXPECT_EQ(run({"config", "export", "b.txt", "--device", "1"}).out,
              "b.txt  1 configuration of b\n");
}

TEST_F(BusExport, SilentReaderLeavesAllAsItWas) {
    plugReader("a");
    bus().fail(0, sim::Fault::NoAnswer, 1000, connectReplies());
    EXPECT_EQ(run({"config", "export", "old.txt"}),
              refused(ExitCode::Failed, "a can't be read: old.txt was not written; "
                                        "check its cable, then try `zeltag ping`"));
    EXPECT_EQ(filesHere(), untouched_);
}

// Where the library goes on without a reply, its file lacks a body or tells other values.
TEST_F(BusExport, LostReplyNeverLeavesAFileThatDiffersFromTheReader) {
    const auto reader = plugPlus(3);
    for (std::uint8_t i = 0; i < 3; ++i) {
        reader->configuration(i).block[1][2] = i;
        reader->configuration(i).cardType = 0x1230;
    }
    const int replies = connectReplies();
    int failures = 0;
    for (int reply = 0; reply < replies; ++reply) {
        bus().fail(0, sim::Fault::NoAnswer, 6, replies + reply);
        const bool written = run({"config", "export", "new.txt"}).exit == ExitCode::Done;
        bus().fail(0, sim::Fault::None, 0);
        if (written) {
            EXPECT_EQ(run({"config", "diff", "new.txt"}).exit, ExitCode::Done) << reply;
            std::filesystem::remove("new.txt");
        }
        EXPECT_EQ(filesHere(), untouched_) << reply;
        failures += written ? 0 : 1;
    }
    EXPECT_GT(failures, 0);
}

TEST_F(BusExport, FullDiskIsToldWhereverItEnds) {
    plugPlus(2);
    run({"config", "export", "whole.txt"});
    const std::size_t size = filesHere().at("whole.txt").size();
    std::filesystem::remove("whole.txt");
    for (const std::size_t room : {std::size_t{200}, std::size_t{4096}, size / 2, size - 1}) {
        const FullDisk disk(room);
        EXPECT_EQ(run({"config", "export", "old.txt"}), cantWrite("old.txt", "File too large"))
            << room;
        EXPECT_EQ(filesHere(), untouched_) << room;
    }
}

TEST_F(BusExport, FullDiskLeavesNoHalfSeal) {
    plugReader("a");
    run({"config", "export", "whole.txt", "--sealed"});
    const std::size_t size = filesHere().at("whole.txt").size();
    std::filesystem::remove("whole.txt");
    const FullDisk disk(size - 1);
    EXPECT_EQ(run({"config", "export", "old.txt", "--sealed"}),
              cantWrite("old.txt", "File too large"));
    EXPECT_EQ(filesHere(), untouched_);
}

TEST_F(BusExport, FolderWithoutPermissionIsTold) {
    plugReader("a");
    std::filesystem::permissions(".", std::filesystem::perms{0555});
    {
        const Unprivileged rights;
        EXPECT_EQ(run({"config", "export", "a.txt"}), cantWrite("a.txt", "Permission denied"));
    }
    std::filesystem::permissions(".", std::filesystem::perms{0755});
    EXPECT_EQ(filesHere(), untouched_);
}

TEST_F(BusExport, FolderAndDeviceAreNoFiles) {
    plugReader("a");
    std::filesystem::create_directory("folder");
    std::filesystem::create_symlink("/dev/full", "full");
    EXPECT_EQ(run({"config", "export", "folder"}), cantWrite("folder", "it is a folder"));
    EXPECT_EQ(run({"config", "export", "full"}), cantWrite("full", "it is no regular file"));
}

// Eight fields end at byte 116, nine at byte 130.
TEST_F(BusExport, KeyValuesInTheFileAreWarnedOf) {
    plugWithFields(9);
    EXPECT_EQ(run({"config", "export", "a.txt"}),
              (CommandRun{ExitCode::Done, "a.txt  1 configuration of a\n",
                          "zeltag: warning: a.txt shows key values: the field data of a count more "
                          "bytes than they have; don't share it\n"}));
}

TEST_F(BusExport, FieldDataWithinTheirBytesAreNotWarnedOf) {
    plugWithFields(8);
    EXPECT_EQ(run({"config", "export", "a.txt"}).err, "");
}

TEST_F(BusExport, ProgressIsToldOfSeveralConfigurations) {
    plugPlus(2);
    EXPECT_EQ(run({"config", "export", "a.txt", "--progress"}).err,
              "zeltag: reading the configuration of each reader\n"
              "zeltag: 2 of 2 configurations\n");
}

} // namespace

} // namespace zel::test
