// SPDX-License-Identifier: MIT
// What a check tells of the files of magnetic stripe readers and sensors, which have no trailer.
#include "tests/cfgfile/template_test.h"

#include <algorithm>
#include <cstring>

using namespace zel::test;

namespace {

struct Finding {
    int fault;
    int line;
    bool operator==(const Finding&) const = default;
};

std::ostream& operator<<(std::ostream& out, const Finding& finding) {
    return out << finding.fault << " in " << finding.line;
}

class SettingsCheck : public LibraryTest {
protected:
    static Finding find(const char* name, int kind) {
        zelFileCheck check;
        std::memset(&check, 0xFF, sizeof check);
        const int holds = zelTagAPI_checkFile(name, kind, &check);
        EXPECT_EQ(holds, check.fault == ZELTAGAPI_FAULT_NONE);
        EXPECT_STREQ(check.told, "");
        EXPECT_STREQ(check.computed, "");
        return {check.fault, check.line};
    }
    static Finding band(const std::string& text) {
        writeText("in", text);
        return find("in", ZELTAGAPI_FILE_BAND);
    }
    static Finding echo(const std::string& text) {
        writeText("in", text);
        return find("in", ZELTAGAPI_FILE_ECHO);
    }
    // Of a file of the title and one line.
    static int bandLine(const std::string& line) { return band(kTitle + line).fault; }

    static std::string without(std::string text, const std::string& line) {
        const std::size_t at = text.find(line);
        EXPECT_NE(at, text.npos);
        return text.erase(at, text.find('\n', at) + 1 - at);
    }

    static constexpr char kTitle[] = "//--- zelBand Configuration Template File ---\n";
    TemporaryFolder folder_;
};

constexpr Finding kWhole = {ZELTAGAPI_FAULT_NONE, 0};
constexpr Finding kMissing = {ZELTAGAPI_FAULT_MISSING, 0};

// Numbers that a sensor accepts, for a file of all its words.
std::string acceptedEcho() {
    std::string text = goldenFile("echo");
    const std::pair<std::string, std::string> numbers[] = {{"PingRateS = 101", "PingRateS = 400"},
                                                           {"MinDistS = 103", "MinDistS = 5"},
                                                           {"MaxDistS = 104", "MaxDistS = 72"},
                                                           {"KeyCountWA = 200", "KeyCountWA = -1"},
                                                           {"KeyCountWU = 300", "KeyCountWU = 6"}};
    for (const auto& [number, accepted] : numbers)
        text.replace(text.find(number), number.size(), accepted);
    return text;
}

} // namespace

TEST_F(SettingsCheck, FindsNothingInAWholeFile) {
    EXPECT_EQ(band(goldenFile("band")), kWhole);
    EXPECT_EQ(echo(acceptedEcho()), kWhole);
}

TEST_F(SettingsCheck, TellsThatAWordHasNoLine) {
    EXPECT_EQ(band(without(goldenFile("band"), "UserField[10].Keybyte[15]")), kMissing);
    EXPECT_EQ(band(without(goldenFile("band"), "LUID")), kMissing);
    EXPECT_EQ(band(without(goldenFile("band"), "//##END##")), kWhole);
    EXPECT_EQ(echo(without(acceptedEcho(), "LEDFlagsS")), kMissing);
    EXPECT_EQ(echo(without(acceptedEcho(), "SNBlankTmI")), kMissing);
    EXPECT_EQ(band(kTitle), kMissing);
    EXPECT_EQ(echo(""), kMissing);
}

TEST_F(SettingsCheck, TellsThatAStripeReadersFileWasCutShort) {
    const std::string text = goldenFile("band");
    EXPECT_EQ(band(text.substr(0, text.size() / 2)), kMissing);
    const std::string cut = text.substr(0, text.find("\nUserField", text.size() / 2) + 5);
    const auto lines = std::count(cut.begin(), cut.end(), '\n');
    EXPECT_EQ(band(cut), (Finding{ZELTAGAPI_FAULT_LINE, static_cast<int>(lines + 1)}));
}

TEST_F(SettingsCheck, TellsAStripeReadersFileWithoutItsTitle) {
    EXPECT_EQ(band(""), (Finding{ZELTAGAPI_FAULT_TITLE, 0}));
    EXPECT_EQ(band(goldenFile("plain")), (Finding{ZELTAGAPI_FAULT_TITLE, 0}));
    EXPECT_EQ(band(std::string(300, '/') + '\n' + goldenFile("band")),
              (Finding{ZELTAGAPI_FAULT_TITLE, 0}));
}

TEST_F(SettingsCheck, NeedsNoTitleOfASensorsFile) {
    EXPECT_EQ(echo(without(acceptedEcho(), "/---")), kWhole);
    EXPECT_EQ(echo(goldenFile("plain")), (Finding{ZELTAGAPI_FAULT_LINE, 6}));
}

