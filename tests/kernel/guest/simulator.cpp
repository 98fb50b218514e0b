// SPDX-License-Identifier: MIT
// Starts the program, and speaks to its socket.
#include "tests/kernel/guest/simulator.h"

#include <chrono>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace zel::test {

namespace {

namespace fs = std::filesystem;

constexpr char kSocket[] = "/tmp/zelsim.sock";
constexpr char kScenario[] = "/tmp/scenario.toml";
constexpr char kNodes[] = "/sys/class/hidraw";
constexpr int kPolls = 60'000;
constexpr std::chrono::milliseconds kPoll(1);

pid_t start(bool hasScenario) {
    const pid_t process = fork();
    if (process != 0)
        return process;
    const int quiet = open("/dev/null", O_WRONLY);
    dup2(quiet, STDOUT_FILENO);
    execl("/bin/zelsim", "zelsim", "run", "--uhid", "--socket", kSocket,
          hasScenario ? kScenario : nullptr, nullptr);
    std::_Exit(127);
}

int connectToSocket() {
    sockaddr_un address = {};
    address.sun_family = AF_UNIX;
    std::strcpy(address.sun_path, kSocket);
    for (int i = 0; i < kPolls; ++i) {
        const int fd = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
        if (connect(fd, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0)
            return fd;
        close(fd);
        std::this_thread::sleep_for(kPoll);
    }
    return -1;
}

void sendLine(int fd, const std::string& line) {
    const std::string text = line + '\n';
    ASSERT_EQ(send(fd, text.data(), text.size(), MSG_NOSIGNAL), static_cast<ssize_t>(text.size()));
}

std::string receiveLine(int fd) {
    std::string line;
    for (char next = 0; recv(fd, &next, 1, 0) == 1 && next != '\n';)
        line += next;
    return line;
}

} // namespace

int countNodes() {
    std::error_code none;
    int count = 0;
    for (const auto& entry : fs::directory_iterator(kNodes, none))
        count += fs::exists("/dev" / entry.path().filename(), none) ? 1 : 0;
    return count;
}

bool waitForNodes(int count) {
    for (int i = 0; i < kPolls; ++i) {
        if (countNodes() == count)
            return true;
        std::this_thread::sleep_for(kPoll);
    }
    return false;
}

Simulator::Simulator(const std::string& scenario, int nodes) {
    std::ofstream(kScenario) << scenario;
    process_ = start(!scenario.empty());
    socket_ = connectToSocket();
    sendLine(socket_, "control");
    EXPECT_TRUE(waitForNodes(nodes)) << countNodes() << " nodes";
}

Simulator::~Simulator() {
    ask(R"({"do":"stop"})");
    close(socket_);
    int status = -1;
    waitpid(process_, &status, 0);
    EXPECT_EQ(status, 0) << "of the simulator";
    EXPECT_TRUE(waitForNodes(0)) << countNodes() << " nodes";
}

std::string Simulator::ask(const std::string& request) {
    sendLine(socket_, request);
    return receiveLine(socket_);
}

void Simulator::unplug() {
    const int nodes = countNodes();
    ask(R"({"do":"unplug"})");
    EXPECT_TRUE(waitForNodes(nodes - 1));
}

void Simulator::plug() {
    const int nodes = countNodes();
    ask(R"({"do":"plug"})");
    EXPECT_TRUE(waitForNodes(nodes + 1));
}

} // namespace zel::test
