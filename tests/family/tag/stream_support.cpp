// SPDX-License-Identifier: MIT
// The fixture's line and its TCP connection, which is a pair of sockets.
#include "sim/wire/byte_text.h"
#include "tests/family/tag/stream_test.h"
#include "transport/port.h"
#include "transport/port_objects.h"
#include "transport/tcp_socket.h"

#include <algorithm>
#include <fcntl.h>
#include <sstream>
#include <sys/socket.h>
#include <unistd.h>
#include <utility>

namespace zel::test {

namespace {

constexpr std::uint8_t kClass = 0xFA;

std::string timesOf(const std::string& line, int count) {
    return line + (count > 1 ? " x " + std::to_string(count) : "") + '\n';
}

std::string folded(const std::string& trace, bool pausesOnly) {
    std::istringstream lines(trace);
    std::string text;
    std::string last;
    int count = 0;
    for (std::string line; std::getline(lines, line);) {
        const bool isPause = line[0] == '~';
        if (pausesOnly && !isPause)
            continue;
        if (count > 0 && !(isPause && line == last))
            text += timesOf(std::exchange(last, {}), std::exchange(count, 0));
        last = line;
        ++count;
    }
    return count > 0 ? text + timesOf(last, count) : text;
}

std::string frameOf(const std::string& header) { return "> FA\n~ 50 ms\n> " + header + "\n"; }

std::string answerIn(const std::string& answer) {
    return "~ 5 ms\n" + (answer.empty() ? "" : "< " + answer + "\n");
}

} // namespace

void Script::answer(const std::string& pairs) {
    std::istringstream text(pairs);
    auto& answer = answers_.emplace_back();
    for (unsigned byte = 0; text >> std::hex >> byte;)
        answer.push_back(static_cast<std::uint8_t>(byte));
}

std::vector<std::uint8_t> Script::receive(std::span<const std::uint8_t> bytes) {
    if ((bytes.size() == 1 && bytes[0] == kClass) || answers_.empty())
        return {};
    const auto answer = answers_.front();
    answers_.pop_front();
    return answer;
}

StreamTest::~StreamTest() {
    USBDisconnect();
    enhanceSecurityFlagCurrFWState = false;
    if (peer_ != -1)
        close(peer_);
}

void StreamTest::enterRecord() {
    iDevsFnd = 1;
    record().iProduct = ZELTAGAPI_ZELTAG;
    record().iDevType = 1;
    record().hDev = noHandle();
    lLastICSWErr = 0x1234;
}

void StreamTest::connectLine(std::shared_ptr<sim::StreamDevice> device) {
    lines().attach(kPath, std::move(device));
    EXPECT_EQ(SetComLinux(1, kPath), 1);
    enterRecord();
    EXPECT_TRUE(freshPort(record())->Connect());
    bus().takeTrace();
}

void StreamTest::connectTcp(std::shared_ptr<sim::StreamDevice> device) {
    int ends[2] = {-1, -1};
    if (peer_ != -1)
        close(peer_);
    pending_.clear();
    EXPECT_EQ(socketpair(AF_UNIX, SOCK_STREAM, 0, ends), 0);
    for (const int end : ends)
        fcntl(end, F_SETFL, O_NONBLOCK);
    peer_ = ends[1];
    tcpDevice_ = std::move(device);
    enterRecord();
    freshPort(record())->SetTcpIp(127, 0, 0, 1);
    replaceSocket(ends[0]);
    onPause([this](std::uint64_t us) { pumpTcp(us); });
    bus().takeTrace();
}

std::shared_ptr<Script> StreamTest::connectScript() {
    auto script = std::make_shared<Script>();
    connectLine(script);
    return script;
}

std::shared_ptr<sim::TagStream> StreamTest::connectSimulated(const sim::TagOptions& options) {
    auto stream = std::make_shared<sim::TagStream>(std::make_shared<sim::TagReader>(options));
    connectLine(stream);
    return stream;
}

void StreamTest::closeLine() { record().pPort->Disconnect(); }

void StreamTest::takeLineAway() { freePort(record()); }

// As with a line: what was written comes before the pause, the answer at its end.
void StreamTest::pumpTcp(std::uint64_t us) {
    std::uint8_t piece[512];
    if (const ssize_t count = read(peer_, piece, sizeof piece); count > 0) {
        const std::span bytes(piece, static_cast<std::size_t>(count));
        bus().note("> " + sim::chunkOf(bytes));
        const auto answer = tcpDevice_->receive(bytes);
        pending_.insert(pending_.end(), answer.begin(), answer.end());
    }
    bus().note("~ " + std::to_string(us / 1000) + " ms");
    const std::size_t most = dribble_ == 0 ? pending_.size() : std::min(dribble_, pending_.size());
    if (most == 0)
        return;
    EXPECT_EQ(write(peer_, pending_.data(), most), static_cast<ssize_t>(most));
    bus().note("< " + sim::chunkOf({pending_.data(), most}));
    pending_.erase(pending_.begin(), pending_.begin() + static_cast<std::ptrdiff_t>(most));
}

std::string StreamTest::told() { return folded(bus().takeTrace(), false); }

std::string StreamTest::pauses() { return folded(bus().takeTrace(), true); }

std::string reading(const std::string& header, const std::string& answer) {
    return frameOf(header) + answerIn(answer);
}

// A read polls a hundred times; the first one's first poll still sees the answer come.
std::string brokenReading(const std::string& header, const std::string& answer, int missing) {
    const std::string inVain = "~ 5 ms x " + std::to_string(100 * missing) + "\n";
    return frameOf(header) + (answer.empty() ? "" : answerIn(answer)) + inVain;
}

std::string partNumberCharacter(const std::string& index, const std::string& byte) {
    return reading("0C 01 " + index + " 00", "0C " + byte + " 00 00 00 00 00 00 00");
}

std::string writing(const std::string& header, const std::string& data) {
    return frameOf(header) + answerIn(header.substr(0, 2)) + "> " + data + "\n" + answerIn("90 00");
}

} // namespace zel::test
