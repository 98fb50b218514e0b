// SPDX-License-Identifier: MIT
// The library on a UART whose line takes a byte when its speed allows it. At the other end is a
// simulated reader, or somebody who counts; a third UART says which.
#include "frame/zelTagAPI.h"

#include <array>
#include <cstdio>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sstream>
#include <termios.h>
#include <unistd.h>

namespace zel::test {

namespace {

constexpr char kLine[] = "/dev/ttyS1";
constexpr char kOrders[] = "/dev/ttyS2";
constexpr int kFrames = 200;
constexpr std::size_t kFrameSize = 24;
constexpr int kBits = 10; // of a byte, with start and stop

using Frame = std::array<unsigned char, kFrameSize>;

Frame frame(int number) {
    Frame made = {0xF0, static_cast<unsigned char>(number >> 8),
                  static_cast<unsigned char>(number)};
    for (std::size_t i = 3; i < made.size(); ++i)
        made[i] = static_cast<unsigned char>(0x80 + i - 3);
    return made;
}

int openRaw(const char* path, speed_t speed) {
    const int fd = open(path, O_RDWR | O_NOCTTY | O_CLOEXEC);
    termios settings = {};
    EXPECT_EQ(tcgetattr(fd, &settings), 0) << path;
    cfmakeraw(&settings);
    settings.c_cflag |= CLOCAL | CREAD;
    cfsetspeed(&settings, speed);
    EXPECT_EQ(tcsetattr(fd, TCSANOW, &settings), 0);
    return fd;
}

// What the other end is to do; it answers each order by a line.
std::string order(const std::string& text) {
    static const int fd = openRaw(kOrders, B115200);
    const std::string line = text + '\n';
    EXPECT_EQ(write(fd, line.data(), line.size()), static_cast<ssize_t>(line.size()));
    std::string answer;
    for (char next = 0; read(fd, &next, 1) == 1 && next != '\n';)
        answer += next;
    return answer;
}

struct Counted {
    long bytes = 0;
    long frames = 0;
    long milliseconds = 0;
};

Counted counted() {
    Counted result;
    std::istringstream(order("result")) >> result.bytes >> result.frames >> result.milliseconds;
    return result;
}

std::string outputOf(const std::string& command) {
    std::string output;
    FILE* const pipe = popen(command.c_str(), "r");
    for (int next; (next = fgetc(pipe)) != EOF;)
        output += static_cast<char>(next);
    pclose(pipe);
    return output;
}

class PacedLine : public ::testing::TestWithParam<int> {
protected:
    PacedLine() {
        EXPECT_EQ(order("speed " + std::to_string(GetParam())), "done");
        SetConnectProduct(1); // proximity readers alone
        SetComLinux(1, kLine);
        SetBaudRate(static_cast<unsigned>(GetParam()));
    }
    ~PacedLine() override { USBDisconnect(); }

    static speed_t speed() { return GetParam() == 9600 ? B9600 : B115200; }
    static long lineTime(long bytes) { return bytes * kBits * 1000 / GetParam(); }
};

TEST_P(PacedLine, CarriesAReadersCardAndSettings) {
    ASSERT_EQ(ComConnectPort(1, nullptr), 1);
    EXPECT_EQ(GetDevType(), 1);
    EXPECT_EQ(GetLUID(), 11);
    unsigned char id[32] = {};
    EXPECT_EQ(GetActiveID(id, 8), 26);
    EXPECT_EQ(id[0], 0x70);
    EXPECT_EQ(id[3], 0x02);
    sTimeParms times = {};
    ASSERT_EQ(GetTimeParms(&times), 1);
    times.iIDHoldTO = static_cast<std::int16_t>(times.iIDHoldTO + 500);
    EXPECT_EQ(SetTimeParms(&times), 1);
    EXPECT_EQ(WriteCfg(), 1);
    EXPECT_EQ(ReadCfg(), 1);
    sTimeParms back = {};
    EXPECT_EQ(GetTimeParms(&back), 1);
    EXPECT_EQ(back.iIDHoldTO, times.iIDHoldTO);
}

TEST_P(PacedLine, CarriesTheCommandLine) {
    EXPECT_EQ(outputOf("zeltag read --port /dev/ttyS1 --baud " + std::to_string(GetParam())),
              "card   26 bits  0x02341B70  COM1:\n");
}

TEST_P(PacedLine, LosesNothingOfTheLibrarysFrames) {
    ASSERT_EQ(ComConnectPort(1, nullptr), 1);
    EXPECT_EQ(order("count"), "done");
    for (int i = 0; i < kFrames; ++i)
        EXPECT_EQ(WriteSerialPort(frame(i).data(), kFrameSize), kFrameSize);
    const Counted result = counted();
    std::printf("%d baud: %ld bytes, %ld of %d frames whole, %ld ms; a line needs %ld ms\n",
                GetParam(), result.bytes, result.frames, kFrames, result.milliseconds,
                lineTime(result.bytes));
    EXPECT_EQ(result.bytes, kFrames * kFrameSize);
    EXPECT_EQ(result.frames, kFrames);
    EXPECT_GE(result.milliseconds, lineTime(result.bytes) * 98 / 100) << "no real line is faster";
}

// Were it otherwise, the test above would prove nothing.
TEST_P(PacedLine, LosesWhatIsDiscardedBeforeItIsDrained) {
    constexpr int kFew = 20;
    const int fd = openRaw(kLine, speed());
    EXPECT_EQ(order("count"), "done");
    for (int i = 0; i < kFew; ++i) {
        EXPECT_EQ(write(fd, frame(i).data(), kFrameSize), static_cast<ssize_t>(kFrameSize));
        EXPECT_EQ(tcflush(fd, TCOFLUSH), 0);
        EXPECT_EQ(tcdrain(fd), 0); // what the discard left, so that each frame meets an idle line
    }
    const Counted result = counted();
    std::printf("%d baud, discarded at once: %ld of %zu bytes, %ld of %d frames whole\n",
                GetParam(), result.bytes, kFew * kFrameSize, result.frames, kFew);
    EXPECT_LT(result.bytes, static_cast<long>(kFew * kFrameSize));
    EXPECT_LT(result.frames, kFew);
    close(fd);
}

INSTANTIATE_TEST_SUITE_P(At, PacedLine, ::testing::Values(9600, 115200));

} // namespace

} // namespace zel::test
