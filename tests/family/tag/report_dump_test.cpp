// SPDX-License-Identifier: MIT
// All reports of a reader as a text file.
#include "family/tag/card_data.h"
#include "tests/family/tag/config_test.h"
#include "tests/support/files.h"
#include "tests/support/temporary_folder.h"

#include <fcntl.h>
#include <sstream>
#include <sys/stat.h>
#include <unistd.h>

using namespace zel::test;

namespace {

constexpr char kName[] = "dump.txt";
constexpr char kReports[] = "80 81 82 83 84 85 87 88 89 8A 8B 8C 8D 8E 8F ";

std::string golden(const std::string& name) {
    const std::string text = textOf(std::string(ZEL_TAG_TRACES) + "/dump_" + name + ".txt");
    EXPECT_FALSE(text.empty()) << name;
    return text;
}

class ReportDump : public ConfigTest {
protected:
    // Configuration `n` is told apart by its LEDs, block 3 and card type.
    static void distinguish(zel::sim::TagReader& reader, std::size_t n) {
        reader.present(zel::sim::card26(26, 3512));
        reader.settings().luid = 0x1234;
        reader.configuration(n).block[2][0] = 0x03;
        reader.configuration(n).block[3][7] = 0x09;
    }

    static std::shared_ptr<zel::sim::TagReader> connectPlain() {
        auto reader = connectReader({.features = 0x21});
        distinguish(*reader, 0);
        return reader;
    }

    // Two configurations, the first of them active.
    static std::shared_ptr<zel::sim::TagReader> connectTwo() {
        auto reader = connectReader({.tagPlusConfigurations = 2});
        distinguish(*reader, 1);
        reader->configuration(0).cardType = 0x0102;
        reader->configuration(1).cardType = 0x1204;
        reader->configuration(1).cardPriority = true;
        EXPECT_EQ(SendGetTagPlus(), 1);
        bus().takeTrace();
        return reader;
    }

    static int dump(const char* name = kName) { return DumpRawFeatureReports(name); }

    static bool isThere(const char* name = kName) {
        return std::filesystem::exists(std::filesystem::symlink_status(name));
    }

    // The opcodes of the reports that went out; of a selection its three bytes.
    static std::string sent() {
        std::istringstream trace(bus().takeTrace());
        std::string reports;
        for (std::string line; std::getline(trace, line);) {
            if (!line.starts_with("> "))
                continue;
            const bool selects = line.starts_with("> 89 81");
            reports += line.substr(2, selects ? 9 : 3);
        }
        return reports;
    }

    TemporaryFolder folder_;
};

class ReportDumpOfTwo : public ReportDump {
protected:
    static constexpr int kSteps = 66; // (a selection and fifteen queries) twice, a selection

    // A selection isn't looked at; any other exchange that fails ends the dump.
    static bool isSelection(int step) { return (step - 1) / 2 % 16 == 0; }
    static bool isSend(int step) { return step % 2 == 1; }
};

} // namespace

TEST_F(ReportDump, OfAPlainReaderIsOneConfiguration) {
    connectPlain();
    EXPECT_EQ(dump(), 1);
    EXPECT_EQ(textOf(kName), golden("plain"));
    EXPECT_EQ(sent(), kReports) << "nothing is selected";
}

TEST_F(ReportDump, OfTwoConfigurationsSelectsEachAndThenTheOneBefore) {
    const auto reader = connectTwo();
    EXPECT_EQ(dump(), 1);
    EXPECT_EQ(textOf(kName), golden("tagplus"));
    EXPECT_EQ(sent(), std::string("89 81 00 ") + kReports + "89 81 01 " + kReports + "89 81 00 ");
    EXPECT_EQ(GetActConfig(), 0);
    EXPECT_EQ(reader->activeConfiguration(), 0U);
}

TEST_F(ReportDump, SelectsTheConfigurationBeforeAlsoWhenItIsNotTheFirst) {
    const auto reader = connectReader({.tagPlusConfigurations = 3});
    reader->activate(1);
    SendGetTagPlus();
    EXPECT_EQ(dump(), 1);
    EXPECT_EQ(GetActConfig(), 1);
    EXPECT_EQ(reader->activeConfiguration(), 1U);
}

