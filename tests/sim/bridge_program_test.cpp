// SPDX-License-Identifier: MIT
// The bridge program as a developer runs it: what it tells, a reader that answers, how it ends.
#include "sim/bridge/bridge.h"
#include "tests/cli/run_program.h"
#include "tests/sim/echo_stream.h"
#include "tests/support/host_socket.h"
#include "tests/support/loopback.h"

#include <cerrno>
#include <chrono>
#include <csignal>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>
#include <ostream>

using namespace zel::sim;

namespace zel::test {

namespace {

const Bytes kPresence = {0xFA, 0x04, 0xED, 0xED, 0x04};
const Bytes kPresent = {0x04, 0x07, 0x00, 0x42, 0x01, 0x90, 0x00}; // LUID 7, device 0x142
const Ipv4Address kHere = loopbackHost(1);
const std::string kAddress = std::to_string(kHere[0]) + "." + std::to_string(kHere[1]) + "." +
                             std::to_string(kHere[2]) + "." + std::to_string(kHere[3]);

// The program on a free port of this test's own address.
class RunningBridge {
public:
    explicit RunningBridge(Arguments arguments = {}) : program_(complete(arguments)) {
        listening_ = nlohmann::json::parse(program_.readLine()).at("listening");
    }

    std::uint16_t port() const { return listening_.at("port").get<std::uint16_t>(); }
    const nlohmann::json& listening() const { return listening_; }
    HostSocket connect() const { return HostSocket::connected(kHere, port()); }
    Bytes ask(HostSocket& host) const {
        host.send(kPresence);
        return host.receive(kPresent.size());
    }
    Ended end(int signal = SIGTERM) {
        program_.send(signal);
        return program_.finish();
    }

private:
    static Arguments complete(Arguments& arguments) {
        arguments.insert(arguments.begin(), "bridge");
        arguments.insert(arguments.end(), {"--listen", kAddress, "--port", "0", "--json"});
        return arguments;
    }

