// SPDX-License-Identifier: MIT
// The commands on a reader behind a network bridge, and those that look for bridges.
#include "cli/command/address.h"
#include "cli/main/program.h"
#include "sim/tag/stream.h"
#include "tests/cli/command_line_test.h"
#include "tests/support/bridge_test.h"

#include <csignal>
#include <cstdlib>
#include <nlohmann/json.hpp>

namespace zel::test {

namespace {

using cli::ExitCode;
using nlohmann::json;

std::string hostText(std::uint8_t lastByte) { return cli::asText(loopbackHost(lastByte)); }

class BridgeCommand : public BridgeTest {
protected:
    // A bridge with a reader.
    sim::Bridge& addReader(std::uint8_t lastByte) {
        reader_ = std::make_shared<sim::TagReader>();
        stream_ = std::make_shared<sim::TagStream>(reader_);
        return addBridge(lastByte, stream_);
    }

    static std::string placeOf(const sim::Bridge& bridge, std::uint8_t lastByte) {
        return hostText(lastByte) + ":" + std::to_string(bridge.port());
    }

    static CommandRun run(std::vector<const char*> arguments, const std::string& place) {
        arguments.insert(arguments.end(), {"--tcp", place.c_str()});
        return runCommand(arguments);
    }

    static CommandRun find(const std::string& hosts, std::vector<const char*> options = {}) {
        std::vector<const char*> arguments = {"net", "find", hosts.c_str()};
        arguments.insert(arguments.end(), options.begin(), options.end());
        return runCommand(arguments);
    }

    static std::string foundLine(std::uint8_t lastByte, const std::string& mac) {
        std::string host = hostText(lastByte);
        const std::string command = "zeltag list --tcp " + host;
        host.resize(15, ' ');
        return host + "  MAC " + mac + "  try: " + command + "\n";
    }