TEST_F(SettingsCheck, TellsTheFirstLineThatALoadPassesOver) {
    const std::string head = std::string(kTitle) + "\r\n \t\n//x\nBeeper: 1\n";
    EXPECT_EQ(band(head + "Beper: 1\nLOUD: 1\n"), (Finding{ZELTAGAPI_FAULT_LINE, 6}));
    for (const char* line : {" Beeper: 1", "beeper: 1", "Beeper: x", "LedColor[5]: 1", "/x"})
        EXPECT_EQ(bandLine(line), ZELTAGAPI_FAULT_LINE) << line;
    EXPECT_EQ(echo("\n/x\n:x\n  \nFlagsI=1\nFlagsII = 1\n"), (Finding{ZELTAGAPI_FAULT_LINE, 6}));
    for (const char* line : {"FlagsI", "FlagsI = x", "x", "x = 1"})
        EXPECT_EQ(echo(line), (Finding{ZELTAGAPI_FAULT_LINE, 1})) << line;
}

TEST_F(SettingsCheck, CountsALongLineOnce) {
    const std::string blanks(600, ' ');
    EXPECT_EQ(band(kTitle + blanks + "\nBeper: 1\n"), (Finding{ZELTAGAPI_FAULT_LINE, 3}));
    EXPECT_EQ(band(kTitle + blanks + "x\n"), (Finding{ZELTAGAPI_FAULT_LINE, 2}));
    EXPECT_EQ(echo(blanks + "\n" + blanks + "\nx"), (Finding{ZELTAGAPI_FAULT_LINE, 3}));
    EXPECT_EQ(echo(std::string("/\0\n\0x\nx", 7)), (Finding{ZELTAGAPI_FAULT_LINE, 3}));
}

TEST_F(SettingsCheck, TellsANumberThatAStripeReadersWordDoesntKeep) {
    for (const char* line : {"HaltKBSend: 2", "HaltKBSend: -1", "TrackEnables: 300", "Beeper: -1",
                             "UserField[1].Skip: 2", "KeyPressTime: 65536", "KeyReleaseTime: -1",
                             "LUID: 65536", "LUID: -32769"})
        EXPECT_EQ(bandLine(line), ZELTAGAPI_FAULT_VALUE) << line;
    for (const char* line : {"HaltKBSend: 1", "Beeper: 255", "KeyPressTime: 65535", "LUID: 65535",
                             "LUID: -32768", "UserField[0].Track: 9"})
        EXPECT_EQ(bandLine(line), ZELTAGAPI_FAULT_MISSING) << line;
}

TEST_F(SettingsCheck, TellsANumberForWhichASensorsRecordStays) {
    EXPECT_EQ(echo(goldenFile("echo")), (Finding{ZELTAGAPI_FAULT_VALUE, 7}));
    for (const char* line : {"PingRateS=199", "PINGRATES=1021", "MinDistS=0", "MinDistS=60",
                             "MaxDistS=14", "MaxDistS=73", "KeyCountWA=7", "InterKeyDelayWA=63",
                             "KeyCountWU=7", "InterKeyDelayWU=16321"})
        EXPECT_EQ(echo(line), (Finding{ZELTAGAPI_FAULT_VALUE, 1})) << line;
    for (const char* line : {"PingRateS=200", "MinDistS=59", "MaxDistS=15", "KeyCountWA=65535",
                             "InterKeyDelayWU=16320", "LEDFlagsS=65535", "Reserved1I=1"})
        EXPECT_EQ(echo(line), kMissing) << line;
}

TEST_F(SettingsCheck, TellsAFileThatCannotBeRead) {
    for (const int kind : {ZELTAGAPI_FILE_BAND, ZELTAGAPI_FILE_ECHO})
        for (const char* const name : {"missing", "", ".", static_cast<const char*>(nullptr)})
            EXPECT_EQ(find(name, kind), (Finding{ZELTAGAPI_FAULT_OPEN, 0}))
                << "kind " << kind << ' ' << name;
}

TEST_F(SettingsCheck, TouchesNoRecord) {
    iDevsFnd = 1;
    DevDat[0].iProduct = ZELTAGAPI_ZELECHO;
    DevDat[0].lLastErr = 0x5A5A;
    const std::string before(reinterpret_cast<const char*>(&DevDat[0]), sizeof DevDat[0]);
    band(goldenFile("band"));
    echo(goldenFile("echo"));
    echo(acceptedEcho());
    EXPECT_EQ(before, std::string(reinterpret_cast<const char*>(&DevDat[0]), sizeof DevDat[0]));
}
