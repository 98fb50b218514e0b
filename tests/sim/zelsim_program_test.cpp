// SPDX-License-Identifier: MIT
// zelsim as a developer runs it: an application that knows nothing of it, cards that are tapped
// from a script, a simulator that goes away.
#include "sim/bridge/address_text.h"
#include "tests/cli/run_program.h"
#include "tests/support/host_socket.h"
#include "tests/support/loopback.h"
#include "tests/support/temporary_folder.h"

#include <csignal>
#include <cstdlib>
#include <fstream>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

namespace zel::test {

namespace {

using nlohmann::json;

const std::string kScenario = "format = 1\n"
                              "[[card]]\nname = \"staff\"\nid = \"26:3512\"\n"
                              "[[device]]\nname = \"door\"\nkind = \"zelTag\"\nluid = 7\n"
                              "[[device]]\nname = \"office\"\nkind = \"TagPlus\"\n"
                              "at = \"/dev/ttySIM1\"\nluid = 9\n"
                              "[[device]]\nname = \"till\"\nkind = \"zelBand\"\n"
                              "at = \"/dev/ttySIM2\"\n";
const std::string kCard = "card   26 bits  0x02341B70  sim:door\n";

Ended run(const std::string& program, const Arguments& arguments) {
    return RunningProgram(program, arguments).finish();
}

Ended zelsim(const Arguments& arguments) { return run(ZELSIM_PROGRAM, arguments); }

// What a process of this program is preloaded with, as long as this lives.
class Variable {
public:
    Variable(const char* name, const std::string& value) : name_(name) {
        setenv(name, value.c_str(), 1);
    }
    ~Variable() { unsetenv(name_); }
    Variable(const Variable&) = delete;
    Variable& operator=(const Variable&) = delete;

private:
    const char* name_;
};

class ZelsimProgram : public ::testing::Test {
protected:
    ZelsimProgram() {
        std::ofstream("s.toml") << kScenario;
        unsetenv("ZELSIM_SOCKET");
    }

    // The command line on the devices of the scenario.
    static Ended zeltagBehind(Arguments arguments) {
        arguments.insert(arguments.begin(), {"run", "s.toml", "--", ZELTAG_PROGRAM});
        return zelsim(arguments);
    }

    TemporaryFolder folder_;
};

// A simulator that goes on, and this process's children as its applications.
class RunningZelsim : public ZelsimProgram {
protected:
    void start(const Arguments& more = {}) {
        Arguments arguments = {"run", "s.toml", "--socket", socket_, "--json"};
        arguments.insert(arguments.end(), more.begin(), more.end());
        server_ = std::make_unique<RunningProgram>(ZELSIM_PROGRAM, arguments);
        listening_ = json::parse(server_->readLine()).at("listening");
    }

    static Ended zeltag(const Arguments& arguments) {
        const Variable preload("LD_PRELOAD", ZELSIM_PRELOAD);
        return runZeltag(arguments);
    }

    static json stateOf(std::size_t device) {
        return json::parse(zelsim({"state", "--json"}).out).at("devices").at(device);
    }