    std::shared_ptr<sim::TagReader> reader_;
    std::shared_ptr<sim::TagStream> stream_;
    int asked_ = 0;
};

constexpr char kMac[] = "00:20:4A:00:00:07";

TEST_F(BridgeCommand, ListTellsTheAddressAndTheMac) {
    const std::string place = placeOf(addReader(1), 1);
    reader_->settings().luid = 7;
    const CommandRun listed = run({"list", "--json"}, place);
    EXPECT_EQ(listed.exit, ExitCode::Done) << listed.err;
    const json device = json::parse(listed.out).at("devices").at(0);
    const std::string port = place.substr(place.find(':') + 1);
    EXPECT_EQ(device.at("name"), "MAC:00:20:4A:00:00:07 TCP/IP:" + hostText(1) + ";Port:" + port);
    EXPECT_EQ(device.at("address"), place);
    EXPECT_EQ(device.at("luid"), 7);
}

TEST_F(BridgeCommand, SettingsAreWrittenAndReadBack) {
    const std::string place = placeOf(addReader(1), 1);
    EXPECT_EQ(run({"config", "set", "iIDHoldTO=2000"}, place),
              (CommandRun{ExitCode::Done, "TimeParms.iIDHoldTO  1000 ms -> 2000 ms\n", ""}));
    EXPECT_EQ(run({"config", "get", "iIDHoldTO"}, place).out, "2000\n");
}

TEST_F(BridgeCommand, ShowsTheSettingsInJson) {
    const std::string place = placeOf(addReader(1), 1);
    const CommandRun shown = run({"config", "show", "--json"}, place);
    EXPECT_EQ(shown.exit, ExitCode::Done) << shown.err;
    EXPECT_EQ(json::parse(shown.out).at("records").at("TimeParms").at("iIDHoldTO").at("value"),
              1000);
}

TEST_F(BridgeCommand, ReadsACard) {
    const std::string place = placeOf(addReader(1), 1);
    reader_->present(sim::cardOf(0x02341B70, 26));
    EXPECT_TRUE(run({"read"}, place).out.starts_with("card   26 bits  0x02341B70  MAC:"));
}

TEST_F(BridgeCommand, ProgressTellsWhatIsAwaited) {
    const std::string place = placeOf(addReader(1), 1);
    const std::string port = place.substr(place.find(':') + 1);
    EXPECT_EQ(run({"ping", "--progress"}, place).err,
              "zeltag: connecting to " + hostText(1) + " port " + port +
                  "\nzeltag: asking for a reader behind " + place +
                  ", then for its configuration; it takes some seconds\n");
}

TEST_F(BridgeCommand, RefusedConnectionIsNoDevice) {
    sim::Bridge& bridge = addReader(1);
    bridge.refuse();
    EXPECT_EQ(run({"list"}, placeOf(bridge, 1)),
              (CommandRun{ExitCode::NoDevice, "",
                          "zeltag: " + hostText(1) + " port " + std::to_string(bridge.port()) +
                              " refuses connections; check the TCP port that the bridge is set "
                              "to, and that no other program has it\n"}));
}

struct Trouble {
    const char* name;
    void (*begin)(sim::Bridge& bridge, sim::TagStream& reader);
};

constexpr int kForGood = 1000;

template <sim::StreamFault kFault> void failForGood(sim::Bridge&, sim::TagStream& reader) {
    reader.fail(kFault, kForGood);
}

constexpr Trouble kTroubles[] = {
    {"Silence", [](sim::Bridge& bridge, auto&) { bridge.streamFaults().silent = true; }},
    {"Close", [](sim::Bridge& bridge, auto&) { bridge.streamFaults().endsAfter = 3; }},
    {"Reset",
     [](sim::Bridge& bridge, auto&) {
         bridge.streamFaults().endsAfter = 3;
         bridge.streamFaults().endsWithReset = true;
     }},
    {"WrongStatus", failForGood<sim::StreamFault::WrongStatus>},
    {"WrongProcedureByte", failForGood<sim::StreamFault::WrongProcedureByte>},
    {"ShortData", failForGood<sim::StreamFault::ShortData>},
    {"Garbage", failForGood<sim::StreamFault::Garbage>},
};

void PrintTo(const Trouble& trouble, std::ostream* stream) { *stream << trouble.name; }

class TroubledBridge : public BridgeCommand, public ::testing::WithParamInterface<Trouble> {};

TEST_P(TroubledBridge, HasNoReaderThatAnswers) {
    sim::Bridge& bridge = addReader(1);
    GetParam().begin(bridge, *stream_);
    EXPECT_EQ(run({"list"}, placeOf(bridge, 1)),
              (CommandRun{ExitCode::NoDevice, "",
                          "zeltag: " + hostText(1) + " port " + std::to_string(bridge.port()) +
                              " takes the connection, but no reader answers behind it; check the "
                              "cable between the two, the speed that the bridge is set to, and "
                              "that no other program uses the bridge\n"}));
}

INSTANTIATE_TEST_SUITE_P(Each, TroubledBridge, ::testing::ValuesIn(kTroubles),
                         [](const auto& trouble) { return trouble.param.name; });

TEST_F(BridgeCommand, UsbAloneOffersSomeCommandsAndNothingIsSent) {
    sim::Bridge& bridge = addReader(1);
    EXPECT_EQ(run({"dump", "dump.txt"}, placeOf(bridge, 1)),
              (CommandRun{ExitCode::Usage, "",
                          "zeltag: `zeltag dump` works over USB only; leave --tcp out\n"}));
    bridge.pump(0);
    EXPECT_FALSE(bridge.hasClient());
}

// A look at the file needs no reader.
TEST_F(BridgeCommand, FirmwareFileIsToldWithoutTheReader) {
    const CommandRun checked =
        run({"firmware", "check", ZELTAG_EXAMPLES "/firmware.hex"}, placeOf(addReader(1), 1));
    EXPECT_EQ(checked.exit, ExitCode::Usage);
    EXPECT_NE(checked.out.find("firmware  ZT7_0303_DEMO\n"), std::string::npos) << checked.out;
    EXPECT_EQ(checked.err,
              "zeltag: the check against a reader works over USB only; leave --tcp out\n");
}

TEST_F(BridgeCommand, BridgesAreFoundAmongSilentHosts) {
    addReader(2);
    addReader(4);
    EXPECT_EQ(find(hostText(1) + "-5"),
              (CommandRun{ExitCode::Done, foundLine(2, kMac) + foundLine(4, kMac), ""}));
}

TEST_F(BridgeCommand, BridgesAreFoundInOneObject) {
    addReader(2);
    const CommandRun found = find(hostText(1) + "-3", {"--json"});
    EXPECT_EQ(found.err, "");
    EXPECT_EQ(json::parse(found.out),
              (json{{"bridges", {{{"address", hostText(2)}, {"mac", kMac}}}}}));
}

TEST_F(BridgeCommand, HostsOutsideTheRangeAreNotAsked) {
    addReader(1);
    addReader(4);
    EXPECT_EQ(find(hostText(2) + "-3").exit, ExitCode::NoDevice);
}

TEST_F(BridgeCommand, OneHostMayBeAskedAlone) {
    addReader(7);
    EXPECT_EQ(find(hostText(7)), (CommandRun{ExitCode::Done, foundLine(7, kMac), ""}));
}

TEST_F(BridgeCommand, BridgeWithoutMacIsFoundAllTheSame) {
    addReader(7).probeFaults(sim::Probe::MacQuery).silent = true;
    EXPECT_EQ(find(hostText(7)).out, foundLine(7, "unknown          "));
    EXPECT_EQ(json::parse(find(hostText(7), {"--json"}).out).at("bridges").at(0).at("mac"),
              nullptr);
}

// The library waits for no answer to its second probe: one must be there behind the first one's.
TEST_F(BridgeCommand, BridgeThatAnswersTheSecondProbeAloneIsFound) {
    const sim::Ipv4Address host = loopbackHost(1);
    const sim::Socket bridge =
        sim::Socket::bound(sim::Socket::Kind::Datagram, host, sim::portOf(sim::Probe::Discovery));
    onPause([&](std::uint64_t) {
        std::uint8_t probe[16];
        sockaddr_in from = {};
        if (bridge.receiveFrom(probe, from) < 0)
            return;
        bridge.sendTo(std::span(probe, 1), from);
        bridge.sendTo(sim::replyTo(sim::Probe::MacQuery, host, {0x00, 0x20, 0x4A}), from);
    });
    EXPECT_EQ(find(hostText(1)).out, foundLine(1, "unknown          "));
    onPause({});
}

TEST_F(BridgeCommand, NoneFoundIsNoDevice) {
    const std::string line =
        "no bridge answers at " + hostText(1) +
        "-2; check that it is on and on this network; one that is set not to be found can be used "
        "all the same: `zeltag list --tcp ADDRESS`";
    EXPECT_EQ(find(hostText(1) + "-2"),
              (CommandRun{ExitCode::NoDevice, "", "zeltag: " + line + "\n"}));
    const CommandRun asJson = find(hostText(1) + "-2", {"--json"});
    EXPECT_EQ(asJson.exit, ExitCode::NoDevice);
    EXPECT_EQ(asJson.err, "zeltag: " + line + "\n");
    EXPECT_EQ(json::parse(asJson.out).at("bridges"), json::array());
    EXPECT_EQ(json::parse(asJson.out).at("error").at("code"), "no_device");
}

TEST_F(BridgeCommand, SearchTellsHowFarItIs) {
    EXPECT_EQ(find(hostText(9) + "-11", {"--progress"})
                  .err.substr(0, 200)
                  .find("zeltag: host " + hostText(9) + ", 1 of 3, about 6 s left\nzeltag: host " +
                        hostText(10) + ", 2 of 3, about 4 s left\nzeltag: host " + hostText(11) +
                        ", 3 of 3, about 2 s left\n"),
              0U);
}

// Two seconds a host, so that the time told is the time that passes.
TEST_F(BridgeCommand, SearchTakesTwoSecondsAHost) {
    takePausedMicroseconds();
    find(hostText(1) + "-3");
    EXPECT_EQ(takePausedMicroseconds(), 6'000'000U);
}

// In a process of its own: an interrupt stays one.
TEST_F(BridgeCommand, CtrlCEndsTheSearchWithWhatWasFound) {
    addReader(1);
    addReader(3);
    onPause([this](std::uint64_t us) {
        pumpBridges();
        if (us >= 2'000'000 && ++asked_ == 2)
            std::raise(SIGINT);
    });
    const std::string hosts = hostText(1) + "-9";
    const std::string expected =
        R"({"bridges":[{"address":")" + hostText(1) + R"(","mac":")" + kMac + "\"}]}\n";
    const char* const arguments[] = {"zeltag", "net", "find", hosts.c_str(), "--json"};
    EXPECT_EXIT(
        {
            ::testing::internal::CaptureStdout();
            const auto exit = cli::runProgram(5, arguments);
            std::exit(::testing::internal::GetCapturedStdout() == expected ? static_cast<int>(exit)
                                                                           : 1);
        },
        ::testing::ExitedWithCode(130), "^$");
}

// Which of the two it is depends on the machine's interfaces.
TEST_F(BridgeCommand, OwnAddressIsToldOrWhichInterfacesCount) {
    const std::int64_t number = GetMyIpAddress();
    const auto byte = [number](unsigned at) { return std::uint8_t(number >> 8U * at); };
    const std::string line = cli::asText(cli::Ipv4{byte(0), byte(1), byte(2), byte(3)}) + "\n";
    const CommandRun none{ExitCode::Failed, "",
                          "zeltag: this machine has no IPv4 address that the library looks at; it "
                          "looks at the interfaces eth0, wlan0, eth1, wlan1, eth2 and wlan2 alone; "
                          "`ip address` shows all of them\n"};
    EXPECT_EQ(runCommand({"net", "my-ip"}),
              number == 0 ? none : (CommandRun{ExitCode::Done, line, ""}));
}

TEST_F(BridgeCommand, MacOfABridgeIsTold) {
    addReader(1);
    const std::string host = hostText(1);
    EXPECT_EQ(runCommand({"net", "mac", host.c_str()}),
              (CommandRun{ExitCode::Done, std::string(kMac) + "\n", ""}));
    EXPECT_EQ(json::parse(runCommand({"net", "mac", host.c_str(), "--json"}).out),
              (json{{"address", host}, {"mac", kMac}}));
}

TEST_F(BridgeCommand, MacOfNobodyDidNotCome) {
    const std::string host = hostText(1);
    EXPECT_EQ(runCommand({"net", "mac", host.c_str()}),
              (CommandRun{ExitCode::NothingCame, "",
                          "zeltag: no bridge at " + host +
                              " tells its MAC address; check the address and the bridge's power; "
                              "`zeltag net find` looks for bridges\n"}));
}

} // namespace

} // namespace zel::test