    RunningProgram program_;
    nlohmann::json listening_;
};

std::string portText(std::uint16_t port) {
    return "port " + std::to_string(port) + " of " + kAddress + ": Address already in use";
}

TEST(BridgeProgram, TellsWhereItListensAndWhatToTry) {
    RunningProgram program({"bridge", "--listen", kAddress, "--port", "0"});
    const std::string line = program.readLine();
    const std::string port = line.substr(line.rfind(':') + 1);
    EXPECT_EQ(line, "listening on " + kAddress + " port " + port +
                        ", found by discovery; try: zeltag list --tcp " + kAddress + ":" + port);
    program.send(SIGTERM);
    EXPECT_EQ(program.finish(), (Ended{0, "", ""}));
}

TEST(BridgeProgram, TellsTheSameAsJson) {
    const RunningBridge bridge({"--no-discovery"});
    const std::string command =
        "zeltag list --tcp " + kAddress + ":" + std::to_string(bridge.port());
    EXPECT_EQ(bridge.listening(), (nlohmann::json{{"address", kAddress},
                                                  {"port", bridge.port()},
                                                  {"mac", "00:20:4A:00:00:07"},
                                                  {"discovery", false},
                                                  {"try", command}}));
}

TEST(BridgeProgram, HasAReaderThatAnswersThePresenceProbe) {
    const RunningBridge bridge;
    HostSocket host = bridge.connect();
    EXPECT_EQ(bridge.ask(host), kPresent);
}

TEST(BridgeProgram, HasACardInTheFieldAtFirst) {
    const RunningBridge bridge;
    HostSocket host = bridge.connect();
    host.send({0xFA, 0x00, 0x00, 0x00, 0x0C});
    const Bytes answer = host.receive(15);
    ASSERT_EQ(answer.size(), 15U);
    EXPECT_EQ(answer[2], 26); // bits
    EXPECT_EQ(Bytes(answer.begin() + 5, answer.end()),
              (Bytes{0x70, 0x1B, 0x34, 0x02, 0, 0, 0, 0, 0x90, 0x00}));
}

TEST(BridgeProgram, AnswersTheMacQueryWithTheMacAddressOfItsOption) {
    const RunningBridge bridge({"--mac", "00:1d:4b:0A:B0:ff"});
    HostSocket host = HostSocket::datagrams();
    host.sendTo(kHere, portOf(Probe::MacQuery), {0, 0, 0, 0xF6});
    Ipv4Address sender = {};
    EXPECT_EQ(host.receiveFrom(sender),
              replyTo(Probe::MacQuery, kHere, {0x00, 0x1D, 0x4B, 0x0A, 0xB0, 0xFF}));
}

TEST(BridgeProgram, EndsAtOnceAndWellOnEitherSignal) {
    for (const int signal : {SIGINT, SIGTERM}) {
        SCOPED_TRACE(signal);
        RunningBridge bridge;
        HostSocket host = bridge.connect();
        bridge.ask(host);
        const auto start = std::chrono::steady_clock::now();
        EXPECT_EQ(bridge.end(signal), (Ended{0, "", ""}));
        EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(500));
    }
}

TEST(BridgeProgram, EndsWithAHintWhereItsPortIsTaken) {
    Bridge holder(std::make_shared<EchoStream>(), {.address = kHere});
    ASSERT_TRUE(holder.start());
    RunningProgram program(
        {"bridge", "--listen", kAddress, "--port", std::to_string(holder.port())});
    const std::string line = "zelsim: " + portText(holder.port()) +
                             "; choose another one with --port, or --port 0 for any\n";
    EXPECT_EQ(program.finish(), (Ended{1, "", line}));
}

TEST(BridgeProgram, EndsWithAHintWhereTheAddressIsNoneOfThisMachine) {
    RunningProgram program({"bridge", "--listen", "192.0.2.1", "--json"});
    const Ended run = program.finish();
    EXPECT_EQ(run.exit, 1);
    EXPECT_EQ(run.err, "zelsim: port 10001 of 192.0.2.1: Cannot assign requested address; "
                       "give an address of this machine with --listen\n");
    EXPECT_EQ(nlohmann::json::parse(run.out),
              nlohmann::json::parse(
                  R"({"error":{"code":"failed","exit":1,"message":"port 10001 of 192.0.2.1: )"
                  R"(Cannot assign requested address",)"
                  R"("hint":"give an address of this machine with --listen"}})"));
}

TEST(BridgeProgram, TellsWrongUsageAsJsonToo) {
    RunningProgram program({"bridge", "--port", "x", "--json"});
    const Ended run = program.finish();
    EXPECT_EQ(run.exit, 64);
    EXPECT_EQ(nlohmann::json::parse(run.out).at("error").at("code"), "usage");
}

TEST(BridgeProgram, EndsWhereNobodyCanReadItsPort) {
    RunningProgram program({"bridge", "--listen", kAddress, "--port", "0"}, Stdout::FullDisk);
    EXPECT_EQ(program.finish(), (Ended{73, "",
                                       "zelsim: the result can't be "
                                       "written: No space left on device; "
                                       "check where stdout goes\n"}));
}

TEST(BridgeProgram, HelpShowsItsOptionsAndAnExample) {
    RunningProgram program({"bridge", "--help"});
    const Ended run = program.finish();
    EXPECT_EQ(run.exit, 0);
    EXPECT_EQ(run.err, "");
    for (const char* part : {"--listen A.B.C.D", "--port N", "--mac XX:XX:XX:XX:XX:XX",
                             "--no-discovery", "--fault KIND", "--json", "\nExample:\n"})
        EXPECT_NE(run.out.find(part), std::string::npos) << part;
}

TEST(BridgeProgram, GoesOnWithoutDiscoveryWhereAPortOfItIsTaken) {
    Bridge holder(std::make_shared<EchoStream>(), {.address = kHere, .servesDiscovery = false});
    ASSERT_TRUE(holder.start());
    RunningProgram program({"bridge", "--listen", kAddress, "--port", "0"});
    EXPECT_NE(program.readLine().find(", without discovery; try: "), std::string::npos);
    program.send(SIGTERM);
    EXPECT_EQ(program.finish(),
              (Ended{0, "",
                     "zelsim: warning: UDP " + portText(30718) +
                         ": discovery isn't served; end what holds the port, or leave discovery "
                         "out with --no-discovery\n"}));
}

