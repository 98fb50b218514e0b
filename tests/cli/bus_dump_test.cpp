// SPDX-License-Identifier: MIT
// `zeltag dump`: the file when all goes well, and the folder as it was when anything doesn't.
#include "cli/main/program.h"
#include "tests/cli/command_line_test.h"
#include "tests/cli/files_here.h"
#include "tests/cli/unprivileged.h"
#include "tests/support/temporary_folder.h"

#include <csignal>
#include <cstdlib>
#include <fstream>
#include <thread>

namespace zel::test {

namespace {

using cli::ExitCode;

class BusDump : public CommandLineTest {
protected:
    BusDump() { std::ofstream("old.txt") << kOld; }

    // Ends this process as the command ends.
    [[noreturn]] static void dumpAndExit() {
        const char* const arguments[] = {"zeltag", "dump", "old.txt"};
        std::exit(static_cast<int>(cli::runProgram(3, arguments)));
    }

    static constexpr char kOld[] = "the dump of yesterday";
    const Files untouched_ = {{"old.txt", kOld}};

private:
    TemporaryFolder folder_;
};

TEST_F(BusDump, WritesEachReportAndItsReply) {
    plugReader("a")->settings().luid = 0x0102;
    EXPECT_EQ(run({"dump", "a.txt"}), (CommandRun{ExitCode::Done, "a.txt  15 reports of a\n", ""}));
    const Files files = filesHere();
    ASSERT_EQ(files.size(), 2U);
    const std::string& dump = files.at("a.txt");
    EXPECT_TRUE(dump.starts_with("# 8 byte USB Feature Reports\n# Reader Type ZelTag\n"
                                 "Tx: 80 00 00 00 00 00 00 00 \nRx: "))
        << dump;
    EXPECT_NE(dump.find("Tx: 8A 00 00 00 00 00 00 00 \nRx: 02 01 42 01 00 00 00 00 \n"),
              std::string::npos);
    EXPECT_TRUE(dump.ends_with("\n# End")) << dump;
}

TEST_F(BusDump, CountsTheReportsOfAllConfigurationsInJson) {
    sim::TagOptions options;
    options.tagPlusConfigurations = 3;
    plugReader({sim::TagReader::kVendor, sim::TagReader::kProduct, "plus"}, options);
    EXPECT_EQ(run({"dump", "a.txt", "--json"}).out,
              R"({"device":{"index":0,"name":"plus"},"path":"a.txt",)"
              R"("configurations":3,"reports":45})"
              "\n");
}

TEST_F(BusDump, TakesThePlaceOfAFileOnlyWhenItIsComplete) {
    Files meanwhile;
    plugReader("a")->follow([&meanwhile] {
        meanwhile = filesHere();
        return sim::Card{};
    });
    EXPECT_EQ(run({"dump", "old.txt"}).exit, ExitCode::Done);
    EXPECT_EQ(meanwhile.size(), 2U);
    EXPECT_EQ(meanwhile.at("old.txt"), kOld);
    const Files files = filesHere();
    EXPECT_EQ(files.size(), 1U);
    EXPECT_TRUE(files.at("old.txt").ends_with("# End"));
}

TEST_F(BusDump, ReportThatFailsLeavesAllAsItWas) {
    plugReader("a");
    const int replies = connectReplies();
    for (int reply = 0; reply < 15; ++reply) {
        bus().fail(0, sim::Fault::NoAnswer, 1, replies + reply);
        EXPECT_EQ(run({"dump", "old.txt"}),
                  refused(ExitCode::Failed, "a report of a failed: old.txt was not written; "
                                            "check its cable, then try `zeltag ping`"))
            << "reply " << reply;
        EXPECT_EQ(filesHere(), untouched_) << "reply " << reply;
    }
}

TEST_F(BusDump, FullDiskIsNotTheReadersFault) {
    plugReader("a");
    const FullDisk disk(600);
    EXPECT_EQ(run({"dump", "old.txt"}), cantWrite("old.txt", "File too large"));
    EXPECT_EQ(filesHere(), untouched_);
}

TEST_F(BusDump, FolderWithoutPermissionIsTold) {
    plugReader("a");
    std::filesystem::permissions(".", std::filesystem::perms{0555});
    {
        const Unprivileged rights;
        EXPECT_EQ(run({"dump", "a.txt"}), cantWrite("a.txt", "Permission denied"));
    }
    std::filesystem::permissions(".", std::filesystem::perms{0755});
    EXPECT_EQ(filesHere(), untouched_);
}

TEST_F(BusDump, FolderIsNoFile) {
    plugReader("a");
    std::filesystem::create_directory("folder");
    EXPECT_EQ(run({"dump", "folder"}), cantWrite("folder", "it is a folder"));
}

TEST_F(BusDump, ProgressIsToldOnDemand) {
    plugReader("a");
    EXPECT_EQ(run({"dump", "a.txt", "--progress"}),
              (CommandRun{ExitCode::Done, "a.txt  15 reports of a\n",
                          "zeltag: reading the configuration of each reader\n"
                          "zeltag: 15 of 15 reports\n"}));
    EXPECT_EQ(run({"dump", "a.txt"}).err, "");
}

// The reader takes its time for the thirteenth report.
TEST_F(BusDump, ProgressIsToldWhileTheReaderAnswers) {
    plugReader("a")->follow([slow = true]() mutable {
        if (std::exchange(slow, false))
            std::this_thread::sleep_for(std::chrono::milliseconds(500));
        return sim::Card{};
    });
    EXPECT_EQ(run({"dump", "a.txt", "--progress"}).err,
              "zeltag: reading the configuration of each reader\n"
              "zeltag: 12 of 15 reports\n"
              "zeltag: 15 of 15 reports\n");
}

TEST_F(BusDump, CtrlCLeavesAllAsItWas) {
    plugReader("a")->follow([once = true]() mutable {
        if (std::exchange(once, false))
            std::raise(SIGINT);
        return sim::Card{};
    });
    EXPECT_EXIT(dumpAndExit(), ::testing::ExitedWithCode(130), "");
    EXPECT_EQ(filesHere(), untouched_);
}

TEST_F(BusDump, SecondCtrlCLeavesAllAsItWasToo) {
    plugReader("a")->follow([] {
        std::raise(SIGINT);
        std::raise(SIGTERM);
        std::abort();
        return sim::Card{};
    });
    EXPECT_EXIT(dumpAndExit(), ::testing::ExitedWithCode(130), "");
    EXPECT_EQ(filesHere(), untouched_);
}

} // namespace

} // namespace zel::test