    const std::string socket_ = folder_.path() / "zelsim.sock";
    const Variable variable_{"ZELSIM_SOCKET", socket_};
    std::unique_ptr<RunningProgram> server_;
    json listening_;
};

TEST_F(ZelsimProgram, RunsACommandOnTheDevicesOfAScenario) {
    EXPECT_EQ(zeltagBehind({"list"}), (Ended{0,
                                             "INDEX  NAME      PRODUCT   LUID  FIRMWARE  CONFIGS\n"
                                             "    0  sim:door  zelTag       7  -               1\n",
                                             ""}));
}

TEST_F(ZelsimProgram, EndsWithTheExitCodeOfItsCommand) {
    EXPECT_EQ(zelsim({"run", "--", "sh", "-c", "exit 5"}).exit, 5);
    EXPECT_EQ(zelsim({"run", "--", "sh", "-c", "kill -9 $$"}).exit, 128 + SIGKILL);
}

TEST_F(ZelsimProgram, HasTheDemonstrationWithoutAScenario) {
    EXPECT_EQ(zelsim({"run", "--", ZELTAG_PROGRAM, "read"}),
              (Ended{0, "card   26 bits  0x02341B70  sim:zeltag-0\n", ""}));
}

TEST_F(ZelsimProgram, HasAReaderOnASerialLine) {
    EXPECT_EQ(zeltagBehind({"list", "--port", "/dev/ttySIM1"}),
              (Ended{0,
                     "INDEX  NAME                PRODUCT   LUID  FIRMWARE  CONFIGS\n"
                     "    0  COM1: /dev/ttySIM1  zelTag       9  -               3\n",
                     ""}));
}

TEST_F(ZelsimProgram, HasNoDeviceOnALineOfNoScenario) {
    EXPECT_EQ(zeltagBehind({"list", "--port", "/dev/ttySIM9"}).exit, 69);
}

TEST_F(ZelsimProgram, LeavesNoSocketBehind) {
    const Variable place("TMPDIR", folder_.path());
    zeltagBehind({"list"});
    std::filesystem::remove("s.toml");
    EXPECT_TRUE(std::filesystem::is_empty(folder_.path()));
}

TEST_F(ZelsimProgram, StartsByItselfForAnApplicationWithAScenario) {
    std::ofstream("s.toml", std::ios::app) << "[[event]]\nat = 0\ndevice = \"door\"\n"
                                              "tap = \"staff\"\n";
    const Variable place("TMPDIR", folder_.path());
    const Variable scenario("ZELSIM_SCENARIO", "s.toml");
    const Variable preload("LD_PRELOAD", ZELSIM_PRELOAD);
    EXPECT_EQ(runZeltag({"read"}), (Ended{0, kCard, ""}));
}

TEST_F(ZelsimProgram, TellsAnApplicationWhatIsWrongWithItsScenario) {
    std::ofstream("s.toml") << "format = 3\n";
    const Variable scenario("ZELSIM_SCENARIO", "s.toml");
    const Variable preload("LD_PRELOAD", ZELSIM_PRELOAD);
    const Ended ended = runZeltag({"list"});
    EXPECT_EQ(ended.exit, 69);
    EXPECT_TRUE(ended.err.starts_with("zelsim: s.toml:1: format isn't a whole number"))
        << ended.err;
}

TEST_F(ZelsimProgram, ChecksAScenario) {
    EXPECT_EQ(zelsim({"check", "s.toml"}),
              (Ended{0, "s.toml is right; devices 3, cards 1, events 0\n", ""}));
    std::ofstream("s.toml") << "format = 1\nx = 2\n";
    EXPECT_EQ(zelsim({"check", "s.toml"}),
              (Ended{65, "",
                     "zelsim: s.toml:2: a scenario has no key x; write one of format, repeat, "
                     "device, card, event\n"}));
    EXPECT_EQ(zelsim({"check", "missing.toml"}).exit, 66);
}

TEST_F(ZelsimProgram, RunsTheExample) {
    EXPECT_EQ(zelsim({"run", ZELSIM_EXAMPLE, "--", ZELTAG_PROGRAM, "list"}),
              (Ended{0,
                     "INDEX  NAME      PRODUCT   LUID  FIRMWARE  CONFIGS\n"
                     "    0  sim:door  zelTag       7  3.2             1\n",
                     ""}));
}

TEST_F(ZelsimProgram, SaysWhereNoSimulatorListens) {
    EXPECT_EQ(zelsim({"tap", "1:1", "--socket", "no.sock"}),
              (Ended{69, "",
                     "zelsim: no simulator listens at no.sock; start one with `zelsim run`, or "
                     "name its socket with --socket\n"}));
}

TEST_F(ZelsimProgram, SaysWhatCannotBeRun) {
    const Ended ended = zelsim({"run", "--", "./missing"});
    EXPECT_EQ(ended.exit, 66);
    EXPECT_EQ(ended.err, "zelsim: ./missing: No such file or directory; name a program that can be "
                         "run behind --\n");
}

TEST_F(RunningZelsim, ReadsACardThatIsTapped) {
    start();
    EXPECT_EQ(zeltag({"read"}).exit, 2);
    EXPECT_EQ(zelsim({"tap", "staff", "--device", "door"}), (Ended{0, "", ""}));
    EXPECT_EQ(zeltag({"read"}), (Ended{0, kCard, ""}));
    EXPECT_EQ(zelsim({"remove", "--device", "door"}).exit, 0);
    EXPECT_EQ(zeltag({"read"}).exit, 2);
}

TEST_F(RunningZelsim, KeepsItsStateFromOneApplicationToTheNext) {
    start();
    const Ended ended = zeltag({"config", "set", "iIDHoldTO=1500"});
    EXPECT_EQ(ended.exit, 0) << ended.err;
    EXPECT_EQ(zeltag({"config", "get", "iIDHoldTO"}).out, "1500\n");
    EXPECT_EQ(stateOf(0).at("settings").at("TimeParms").at("iIDHoldTO"), 1500);
}

TEST_F(RunningZelsim, ShowsBeepsAndWhatWentOverTheWire) {
    start();
    zelsim({"trace"});
    EXPECT_EQ(zeltag({"beep"}).exit, 0);
    EXPECT_EQ(stateOf(0).at("beeps"), 1);
    const std::string trace = zelsim({"trace"}).out;
    EXPECT_TRUE(trace.starts_with("open sim:door\n")) << trace;
    EXPECT_TRUE(trace.ends_with("close sim:door\n")) << trace;
    EXPECT_EQ(zelsim({"trace"}).out, "");
}

TEST_F(RunningZelsim, PullsAndPushesAPlug) {
    start();
    zelsim({"unplug", "--device", "door"});
    EXPECT_EQ(zeltag({"list"}).exit, 69);
    zelsim({"plug", "--device", "door"});
    EXPECT_EQ(zeltag({"list"}).exit, 0);
}

TEST_F(RunningZelsim, FailsOnDemand) {
    start();
    zelsim({"fail", "open", "--device", "door"});
    EXPECT_EQ(zeltag({"list"}).exit, 69);
    zelsim({"fail", "none", "--device", "door"});
    EXPECT_EQ(zeltag({"list"}).exit, 0);
}

TEST_F(RunningZelsim, HasABridgeBeforeItsReader) {
    start({"--bridge", sim::toText(loopbackHost(1)) + ":0"});
    const auto port = listening_.at("bridge").at("port").get<std::uint16_t>();
    HostSocket host = HostSocket::connected(loopbackHost(1), port);
    host.send({0xFA, 0x04, 0xED, 0xED, 0x04});
    EXPECT_EQ(host.receive(7), (std::vector<std::uint8_t>{0x04, 7, 0, 0x42, 0x01, 0x90, 0x00}))
        << "present, LUID 7";
}

TEST_F(RunningZelsim, HasABridgeAtTheUsualPortOfAnAddress) {
    const std::string address = sim::toText(loopbackHost(1));
    start({"--bridge", address});
    EXPECT_EQ(listening_.at("bridge").at("address"), address);
    EXPECT_EQ(listening_.at("bridge").at("port"), 10001);
}

TEST_F(ZelsimProgram, RefusesABridgeThatIsNoPlace) {
    const Ended ended = zelsim({"run", "--bridge", "127.0.0.300"});
    EXPECT_EQ(ended.exit, 64);
    EXPECT_EQ(ended.err, "zelsim: --bridge: \"127.0.0.300\" is no address such as 127.0.0.2 or "
                         "127.0.0.2:10001, and no port; `zelsim run --help` shows how\n");
}

TEST_F(RunningZelsim, ShowsSettingsAsTextOnlyOnDemand) {
    start();
    EXPECT_EQ(zelsim({"state"}).out.find("iIDHoldTO"), std::string::npos);
    EXPECT_NE(zelsim({"state", "--settings"}).out.find("\n  TimeParms.iIDHoldTO 1000\n"),
              std::string::npos);
}

TEST_F(RunningZelsim, SaysWhichDevicesMayBeMeant) {
    start();
    const Ended ended = zelsim({"tap", "staff", "--json"});
    EXPECT_EQ(ended.exit, 64);
    EXPECT_EQ(json::parse(ended.out).at("error"),
              (json{{"code", "usage"},
                    {"exit", 64},
                    {"message", "several devices may be meant"},
                    {"hint", "name one of these: door, office"}}));
    EXPECT_EQ(ended.err, "zelsim: several devices may be meant; name one of these: door, office\n");
}

TEST_F(RunningZelsim, IsStoppedByACommand) {
    start();
    EXPECT_EQ(zelsim({"stop", "--json"}), (Ended{0, "{\"done\":\"stop\"}\n", ""}));
    EXPECT_EQ(server_->finish().exit, 0);
    EXPECT_FALSE(std::filesystem::exists(socket_));
}

TEST_F(ZelsimProgram, ThatIsStoppedEndsItsCommand) {
    const Ended ended =
        zelsim({"run", "--", "sh", "-c", std::string(ZELSIM_PROGRAM) + " stop; exec sleep 60"});
    EXPECT_EQ(ended.exit, 128 + SIGTERM);
}

TEST_F(RunningZelsim, LeavesASimulatorThatRunsAlone) {
    start();
    EXPECT_EQ(zelsim({"run", "--socket", socket_}),
              (Ended{1, "",
                     "zelsim: a simulator listens at " + socket_ +
                         " already; end it with `zelsim stop`, or give this one another "
                         "--socket\n"}));
    EXPECT_EQ(zelsim({"state"}).exit, 0);
}

TEST_F(RunningZelsim, TakesThePlaceOfOneThatWasKilled) {
    start();
    server_->send(SIGKILL);
    server_->finish();
    EXPECT_TRUE(std::filesystem::exists(socket_));
    start();
    EXPECT_EQ(zeltag({"list"}).exit, 0);
}

// An application that watches in real time loses its reader cleanly.
TEST_F(RunningZelsim, ThatIsKilledIsADeviceThatWasUnplugged) {
    start();
    zelsim({"tap", "staff", "--device", "door"});
    const Variable preload("LD_PRELOAD", ZELSIM_PRELOAD);
    RunningProgram watch({"read", "--watch", "--json"});
    EXPECT_NE(watch.readLine().find("02341B70"), std::string::npos);
    server_->send(SIGKILL);
    server_->finish();
    EXPECT_GT(watch.finish().exit, 0) << "an exit code, not a signal";
}

TEST_F(RunningZelsim, ThatIsGoneIsNoDeviceAndTheReasonIsToldOnce) {
    const Ended ended = zeltag({"list"});
    EXPECT_EQ(ended.exit, 69);
    const std::string reason = "libzelsim: no simulator listens at " + socket_;
    EXPECT_NE(ended.err.find(reason), std::string::npos);
    EXPECT_EQ(ended.err.find(reason), ended.err.rfind(reason));
}

TEST_F(RunningZelsim, IsAllThatTheDoctorLooksAt) {
    start();
    const Ended ended = zeltag({"doctor"});
    EXPECT_EQ(ended.exit, 0);
    EXPECT_NE(ended.out.find("a simulated reader needs neither a driver nor permission"),
              std::string::npos);
}

TEST_F(ZelsimProgram, NamesACommandThatItHasNot) {
    EXPECT_EQ(zelsim({"frobnicate"}),
              (Ended{64, "", "zelsim: unknown command frobnicate; `zelsim --help` shows how\n"}));
}

TEST_F(ZelsimProgram, TellsItsVersion) {
    const Ended ended = zelsim({"--version"});
    EXPECT_EQ(ended.exit, 0);
    EXPECT_TRUE(ended.out.starts_with("zelsim 7.")) << ended.out;
}

TEST_F(ZelsimProgram, RefusesToRunNothing) {
    EXPECT_EQ(zelsim({"run", "--"}),
              (Ended{64, "", "zelsim: no command stands behind --; name one, or leave -- out\n"}));
}

} // namespace

} // namespace zel::test
