// SPDX-License-Identifier: MIT
// The fixture with bridges: they work while the library pauses.
#include "tests/sim/echo_stream.h"
#include "tests/support/bridge_test.h"
#include "tests/support/host_socket.h"

#include <unistd.h>

namespace zel::test {

TEST_F(BridgeTest, HasItsBridgesWorkDuringAPause) {
    sim::Bridge& first = addBridge(5, std::make_shared<EchoStream>());
    sim::Bridge& second = addBridge(6, std::make_shared<EchoStream>(), first.port());
    HostSocket toFirst = HostSocket::connected({a(), b(), c(), 5}, first.port());
    HostSocket toSecond = HostSocket::connected({a(), b(), c(), 6}, second.port());
    toFirst.send({0x11});
    toSecond.send({0x22});
    usleep(20'000);
    EXPECT_EQ(toFirst.receiveSome(), Bytes{0xEE});
    EXPECT_EQ(toSecond.receiveSome(), Bytes{0xDD});
    EXPECT_EQ(bus().takeTrace(), "~ 20 ms\n");
}

TEST_F(BridgeTest, AnswersProbesDuringAPause) {
    addBridge(5, std::make_shared<EchoStream>());
    HostSocket host = HostSocket::datagrams();
    host.sendTo({a(), b(), c(), 5}, sim::portOf(sim::Probe::MacQuery), {0, 0, 0, 0xF6});
    usleep(50'000);
    ASSERT_TRUE(host.hasSomething());
    sim::Ipv4Address sender = {};
    EXPECT_EQ(host.receiveFrom(sender).size(), 30U);
    EXPECT_EQ(sender, (sim::Ipv4Address{a(), b(), c(), 5}));
}

} // namespace zel::test