TEST_F(ReportDump, OfATagPlusReaderWithOneConfigurationSelectsItAndLooksPlain) {
    connectPlus({.tagPlusConfigurations = 1});
    record().iActConfig = 3;
    EXPECT_EQ(dump(), 1);
    EXPECT_EQ(sent(), std::string("89 81 00 ") + kReports + "89 81 00 ");
    EXPECT_EQ(record().iActConfig, 0) << "with one configuration none is noted";
    const std::string text = textOf(kName);
    EXPECT_TRUE(text.starts_with("# 8 byte USB Feature Reports\n# Reader Type ZelTag\nTx: 80"));
}

TEST_F(ReportDump, OfElevenConfigurationsHasThemAll) {
    connectPlus({.tagPlusConfigurations = 11});
    EXPECT_EQ(dump(), 1);
    const std::string text = textOf(kName);
    EXPECT_NE(text.find("\n# Configuration 11\nTx: 80"), std::string::npos);
    EXPECT_EQ(text.find("# Configuration 12"), std::string::npos);
}

TEST_F(ReportDump, ReplacesAFile) {
    connectPlain();
    std::ofstream(kName) << std::string(9999, 'x');
    EXPECT_EQ(dump(), 1);
    EXPECT_EQ(textOf(kName), golden("plain"));
}

TEST_F(ReportDump, GrowsLineByLineWhileTheReaderAnswers) {
    const auto reader = connectPlain();
    std::string seen;
    reader->follow([&] {
        if (seen.empty()) // the first question for the card is report 8D
            seen = textOf(kName);
        return zel::sim::card26(26, 3512);
    });
    EXPECT_EQ(dump(), 1);
    const std::string text = golden("plain");
    const std::string answered = "Tx: 8D 00 00 00 00 00 00 00 \n";
    seen.resize(seen.rfind('\n') + 1); // what has begun of the next line may be there too
    EXPECT_EQ(seen, text.substr(0, text.find(answered) + answered.size()));
}

TEST_F(ReportDump, HasNoErrorWord) {
    connectPlain();
    record().lLastErr = 0x55;
    EXPECT_EQ(dump(), 1);
    failFor(5);
    EXPECT_EQ(dump(), 0);
    EXPECT_EQ(GetLastLibErr(), 0x55);
}

TEST_F(ReportDump, ToAPlaceThatCannotBeOpenedAsksNoReader) {
    connectTwo();
    for (const char* const name : {"missing/dump.txt", ".", ""})
        EXPECT_EQ(dump(name), 0) << name;
    EXPECT_EQ(dump(nullptr), 0);
    EXPECT_EQ(bus().takeTrace(), "");
    EXPECT_TRUE(std::filesystem::is_directory(folder_.path()));
}

TEST_F(ReportDump, OfNoProximityReaderOpensNoFile) {
    EXPECT_EQ(zeltag_DumpRawFeatureReports(kName), 0);
    connectPlain();
    record().iProduct = 2;
    EXPECT_EQ(zeltag_DumpRawFeatureReports(kName), 0);
    record().iProduct = 1;
    iActDev = 1;
    EXPECT_EQ(zeltag_DumpRawFeatureReports(kName), 0);
    iActDev = 0;
    EXPECT_FALSE(isThere());
    EXPECT_EQ(bus().takeTrace(), "");
}

TEST_F(ReportDump, OfAReportThatIsRefusedEndsThere) {
    connectPlain();
    failFor(3);
    EXPECT_EQ(dump(), 0);
    EXPECT_EQ(bus().takeTrace(), "> 80 00 00 00 00 00 00 00  block 0\n"
                                 "< 03 05 11 10 1A 00 28 01\n" +
                                     refused("> 81 00 00 00 00 00 00 00  block 1"));
    EXPECT_FALSE(isThere());
}