TEST(BridgeProgram, DribblesAByteATime) {
    const RunningBridge bridge({"--fault", "dribble"});
    HostSocket host = bridge.connect();
    const auto start = std::chrono::steady_clock::now();
    EXPECT_EQ(bridge.ask(host), kPresent);
    EXPECT_GT(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(40));
}

enum class Then { Nothing, Closed, Reset };

struct Faulty {
    std::string kind;
    Bytes answer;
    Then then;
};

void PrintTo(const Faulty& faulty, std::ostream* stream) { *stream << faulty.kind; }

class BridgeProgramFault : public ::testing::TestWithParam<Faulty> {};

TEST_P(BridgeProgramFault, ShowsInTheAnswer) {
    const RunningBridge bridge({"--fault", GetParam().kind});
    HostSocket host = bridge.connect();
    host.send(kPresence);
    EXPECT_EQ(host.receive(GetParam().answer.size()), GetParam().answer);
    const Then then = GetParam().then;
    EXPECT_EQ(host.hasSomething(then == Then::Nothing ? 20 : 1000), then != Then::Nothing);
    if (then == Then::Nothing)
        return;
    EXPECT_TRUE(host.isAtEnd());
    EXPECT_EQ(host.error(), then == Then::Reset ? ECONNRESET : 0);
}

INSTANTIATE_TEST_SUITE_P(
    Each, BridgeProgramFault,
    ::testing::Values(
        Faulty{"silence", {}, Then::Nothing}, Faulty{"close", {0x04, 0x07, 0x00}, Then::Closed},
        Faulty{"reset", {0x04, 0x07, 0x00}, Then::Reset},
        Faulty{"wrong-status", {0x04, 0x07, 0x00, 0x42, 0x01, 0x6F, 0x00}, Then::Nothing},
        Faulty{"wrong-procedure", {0x6F, 0x00}, Then::Nothing},
        Faulty{"short-answer", {0x04, 0x07, 0x00}, Then::Nothing}));

struct Misuse {
    Arguments arguments;
    std::string message;
};

void PrintTo(const Misuse& misuse, std::ostream* stream) {
    for (const std::string& argument : misuse.arguments)
        *stream << argument << ' ';
}

class BridgeProgramUsage : public ::testing::TestWithParam<Misuse> {};

TEST_P(BridgeProgramUsage, EndsWith64AndOneLine) {
    Arguments arguments = GetParam().arguments;
    arguments.insert(arguments.begin(), "bridge");
    RunningProgram program(arguments);
    const std::string line =
        "zelsim: " + GetParam().message + "; `zelsim bridge --help` shows how\n";
    EXPECT_EQ(program.finish(), (Ended{64, "", line}));
}

Misuse noAddress(const std::string& text) {
    return {{"--listen", text},
            "--listen: \"" + text + "\" is no host's address such as 127.0.0.1"};
}

Misuse noMac(const std::string& text) {
    return {{"--mac", text}, "--mac: \"" + text + "\" is no MAC address such as 00:20:4A:00:00:07"};
}

INSTANTIATE_TEST_SUITE_P(
    Wrong, BridgeProgramUsage,
    ::testing::Values(Misuse{{"--frob"}, "The following argument was not expected: --frob"},
                      Misuse{{"--port", "65536"}, "--port: Value 65536 not in range 0 to 65535"},
                      Misuse{{"--fault", "x"},
                             "--fault: \"x\" is none of dribble, silence, close, reset, no-answer, "
                             "short-answer, garbage, wrong-status, wrong-procedure"},
                      noAddress("1.2.3"), noAddress("1.2.3.4.5"), noAddress("1.2.3.256"),
                      noAddress("1,2.3.4"), noAddress("localhost"), noAddress("0.0.0.0"),
                      noMac("00:20:4A:00:00"), noMac("00:20:4A:00:00:100"),
                      noMac("00-20-4A-00-00-07")));

} // namespace

} // namespace zel::test
