// SPDX-License-Identifier: MIT
// What an observer sees of each transport.
#include "frame/zelTagTrace.h"

#include "sim/wire/byte_text.h"
#include "tests/support/bridge_test.h"
#include "tests/support/line_test.h"
#include "transport/tcp_socket.h"

#include <algorithm>
#include <utility>

namespace zel::test {

namespace {

constexpr const char* kKinds[] = {"open", "close", ">", "<"};
constexpr const char* kTransports[] = {"usb", "line", "tcp"};

// "usb a: > 8A 00" for each event, with its product where one is told and "fails" at a failure.
struct Seen {
    std::string text;
    std::vector<unsigned long long> times = {};

    static void take(const zelTraceEvent* event, void* context) {
        auto& seen = *static_cast<Seen*>(context);
        seen.text += std::string(kTransports[event->transport]) + ' ' + event->device + ": " +
                     kKinds[event->kind];
        if (event->size > 0)
            seen.text += ' ' + sim::hexOf({event->bytes, static_cast<std::size_t>(event->size)});
        if (event->product != 0)
            seen.text += " (" + std::to_string(event->product) + ")";
        seen.text += event->result == 1 ? "\n" : " fails\n";
        seen.times.insert(seen.times.end(), {event->began, event->ended});
    }
};

bool contains(const std::string& text, const std::string& part) {
    return text.find(part) != std::string::npos;
}

class Observer : public LibraryTest {
protected:
    ~Observer() override { zelTagAPI_observe(nullptr, nullptr); }
    void observe() { zelTagAPI_observe(Seen::take, &seen_); }
    std::string seen() { return std::exchange(seen_.text, {}); }
    Seen seen_;
};

TEST_F(Observer, SeesOpenExchangesAndCloseOfAUsbDevice) {
    plugReader("a")->settings().luid = 7;
    observe();
    USBConnect(nullptr);
    const std::string connected = seen();
    EXPECT_TRUE(connected.starts_with("usb a: open\n")) << connected;
    EXPECT_NE(connected.find("usb a: > 8A 00 00 00 00 00 00 00 (1)\n"
                             "usb a: < 07 00"),
              std::string::npos)
        << connected;
    USBDisconnect();
    EXPECT_EQ(seen(), "usb a: close\n");
}

TEST_F(Observer, SeesEachAttemptOfASend) {
    connectReader();
    bus().fail(0, sim::Fault::SendRefused, 2);
    observe();
    BeepNow(1, 0);
    const std::string sent = "usb reader: > 8C 03 01 00 00 00 00 00 (1)";
    const std::string all = seen();
    EXPECT_TRUE(all.starts_with(sent + " fails\n" + sent + " fails\n" + sent + "\n")) << all;
}

TEST_F(Observer, SeesAnAnswerThatDoesNotCome) {
    connectReader();
    bus().fail(0, sim::Fault::NoAnswer);
    observe();
    unsigned char id[32];
    GetActiveID(id, 8);
    EXPECT_TRUE(contains(seen(), "usb reader: < (1) fails\n"));
}

TEST_F(Observer, SeesADeviceThatCannotBeOpened) {
    plugReader({0x5A3E, 0x9D23, ""});
    observe();
    connect();
    EXPECT_EQ(seen(), "usb : open fails\n");
}

TEST_F(Observer, TellsTimesThatNeverGoBack) {
    plugReader("a");
    observe();
    connect();
    ASSERT_FALSE(seen_.times.empty());
    EXPECT_TRUE(std::is_sorted(seen_.times.begin(), seen_.times.end()));
    EXPECT_GT(seen_.times.front(), 0U);
}

TEST_F(Observer, SeesNothingOnceItIsGone) {
    connectReader();
    observe();
    zelTagAPI_observe(nullptr, nullptr);
    BeepNow(1, 0);
    EXPECT_EQ(seen(), "");
}

class LineObserver : public LineTest {
protected:
    ~LineObserver() override { zelTagAPI_observe(nullptr, nullptr); }
};

TEST_F(LineObserver, SeesTheFramesOfALine) {
    attachReader();
    SetComLinux(1, kPath);
    SetComSrchRange(1, 1);
    SetDevTypeSrch(1);
    Seen seen;
    zelTagAPI_observe(Seen::take, &seen);
    EXPECT_EQ(USBConnect(nullptr), 1);
    USBDisconnect();
    const std::string line = std::string("line ") + kPath + ": ";
    EXPECT_TRUE(contains(seen.text, line + "open\n")) << seen.text;
    EXPECT_TRUE(contains(seen.text, line + "> FA")) << seen.text;
    EXPECT_TRUE(contains(seen.text, "> 01 03 00 08 (1)\n" + line + "< 01 (1)\n")) << seen.text;
    EXPECT_TRUE(seen.text.ends_with(line + "close\n")) << seen.text;
}

class BridgeObserver : public BridgeTest {
protected:
    ~BridgeObserver() override { zelTagAPI_observe(nullptr, nullptr); }
};

TEST_F(BridgeObserver, SeesAConnectionByItsAddressAndItsBytes) {
    const auto stream = std::make_shared<sim::TagStream>(std::make_shared<sim::TagReader>());
    const std::uint16_t port = addBridge(1, stream).port();
    Seen seen;
    zelTagAPI_observe(Seen::take, &seen);
    ASSERT_EQ(socket_Open(a(), b(), c(), 1, port), 0);
    socket_Send("\xFA\x04\xED\xED\x04", 5);
    char procedure = 0;
    socket_Recv(&procedure, 1);
    socket_Close();
    const std::string name = "tcp " + std::to_string(a()) + "." + std::to_string(b()) + "." +
                             std::to_string(c()) + ".1:" + std::to_string(port) + ": ";
    EXPECT_EQ(seen.text,
              name + "open\n" + name + "> FA 04 ED ED 04\n" + name + "< 04\n" + name + "close\n");
}

TEST_F(BridgeObserver, SeesAConnectionThatIsRefused) {
    const std::uint16_t port =
        addBridge(1, std::make_shared<sim::TagStream>(std::make_shared<sim::TagReader>())).port();
    Seen seen;
    zelTagAPI_observe(Seen::take, &seen);
    EXPECT_NE(socket_Open(a(), b(), c(), 200, port), 0);
    EXPECT_TRUE(seen.text.ends_with(": open fails\n")) << seen.text;
}

} // namespace

} // namespace zel::test
