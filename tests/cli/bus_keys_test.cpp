// SPDX-License-Identifier: MIT
// `zeltag keys load`: the blobs of a file with a good trailer reach the reader, and no byte of them
// the user.
#include "tests/cli/command_line_test.h"
#include "tests/cli/files_here.h"
#include "tests/support/temporary_folder.h"

namespace zel::test {

namespace {

using cli::ExitCode;

// Two blobs of four bytes; the checksum is zlib's of all in front of "[EOF]".
constexpr char kTwoBlobs[] = "[Blob1]\r\nhdr=10 01 04 00\r\ndata=A1 A2 A3 A4\r\n"
                             "[Blob2]\r\nhdr=10 02 04 00\r\ndata=B1 B2 B3 B4\r\n"
                             "[EOF]\r\niEndOfIniFile=41FFF99F\r\n";

class BusKeys : public CommandLineTest {
protected:
    BusKeys() { std::ofstream("keys.ini", std::ios::binary) << kTwoBlobs; }

    static std::shared_ptr<sim::TagReader> plugPlus(const std::string& name) {
        sim::TagOptions options;
        options.tagPlusConfigurations = 1;
        return plugReader({sim::TagReader::kVendor, sim::TagReader::kProduct, name}, options);
    }

private:
    TemporaryFolder folder_;
};

TEST_F(BusKeys, ReachTheReader) {
    const auto reader = plugPlus("a");
    EXPECT_EQ(run({"keys", "load", "keys.ini"}),
              (CommandRun{ExitCode::Done, "keys.ini  2 key blobs sent to a\n", ""}));
    const std::vector<sim::TagBlob> held = {{0x10, 1, 4, {0xA1, 0xA2, 0xA3, 0xA4}, true},
                                            {0x10, 2, 4, {0xB1, 0xB2, 0xB3, 0xB4}, true}};
    EXPECT_EQ(reader->blobs(), held);
}

TEST_F(BusKeys, AreCountedInJson) {
    plugPlus("a");
    EXPECT_EQ(run({"keys", "load", "keys.ini", "--json"}).out,
              R"({"device":{"index":0,"name":"a"},"path":"keys.ini","blobs":2})"
              "\n");
}

TEST_F(BusKeys, ChangedFileIsRefusedBeforeAConnect) {
    std::string text = kTwoBlobs;
    text[text.find("A1")] = 'C';
    std::ofstream("keys.ini", std::ios::binary) << text;
    EXPECT_EQ(
        run({"keys", "load", "keys.ini"}),
        (CommandRun{ExitCode::DamagedFile, "",
                    "zeltag: keys.ini is damaged: line 8 tells the checksum 41FFF99F, the text "
                    "has 70AA5D57; take a fresh copy of it\n"}));
}

TEST_F(BusKeys, FileWithoutABlobIsRefused) {
    std::ofstream("keys.ini", std::ios::binary) << "[EOF]\r\niEndOfIniFile=0\r\n";
    EXPECT_EQ(run({"keys", "load", "keys.ini"}),
              (CommandRun{ExitCode::DamagedFile, "",
                          "zeltag: keys.ini holds no key blob; there is nothing to load\n"}));
}

TEST_F(BusKeys, NeedAChoiceAmongSeveralReaders) {
    plugReader("a");
    plugPlus("b");
    EXPECT_EQ(run({"keys", "load", "keys.ini"}),
              (CommandRun{ExitCode::Usage, "",
                          "zeltag: there are several readers: 0 is a, 1 is b; choose one with "
                          "--device, such as --device 0\n"}));
    EXPECT_EQ(run({"keys", "load", "keys.ini", "--device", "1"}).exit, ExitCode::Done);
}

TEST_F(BusKeys, SilentReaderIsToldWithoutAByteOfThem) {
    plugPlus("a");
    bus().fail(0, sim::Fault::NoAnswer, 1000, connectReplies());
    const CommandRun failed = run({"keys", "load", "keys.ini"});
    EXPECT_EQ(failed.exit, ExitCode::Failed);
    EXPECT_EQ(failed.out, "");
    EXPECT_TRUE(failed.err.starts_with("zeltag: loading keys.ini into a failed")) << failed.err;
    EXPECT_TRUE(failed.err.ends_with("; check its cable and that it takes keys, then load the file "
                                     "again: some blobs may be stored\n"))
        << failed.err;
}

TEST_F(BusKeys, ReaderThatTakesNoneIsAFailure) {
    plugReader("a");
    EXPECT_EQ(run({"keys", "load", "keys.ini"}).exit, ExitCode::Failed);
}

} // namespace

} // namespace zel::test