TEST_F(ReportDump, OfAReplyThatIsMissingEndsThere) {
    connectPlain();
    std::ofstream(kName) << "an earlier dump";
    bus().failExchange(0, 2);
    EXPECT_EQ(dump(), 0);
    EXPECT_EQ(bus().takeTrace(), "> 80 00 00 00 00 00 00 00  block 0\n! no answer\n");
    EXPECT_FALSE(isThere());
}

TEST_F(ReportDump, ThatFailsIsRemovedBeforeTheConfigurationIsRestored) {
    connectTwo();
    bus().failExchange(0, 4, 1 + kSendTries); // a reply, then the selection
    int pauses = 0;
    onPause([&](std::uint64_t) {
        EXPECT_FALSE(isThere());
        ++pauses;
    });
    EXPECT_EQ(dump(), 0);
    EXPECT_EQ(pauses, kSendTries);
}

TEST_F(ReportDumpOfTwo, LeavesNoFileAndTheConfigurationBeforeWhereverItFails) {
    const auto reader = connectTwo();
    for (int step = 1; step <= kSteps; ++step) {
        SCOPED_TRACE(step);
        const int before = bus().exchanges(0);
        bus().failExchange(0, step, isSend(step) ? kSendTries : 1);
        EXPECT_EQ(dump(), isSelection(step) ? 1 : 0);
        EXPECT_EQ(isThere(), isSelection(step));
        EXPECT_EQ(GetActConfig(), 0);
        const bool isRestoreLost = step == kSteps - 1;
        EXPECT_EQ(reader->activeConfiguration(), isRestoreLost ? 1U : 0U);
        EXPECT_GE(bus().exchanges(0) - before, step) << "the step was reached";
        std::filesystem::remove(kName);
        reader->activate(0);
    }
    bus().failExchange(0, kSteps + 1);
    EXPECT_EQ(dump(), 1);
    EXPECT_EQ(textOf(kName), golden("tagplus")) << "there is no further step";
}

TEST_F(ReportDumpOfTwo, IsOfTheConfigurationInUseWhenTheReaderDoesNotSelect) {
    connectTwo();
    failFor(33);
    EXPECT_EQ(dump(), 1);
    const std::string text = textOf(kName);
    const std::string first = "Tx: 84 00 00 00 00 00 00 00 \nRx: 00 02 01 00 00 00 00 00 \n";
    EXPECT_NE(text.find(first, text.find("# Configuration 2\n")), std::string::npos);
}

TEST_F(ReportDumpOfTwo, ThatTheDiskDoesNotTakeLeavesNoFileAndTheConfigurationBefore) {
    const auto reader = connectTwo();
    const std::size_t size = golden("tagplus").size();
    for (const std::size_t room : {std::size_t{0}, std::size_t{1}, std::size_t{60}, size / 2,
                                   size - 6, size - 5, size - 1}) {
        SCOPED_TRACE(room);
        int result = -1;
        {
            const FullDisk disk(room);
            result = dump();
        }
        EXPECT_EQ(result, 0);
        EXPECT_FALSE(isThere());
        EXPECT_EQ(GetActConfig(), 0);
        EXPECT_EQ(reader->activeConfiguration(), 0U);
    }
    const FullDisk disk(size);
    EXPECT_EQ(dump(), 1);
}

TEST_F(ReportDump, ThatFailsLeavesAPipeOfThatNameInPlace) {
    connectPlain();
    ASSERT_EQ(mkfifo(kName, 0600), 0);
    const int reader = open(kName, O_RDONLY | O_NONBLOCK);
    failFor(1);
    EXPECT_EQ(dump(), 0);
    EXPECT_TRUE(std::filesystem::is_fifo(kName));
    ::close(reader);
}

#ifdef __linux__
// By a link of the test's own, so that no fault of the dump can take the device away.
TEST_F(ReportDump, ToAFullDeviceEndsAtTheFirstReportAndLeavesItInPlace) {
    connectTwo();
    std::filesystem::create_symlink("/dev/full", kName);
    EXPECT_EQ(dump(), 0);
    EXPECT_EQ(sent(), "89 81 00 80 89 81 00 ");
    EXPECT_TRUE(isThere());
}
#endif
