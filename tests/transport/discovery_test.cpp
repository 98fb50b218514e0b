// SPDX-License-Identifier: MIT
// The search for bridges and the question for a MAC address, on the loopback network.
#include "sim/bridge/socket.h"
#include "tests/sim/echo_stream.h"
#include "tests/support/bridge_test.h"
#include "tests/support/descriptors.h"
#include "tests/support/without_descriptors.h"
#include "transport/tcp_socket.h"

#include <algorithm>
#include <array>
#include <functional>
#include <initializer_list>
#include <poll.h>
#include <set>
#include <unistd.h>

namespace zel::test {

namespace {

using sim::Probe;
using Bytes = std::vector<std::uint8_t>;
using Mac = std::array<std::uint8_t, 6>;

constexpr Mac kDefaultMac = {0x00, 0x20, 0x4A, 0x00, 0x00, 0x00};
constexpr Mac kBridgeMac = {0x00, 0x20, 0x4A, 0x00, 0x00, 0x07};

std::string pauses(int count, int milliseconds) {
    std::string all;
    for (int i = 0; i < count; ++i)
        all += "~ " + std::to_string(milliseconds) + " ms\n";
    return all;
}

class Discovery : public BridgeTest {
protected:
    ~Discovery() override { socket_Close(); }

    static int find(int first, int last) { return socket_FindXport(a(), b(), c(), first, last); }
    sim::Bridge& bridgeAt(std::uint8_t host) {
        return addBridge(host, std::make_shared<EchoStream>());
    }
    // Instead of the bridges, this works while the library pauses.
    static void inPauses(std::function<void()> work) {
        onPause([work = std::move(work)](std::uint64_t us) {
            bus().note("~ " + std::to_string(us / 1000) + " ms");
            work();
        });
    }
};

// A host that answers the first probe by two datagrams of its own. The library takes the first one
// as the answer to that probe and finds the second one when it looks for the answer to its other.
class TalkingHost {
public:
    explicit TalkingHost(std::uint8_t host)
        : probes_(sim::Socket::bound(sim::Socket::Kind::Datagram, loopbackHost(host), 11000)) {
        EXPECT_TRUE(probes_.isOpen());
    }

