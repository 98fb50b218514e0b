// SPDX-License-Identifier: MIT
// `zeltag firmware check`: what a file is for, and which rule keeps it from the reader.
#include "tests/cli/firmware_command_test.h"

#include <fmt/format.h>
#include <nlohmann/json.hpp>

namespace zel::test {

namespace {

using cli::ExitCode;
using nlohmann::json;

constexpr char kRule207[] = "207:- The firmware filename present in the file does not match with "
                            "the reader connected to the system.";

class BusFirmwareCheck : public FirmwareCommandTest {
protected:
    // The checksum is the last eight characters of the file.
    static std::string checksum() {
        const std::string text = file().text();
        return text.substr(text.size() - 8);
    }
    static std::string toldOfTheFile() {
        return fmt::format("file      f.hex, checksum {} holds\n"
                           "firmware  ZT7_0303_TEST\n"
                           "family    ZT7\n"
                           "micro     0\n"
                           "lines     10\n",
                           checksum());
    }
    static CommandRun check() { return run({"firmware", "check", "f.hex"}); }
};

TEST_F(BusFirmwareCheck, TellsThatTheReaderWouldTakeTheFileAndSendsNothingOfIt) {
    plugZt7();
    EXPECT_EQ(check(),
              (CommandRun{ExitCode::Done, toldOfTheFile() + "reader    a would take it\n", ""}));
    EXPECT_FALSE(isFlashTraced());
}

TEST_F(BusFirmwareCheck, TellsTheRuleThatRefuses) {
    plugZt7("a", "ZT7_0301");
    EXPECT_EQ(check(), (CommandRun{ExitCode::DamagedFile, toldOfTheFile(),
                                   "zeltag: f.hex may not go into a: 207:- The firmware filename "
                                   "present in the file does not match with the reader connected "
                                   "to the system; take a file made for its firmware ZT7_0301\n"}));
    EXPECT_FALSE(isFlashTraced());
}

TEST_F(BusFirmwareCheck, TellsAReaderWithoutNamesTheWayBack) {
    plugZt7("a", "");
    EXPECT_TRUE(check().err.ends_with(
        "; it tells no firmware of its own: if it waits in its boot loader, `zeltag firmware load "
        "--recover f.hex` loads the file\n"));
}

TEST_F(BusFirmwareCheck, IsOneObjectWithJson) {
    plugZt7();
    const CommandRun checked = run({"firmware", "check", "f.hex", "--json"});
    const json expected = {
        {"path", "f.hex"},
        {"checksum", checksum()},
        {"firmware", {{"name", "ZT7_0303_TEST"}, {"family", "ZT7"}, {"micro", 0}, {"lines", 10}}},
        {"device", {{"index", 0}, {"name", "a"}}},
        {"taken", true}};
    EXPECT_EQ(json::parse(checked.out), expected);
    EXPECT_EQ(checked.err, "");
}

TEST_F(BusFirmwareCheck, RefusalIsInTheSameObject) {
    plugZt7("a", "ZT7_0301");
    const CommandRun checked = run({"firmware", "check", "f.hex", "--json"});
    EXPECT_EQ(checked.exit, ExitCode::DamagedFile);
    const json object = json::parse(checked.out);
    EXPECT_EQ(object.at("taken"), false);
    const json rule = {{"number", 207}, {"text", kRule207}};
    EXPECT_EQ(object.at("rule"), rule);
    EXPECT_EQ(object.at("error").at("exit"), 65);
}

TEST_F(BusFirmwareCheck, FileWithoutANameTellsADash) {
    FirmwareFile nameless = file();
    nameless.header = {};
    nameless.micro = "M1";
    writeText("f.hex", nameless.text());
    plugZt7();
    const CommandRun checked = check();
    EXPECT_EQ(checked.exit, ExitCode::DamagedFile);
    EXPECT_NE(checked.out.find("\nfirmware  -\nfamily    -\nmicro     1\n"), std::string::npos);
    EXPECT_NE(checked.err.find(": 205:- "), std::string::npos) << checked.err;
}

TEST_F(BusFirmwareCheck, DamagedFileIsToldBeforeAConnect) {
    std::string text = file().text();
    text[text.find(":01") + 1] = '1';
    writeText("f.hex", text);
    plugZt7();
    const CommandRun checked = check();
    EXPECT_EQ(checked.exit, ExitCode::DamagedFile);
    EXPECT_EQ(checked.out, "");
    EXPECT_TRUE(checked.err.starts_with("zeltag: f.hex is damaged: line 27 tells the checksum " +
                                        checksum() + ", the text has "))
        << checked.err;
    EXPECT_EQ(bus().takeTrace(), "");
}

TEST_F(BusFirmwareCheck, FileWithoutALineOfFirmwareIsRefused) {
    for (const char* const text : {"M0\n", ":01\n", ""}) {
        SCOPED_TRACE(text);
        writeText("f.hex", sealed(text));
        const CommandRun checked = check();
        EXPECT_EQ(checked.exit, ExitCode::DamagedFile);
        EXPECT_EQ(checked.out, "");
    }
    writeText("f.hex", sealed("M0\n"));
    EXPECT_EQ(check().err, "zeltag: f.hex holds no line of firmware; take a fresh copy of it from "
                           "the maker\n");
}

TEST_F(BusFirmwareCheck, MissingFileIsTold) {
    EXPECT_EQ(run({"firmware", "check", "absent.hex"}),
              (CommandRun{ExitCode::MissingFile, "",
                          "zeltag: absent.hex can't be read: No such file or directory; check its "
                          "name\n"}));
}

TEST_F(BusFirmwareCheck, MeansTheActiveReaderUnlessAnotherIsChosen) {
    plugZt7("a");
    plugZt7("b", "ZT7_0301");
    EXPECT_EQ(check().exit, ExitCode::Done);
    EXPECT_EQ(run({"firmware", "check", "f.hex", "--device", "1"}).exit, ExitCode::DamagedFile);
}

} // namespace

} // namespace zel::test
