// SPDX-License-Identifier: MIT
// Names of hosts, and the connection that is tried before the library's.
#include "cli/network/bridge.h"

#include "sim/bridge/socket.h"
#include "tests/support/loopback.h"

#include <cerrno>
#include <gtest/gtest.h>

namespace zel::cli {

namespace {

using sim::Socket;
using std::chrono::milliseconds;

const Ipv4 kHere = test::loopbackHost(1);
constexpr milliseconds kLong{1'000};

std::string lineOf(const std::variant<Ipv4, Failure>& found) {
    const auto* const failure = std::get_if<Failure>(&found);
    return failure ? asLine(*failure) : asText(std::get<Ipv4>(found));
}

TEST(HostName, MayBeAnAddressOrAName) {
    EXPECT_EQ(lineOf(addressOf("127.0.0.1")), "127.0.0.1");
    EXPECT_EQ(lineOf(addressOf("localhost")), "127.0.0.1");
}

TEST(HostName, ThatNobodyKnowsIsNoDevice) {
    const auto found = addressOf("no.such.host.invalid");
    ASSERT_TRUE(std::holds_alternative<Failure>(found));
    const Failure& failure = std::get<Failure>(found);
    EXPECT_EQ(failure.exit, ExitCode::NoDevice);
    EXPECT_TRUE(failure.message.starts_with("the host no.such.host.invalid isn't known: "))
        << failure.message;
    EXPECT_EQ(failure.hint, "check its name, or give its address as 10.0.0.17");
}

TEST(HostName, OfAWholeNetworkIsWrongUsage) {
    const auto found = addressOf("10.0.0.0");
    EXPECT_EQ(lineOf(found), "10.0.0.0 stands for a whole network; give the address of one host; "
                             "`zeltag net find` looks for bridges");
    EXPECT_EQ(std::get<Failure>(found).exit, ExitCode::Usage);
}

// An address in another form than the dotted one stands in the message in both.
TEST(HostName, OfAWholeNetworkTellsTheAddressBehindTheName) {
    EXPECT_EQ(lineOf(addressOf("0x0A000000")),
              "0x0A000000, 10.0.0.0 stands for a whole network; give the address of one host; "
              "`zeltag net find` looks for bridges");
}

TEST(TriedConnection, IsTakenAndClosedAgain) {
    const Socket listener = Socket::bound(Socket::Kind::Stream, kHere, 0);
    ASSERT_TRUE(listener.listen());
    EXPECT_EQ(tryConnect(kHere, listener.port(), kLong), 0);
    const Socket client = listener.accept();
    std::uint8_t byte = 0;
    EXPECT_EQ(client.receive(std::span(&byte, 1)), 0);
}

TEST(TriedConnection, IsRefusedWhereNobodyListens) {
    const Socket bound = Socket::bound(Socket::Kind::Stream, kHere, 0);
    EXPECT_EQ(tryConnect(kHere, bound.port(), kLong), ECONNREFUSED);
}

// A host whose queue is full drops what comes.
TEST(TriedConnection, EndsWithItsTime) {
    const Socket listener = Socket::bound(Socket::Kind::Stream, kHere, 0);
    ASSERT_TRUE(listener.listen());
    int error = 0;
    for (int client = 0; client < 10'000 && error == 0; ++client)
        error = tryConnect(kHere, listener.port(), milliseconds(50));
    EXPECT_EQ(error, ETIMEDOUT);
}

TEST(FailedConnection, IsToldInWordsWithWhatToDo) {
    const Endpoint door{"door", 10001};
    EXPECT_EQ(asLine(explainConnect(door, ECONNREFUSED)),
              "door port 10001 refuses connections; check the TCP port that the bridge is set to, "
              "and that no other program has it");
    EXPECT_EQ(asLine(explainConnect(door, EHOSTUNREACH)),
              "door can't be reached: No route to host; check the address and this machine's "
              "network");
    EXPECT_EQ(asLine(explainConnect(door, ENETUNREACH)),
              "door can't be reached: Network is unreachable; check the address and this machine's "
              "network");
    EXPECT_EQ(asLine(explainConnect(door, ETIMEDOUT)),
              "nobody answers at door port 10001; check the address and the bridge's power; "
              "`zeltag net find` looks for bridges");
    EXPECT_EQ(asLine(explainConnect(door, EACCES)),
              "no connection to door port 10001: Permission denied; check the address and this "
              "machine's network");
    for (const int error : {ECONNREFUSED, EHOSTUNREACH, ENETUNREACH, ETIMEDOUT, EACCES})
        EXPECT_EQ(explainConnect(door, error).exit, ExitCode::NoDevice) << error;
}

} // namespace

} // namespace zel::cli