    void answer(const sim::Ipv4Address& from, const Bytes& first, const Bytes& second) const {
        constexpr int kPatience = 1000; // ms
        constexpr int kDelivery = 2;
        pollfd end = {probes_.descriptor(), POLLIN, 0};
        EXPECT_EQ(poll(&end, 1, kPatience), 1);
        std::array<std::uint8_t, 64> probe;
        sockaddr_in library = {};
        EXPECT_EQ(probes_.receiveFrom(probe, library), 10);
        const auto mouth = sim::Socket::bound(sim::Socket::Kind::Datagram, from, 0);
        EXPECT_EQ(mouth.sendTo(first, library), std::ssize(first));
        EXPECT_EQ(mouth.sendTo(second, library), std::ssize(second));
        poll(nullptr, 0, kDelivery);
    }

private:
    sim::Socket probes_;
};

} // namespace

TEST_F(Discovery, FindsTheHostThatAnswersTheFirstProbe) {
    bridgeAt(6);
    EXPECT_EQ(find(5, 9), 6);
    EXPECT_EQ(bus().takeTrace(), pauses(2, 2000));
}

TEST_F(Discovery, FindsTheFirstOfSeveral) {
    bridgeAt(6);
    bridgeAt(7);
    EXPECT_EQ(find(1, 254), 6);
    EXPECT_EQ(find(7, 7), 7);
}

TEST_F(Discovery, PausesTwoSecondsForEachSilentHost) {
    EXPECT_EQ(find(1, 254), 0);
    EXPECT_EQ(bus().takeTrace(), pauses(254, 2000));
}

TEST_F(Discovery, AsksNobodyWhereTheLastHostComesBeforeTheFirst) {
    bridgeAt(5);
    EXPECT_EQ(find(6, 5), 0);
    EXPECT_EQ(bus().takeTrace(), "");
}

TEST_F(Discovery, DoesNotPauseForAHostThatCannotBeAsked) {
    EXPECT_EQ(socket_FindXport(255, 255, 255, 255, 255), 0);
    EXPECT_EQ(bus().takeTrace(), "");
}

TEST_F(Discovery, EndsAtHost0ThatAnswersThoughTheResultSaysNone) {
    bridgeAt(0);
    bridgeAt(1);
    EXPECT_EQ(find(0, 1), 0);
    EXPECT_EQ(bus().takeTrace(), pauses(1, 2000));
}

TEST_F(Discovery, IgnoresAFirstReplyThatNamesAnotherAddress) {
    sim::Bridge& bridge = bridgeAt(5);
    for (std::size_t at = 36; at < 40; ++at) {
        bridge.probeFaults(Probe::Discovery).bytes.clear();
        bridge.spoilReply(Probe::Discovery, at, 99);
        EXPECT_EQ(find(5, 5), 0) << at;
    }
}

TEST_F(Discovery, TakesAFirstReplyFromWhomeverItComes) {
    bridgeAt(5).probeFaults(Probe::Discovery).from = loopbackHost(9);
    EXPECT_EQ(find(5, 5), 5);
}

TEST_F(Discovery, IgnoresAFirstReplyThatIsCut) {
    bridgeAt(5).probeFaults(Probe::Discovery).size = 39;
    EXPECT_EQ(find(5, 5), 0);
}

TEST_F(Discovery, MissesAFirstReplyAfterThePause) {
    bridgeAt(5).probeFaults(Probe::Discovery).late = 1;
    EXPECT_EQ(find(5, 5), 0);
}

TEST_F(Discovery, FindsTheFirstByteOfTheAddressThatAnswersTheSecondProbe) {
    const TalkingHost host(5);
    const Bytes reply = replyTo(Probe::MacQuery, {}, kBridgeMac);
    inPauses([&] { host.answer(loopbackHost(5), {0}, reply); });
    EXPECT_EQ(find(5, 9), 127);
    EXPECT_EQ(bus().takeTrace(), pauses(1, 2000));
}

TEST_F(Discovery, IgnoresASecondReplyFromAnotherHost) {
    const TalkingHost host(5);
    const Bytes reply = replyTo(Probe::MacQuery, {}, kBridgeMac);
    for (std::size_t at = 1; at < 4; ++at) {
        sim::Ipv4Address other = loopbackHost(5);
        other[at] ^= 1;
        inPauses([&] { host.answer(other, {0}, reply); });
        EXPECT_EQ(find(5, 5), 0) << at;
    }
}

TEST_F(Discovery, IgnoresASecondReplyOfAnotherMaker) {
    const TalkingHost host(5);
    const Bytes reply = replyTo(Probe::MacQuery, {}, {0x00, 0x20, 0x4B, 1, 2, 3});
    inPauses([&] { host.answer(loopbackHost(5), {0}, reply); });
    EXPECT_EQ(find(5, 5), 0);
}

TEST_F(Discovery, DoesNotTakeTheReplyToOneProbeForThatToTheOther) {
    const TalkingHost host(5);
    const Bytes second = replyTo(Probe::MacQuery, {}, kBridgeMac);
    const Bytes first = replyTo(Probe::Discovery, loopbackHost(5), {});
    inPauses([&] { host.answer(loopbackHost(5), second, first); });
    EXPECT_EQ(find(5, 5), 0);
}

TEST_F(Discovery, DoesNotWaitForTheReplyToTheSecondProbe) {
    bridgeAt(5).probeFaults(Probe::Discovery).silent = true;
    EXPECT_EQ(find(5, 5), 0);
    EXPECT_EQ(bus().takeTrace(), pauses(1, 2000));
}

TEST_F(Discovery, ForgetsTheSocketOfATcpDevice) {
    const auto before = openDescriptors();
    const auto listener = sim::Socket::bound(sim::Socket::Kind::Stream, loopbackHost(5), 0);
    EXPECT_TRUE(listener.listen());
    EXPECT_EQ(socket_Open(a(), b(), c(), 5, listener.port()), 0);
    std::set<int> during = openDescriptors();
    EXPECT_EQ(find(5, 5), 0);
    EXPECT_FALSE(socket_IsOpen());
    EXPECT_EQ(openDescriptors(), during) << "the forgotten one stays, its own is closed";
    during.erase(listener.descriptor());
    for (const int fd : during)
        if (!before.contains(fd))
            close(fd);
}

TEST_F(Discovery, ClosesItsSocketWhenItFound) {
    bridgeAt(5);
    const auto before = openDescriptors();
    EXPECT_EQ(find(5, 5), 5);
    EXPECT_FALSE(socket_IsOpen());
    EXPECT_EQ(openDescriptors(), before);
}

TEST_F(Discovery, FindsNothingWithoutASocket) {
    replaceSocket(0);
    EXPECT_EQ(withoutDescriptors([] { return find(5, 5); }), 0);
    EXPECT_FALSE(socket_IsOpen()) << "what was open is forgotten all the same";
    EXPECT_EQ(bus().takeTrace(), "");
}

TEST_F(Discovery, IsTheExportedCall) {
    bridgeAt(5);
    EXPECT_EQ(FindXport(a(), b(), c(), 4, 6), 5);
    EXPECT_EQ(FindXport(a(), b(), c(), 6, 6), 0);
}

namespace {

class MacQuestion : public Discovery {
protected:
    int ask() {
        mac_.fill(0xEE);
        return socket_GetMACAddress(a(), b(), c(), 5, mac_.data());
    }
    Mac mac_;
};

} // namespace

TEST_F(MacQuestion, IsAnsweredByTheBridge) {
    bridgeAt(5);
    EXPECT_EQ(ask(), 1);
    EXPECT_EQ(mac_, kBridgeMac);
    EXPECT_EQ(bus().takeTrace(), pauses(2, 50));
}

TEST_F(MacQuestion, YieldsTheDefaultAfter10PollsOf50Ms) {
    EXPECT_EQ(ask(), 1);
    EXPECT_EQ(mac_, kDefaultMac);
    EXPECT_EQ(bus().takeTrace(), pauses(10, 50));
}

TEST_F(MacQuestion, WaitsForAnAnswerUpToTheTenthPoll) {
    sim::Bridge& bridge = bridgeAt(5);
    bridge.probeFaults(Probe::MacQuery).late = 8;
    EXPECT_EQ(ask(), 1);
    EXPECT_EQ(mac_, kBridgeMac);
    EXPECT_EQ(bus().takeTrace(), pauses(10, 50));
    bridge.probeFaults(Probe::MacQuery).late = 9;
    EXPECT_EQ(ask(), 1);
    EXPECT_EQ(mac_, kDefaultMac);
}

TEST_F(MacQuestion, TakesNoAnswerFromAnotherAddress) {
    sim::Bridge& bridge = bridgeAt(5);
    for (std::size_t at = 1; at < 4; ++at) {
        sim::Ipv4Address other = loopbackHost(5);
        other[at] ^= 2;
        bridge.probeFaults(Probe::MacQuery).from = other;
        EXPECT_EQ(ask(), 1);
        EXPECT_EQ(mac_, kDefaultMac) << at;
    }
}

TEST_F(MacQuestion, TakesTheAnswersOfBothMakersAlone) {
    sim::Bridge& bridge = bridgeAt(5);
    using Maker = std::pair<std::uint8_t, std::uint8_t>;
    for (const auto& [second, third] : {Maker(0x1D, 0x4B), Maker(0x20, 0x4A)}) {
        bridge.spoilReply(Probe::MacQuery, 25, second);
        bridge.spoilReply(Probe::MacQuery, 26, third);
        EXPECT_EQ(ask(), 1);
        EXPECT_EQ(mac_, (Mac{0, second, third, 0, 0, 7}));
    }
    bridge.spoilReply(Probe::MacQuery, 26, 0x4B);
    EXPECT_EQ(ask(), 1);
    EXPECT_EQ(mac_, kDefaultMac);
}

TEST_F(MacQuestion, GoesOnWhileByte24IsNotZero) {
    bridgeAt(5).spoilReply(Probe::MacQuery, 24, 1);
    EXPECT_EQ(ask(), 1);
    EXPECT_EQ(mac_, kDefaultMac);
    EXPECT_EQ(bus().takeTrace(), pauses(10, 50));
}

TEST_F(MacQuestion, LeavesTheOtherSocketsAlone) {
    bridgeAt(5);
    const auto before = openDescriptors();
    replaceSocket(0);
    EXPECT_EQ(ask(), 1);
    EXPECT_TRUE(socket_IsOpen());
    replaceSocket(-1);
    EXPECT_EQ(openDescriptors(), before);
}

TEST_F(MacQuestion, YieldsTheDefaultAtOnceForAHostThatCannotBeAsked) {
    EXPECT_EQ(socket_GetMACAddress(255, 255, 255, 255, mac_.data()), 1);
    EXPECT_EQ(mac_, kDefaultMac);
    EXPECT_EQ(bus().takeTrace(), "");
}

TEST_F(MacQuestion, FailsWithTheDefaultWithoutASocket) {
    Mac mac = {};
    EXPECT_EQ(
        withoutDescriptors([&] { return socket_GetMACAddress(a(), b(), c(), 5, mac.data()); }), 0);
    EXPECT_EQ(mac, kDefaultMac);
}

TEST_F(MacQuestion, FailsWithoutRoomForTheAnswer) {
    EXPECT_EQ(socket_GetMACAddress(a(), b(), c(), 5, nullptr), 0);
    EXPECT_EQ(bus().takeTrace(), "");
}

} // namespace zel::test
