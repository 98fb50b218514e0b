// SPDX-License-Identifier: MIT
// `zeltag config` on readers that store, round or refuse, and on those of several configurations.
#include "tests/cli/command_line_test.h"

#include <nlohmann/json.hpp>

namespace zel::test {

namespace {

using cli::ExitCode;

class BusConfig : public CommandLineTest {
protected:
    static std::uint8_t stored(const sim::TagReader& reader, std::size_t configuration,
                               std::size_t block, std::size_t byte) {
        return reader.committed().configuration.at(configuration).block.at(block).at(byte);
    }
};

// 2000 ms are 40 steps of 50 ms in byte 2 of block 1; the flag is bit 4 of byte 1 of block 2.
TEST_F(BusConfig, SetStoresEachValueInTheReader) {
    const auto reader = plugReader("a");
    EXPECT_EQ(
        run({"config", "set", "iidholdto=2000", "bBeepID=1"}),
        (CommandRun{ExitCode::Done,
                    "TimeParms.iIDHoldTO  1000 ms -> 2000 ms\nCfgFlags2.bBeepID  0 -> 1\n", ""}));
    EXPECT_EQ(stored(*reader, 0, 1, 2), 40);
    EXPECT_EQ(stored(*reader, 0, 2, 1), 0x10);
    EXPECT_EQ(reader->violations(), 0) << reader->lastViolation();
}

TEST_F(BusConfig, OneRefusedValueLetsNothingBeSent) {
    const auto reader = plugReader("a");
    connectReplies();
    const int before = bus().exchanges(0);
    run({"config", "get", "bBeepID"});
    const int connect = bus().exchanges(0) - before;
    EXPECT_EQ(run({"config", "set", "bBeepID=1", "iIDHoldTO=12751"}),
              refused(ExitCode::Usage, "iIDHoldTO can't be 12751; it takes 0 to 12750 ms"));
    EXPECT_EQ(bus().exchanges(0) - before, 2 * connect);
}

TEST_F(BusConfig, RefusalNamesTheRangeOfTheWord) {
    plugReader("a");
    const auto line = [](const char* assignment) {
        return run({"config", "set", assignment, "--dry-run"}).err;
    };
    EXPECT_EQ(line("iLeadParityBitCnt=16"),
              "zeltag: iLeadParityBitCnt can't be 16; it takes 0 to 15\n");
    EXPECT_EQ(line("iIDBitCnt=0"), "zeltag: iIDBitCnt can't be 0; it takes 1 to 255\n");
    EXPECT_EQ(line("iTotalBitCnt=25"), "zeltag: iTotalBitCnt can't be 25; it takes 26 to 255\n");
    EXPECT_EQ(line("iELDelim=256"), "zeltag: iELDelim can't be 256; it takes 0 to 255\n");
    EXPECT_EQ(line("iFACDispLen=26"), "zeltag: iFACDispLen can't be 26; it takes 0 to 25\n");
    EXPECT_EQ(line("iTrailChrCnt=4"), "zeltag: iTrailChrCnt can't be 4; it takes 0 to 3\n");
    EXPECT_EQ(line("iUSBKeyRlsTm=1021"),
              "zeltag: iUSBKeyRlsTm can't be 1021; it takes 0 to 1020 ms\n");
    EXPECT_EQ(line("bBeepID=2"), "zeltag: bBeepID can't be 2; it takes 0 to 1\n");
    EXPECT_EQ(line("iIDHoldTO=-50"), "zeltag: iIDHoldTO can't be -50; it takes 0 to 12750 ms\n");
}

TEST_F(BusConfig, ReaderWithLongParityTakes142) {
    sim::TagOptions options;
    options.features = 0x80;
    plugReader({sim::TagReader::kVendor, sim::TagReader::kProduct, "a"}, options);
    EXPECT_EQ(run({"config", "set", "iTrailParityBitCnt=143"}),
              refused(ExitCode::Usage, "iTrailParityBitCnt can't be 143; it takes 0 to 142"));
}

TEST_F(BusConfig, NeedlessSetWritesNothing) {
    plugReader("a");
    bus().takeTrace();
    EXPECT_EQ(run({"config", "set", "iIDHoldTO=1000"}).out,
              "TimeParms.iIDHoldTO  1000 ms -> 1000 ms\nnothing was written: no value is new\n");
    EXPECT_EQ(bus().takeTrace().find("~ 1200 ms"), std::string::npos);
}

TEST_F(BusConfig, DryRunWritesNothing) {
    const auto reader = plugReader("a");
    EXPECT_EQ(run({"config", "set", "LEDCtrl.bVolatile=1", "iRedLEDState=1", "--dry-run"}).out,
              "LEDCtrl.bVolatile  0 -> 1\nLEDCtrl.iRedLEDState  0 -> 1\n"
              "nothing was written: --dry-run\n");
    EXPECT_FALSE(reader->isRedOn());
}

TEST_F(BusConfig, VolatileChangeActsAtOnceAndIsNotStored) {
    const auto reader = plugReader("a");
    EXPECT_EQ(run({"config", "set", "LEDCtrl.bVolatile=1", "iRedLEDState=1"}).exit, ExitCode::Done);
    EXPECT_TRUE(reader->isRedOn());
    EXPECT_EQ(stored(*reader, 0, 2, 0), 0);
}

TEST_F(BusConfig, FlagThatTravelsWithAnotherRecordReachesTheReader) {
    const auto reader = plugReader("a");
    EXPECT_EQ(run({"config", "set", "bNotBootDev=1"}).out, "CfgFlags3.bNotBootDev  0 -> 1\n");
    EXPECT_EQ(stored(*reader, 0, 2, 0), 0x10);
}

TEST_F(BusConfig, FailedWriteTellsTheErrorWord) {
    plugReader("a");
    connectReplies();
    const int before = bus().exchanges(0);
    run({"config", "get", "bBeepID"});
    bus().failExchange(0, bus().exchanges(0) - before + 1, 12);
    const CommandRun failed = run({"config", "set", "bBeepID=1"});
    EXPECT_EQ(failed.exit, ExitCode::Failed);
    EXPECT_EQ(failed.out, "");
    EXPECT_TRUE(failed.err.starts_with("zeltag: writing a failed")) << failed.err;
}

TEST_F(BusConfig, SetChangesTheNamedConfigurationAndLeavesTheReadersChoice) {
    const auto reader = plugPlus(3);
    EXPECT_EQ(run({"config", "set", "iIDHoldTO=2000", "--config", "2"}),
              (CommandRun{ExitCode::Done, "TimeParms.iIDHoldTO  1000 ms -> 2000 ms\n", ""}));
    EXPECT_EQ(stored(*reader, 0, 1, 2), 20);
    EXPECT_EQ(stored(*reader, 2, 1, 2), 40);
    EXPECT_EQ(reader->activeConfiguration(), 0U);
}

TEST_F(BusConfig, ReaderThatIsNotTheFirstHasAllItsConfigurationsToo) {
    plugReader("a");
    const auto reader = plugPlus(3);
    reader->configuration(1).block[1][2] = 2;
    EXPECT_EQ(run({"config", "get", "iIDHoldTO", "--config", "1", "--device", "1"}).out, "100\n");
}

TEST_F(BusConfig, ConfigurationBehindTheLastOneIsUnknown) {
    plugPlus(3);
    EXPECT_EQ(run({"config", "show", "--config", "3"}),
              refused(ExitCode::Usage, "plus has no configuration 3; it has 0 to 2"));
}

TEST_F(BusConfig, ResetReturnsToTheFactorysDefaults) {
    const auto reader = plugReader("a");
    reader->configuration(0).block[1][2] = 2;
    EXPECT_EQ(run({"config", "reset", "--yes"}).out, "a is back at the factory's defaults\n");
    EXPECT_EQ(stored(*reader, 0, 1, 2), 20);
}

TEST_F(BusConfig, ResetReturnsToTheUsersDefaults) {
    const auto reader = plugPlus(2);
    reader->configuration(1).block[1][2] = 2;
    EXPECT_EQ(run({"config", "reset", "--user", "--yes"}).out,
              "plus is back at the user's defaults\n");
    EXPECT_EQ(reader->configuration(1).block[1][2], 20);
}

} // namespace

} // namespace zel::test
