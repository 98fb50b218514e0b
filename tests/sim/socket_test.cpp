// SPDX-License-Identifier: MIT
// The simulator's socket: its path, its frames, and a line whose bytes nobody else takes.
#include "sim/link/endpoint.h"
#include "sim/link/frames.h"
#include "sim/scene/world.h"
#include "sim/server/usb_face.h"
#include "sim/wire/line.h"
#include "tests/support/temporary_folder.h"

#include <cerrno>
#include <fstream>
#include <gtest/gtest.h>
#include <sys/stat.h>

namespace zel::test {

namespace {

using namespace zel::sim;

class SimulatorSocket : public ::testing::Test {
protected:
    TemporaryFolder folder_;
    std::string path_ = "zelsim.sock";
};

TEST_F(SimulatorSocket, IsItsUsersAlone) {
    const Listener listener = Listener::at(path_);
    ASSERT_TRUE(listener.isOpen());
    struct stat file = {};
    ASSERT_EQ(stat(path_.c_str(), &file), 0);
    EXPECT_EQ(file.st_mode & 0777U, 0600U);
}

TEST_F(SimulatorSocket, GoesWithItsListener) {
    { const Listener listener = Listener::at(path_); }
    EXPECT_NE(access(path_.c_str(), F_OK), 0);
}

TEST_F(SimulatorSocket, TakesThePlaceOfOneThatWasLeftBehind) {
    {
        const Listener gone = Listener::at(path_);
        ASSERT_EQ(link(path_.c_str(), "kept"), 0);
    }
    ASSERT_EQ(rename("kept", path_.c_str()), 0);
    EXPECT_TRUE(Listener::at(path_).isOpen());
}

TEST_F(SimulatorSocket, LeavesAServerThatRunsAlone) {
    const Listener first = Listener::at(path_);
    const Listener second = Listener::at(path_);
    EXPECT_EQ(errno, EADDRINUSE);
    EXPECT_FALSE(second.isOpen());
    EXPECT_TRUE(connectTo(path_, "control").isOpen());
}

TEST_F(SimulatorSocket, LeavesAFileThatIsNoSocketAlone) {
    std::ofstream(path_) << "mine";
    EXPECT_FALSE(Listener::at(path_).isOpen());
    EXPECT_EQ(std::filesystem::file_size(path_), 4U);
}

TEST_F(SimulatorSocket, IsRefusedWhereItsPathIsTooLong) {
    EXPECT_FALSE(Listener::at(std::string(200, 'x')).isOpen());
    EXPECT_EQ(errno, ENAMETOOLONG);
}

TEST(Frame, HasItsSizeInFront) {
    EXPECT_EQ(FrameWriter(UsbRequest::Open).add32(0x01020304).take(),
              (std::vector<std::uint8_t>{5, 0, 0, 0, 'O', 4, 3, 2, 1}));
}

TEST(Frame, TellsNothingBehindItsEnd) {
    const std::uint8_t bytes[] = {1, 2};
    FrameReader reader(bytes);
    EXPECT_EQ(reader.take32(), 0U);
    EXPECT_FALSE(reader.wasWhole());
}

TEST(Frame, IsRefusedWhereItIsTooLong) {
    EXPECT_FALSE(frameSize(std::vector<std::uint8_t>{0, 0, 0, 1}));
    EXPECT_FALSE(frameSize(std::vector<std::uint8_t>{0, 0}));
    EXPECT_EQ(frameSize(std::vector<std::uint8_t>{0, 0, 1, 0}), kLargestFrame);
}

class BusOfAnotherProcess : public ::testing::Test {
protected:
    ~BusOfAnotherProcess() override { usbBus().clear(); }

    std::vector<std::uint8_t> ask(FrameWriter request) {
        const auto frame = request.take();
        return face_->answer(std::span(frame).subspan(kFrameHead)).value();
    }
    std::vector<std::uint8_t> open() { return ask(FrameWriter(UsbRequest::Open).add32(0)); }

    std::unique_ptr<World> world_ = World::demo();
    std::unique_ptr<UsbFace> face_ = std::make_unique<UsbFace>();
};

TEST_F(BusOfAnotherProcess, IsListedWithIdentities) {
    EXPECT_EQ(ask(FrameWriter(UsbRequest::List)),
              (std::vector<std::uint8_t>{8, 0, 0, 0, 0, 0, 0, 0, 0x3E, 0x5A, 0x23, 0x9D}));
}

TEST_F(BusOfAnotherProcess, OpensADeviceByItsPort) {
    EXPECT_EQ(open(), FrameWriter().add32(1).addText("sim:zeltag-0").take());
    EXPECT_EQ(ask(FrameWriter(UsbRequest::Open).add32(7)), FrameWriter().add32(0).take());
}

TEST_F(BusOfAnotherProcess, CarriesReports) {
    open();
    const std::uint8_t command[8] = {0x8F};
    EXPECT_EQ(ask(FrameWriter(UsbRequest::Set).add32(1).add8(0).addBytes(command)),
              FrameWriter().add8(1).take());
    EXPECT_EQ(ask(FrameWriter(UsbRequest::Get).add32(1).add8(0).add32(8)).size(), kFrameHead + 9);
}

TEST_F(BusOfAnotherProcess, RefusesHandlesThatWereNeverOpened) {
    for (const std::uint32_t handle : {0U, 1U, 0xFFFFFFFFU})
        EXPECT_EQ(ask(FrameWriter(UsbRequest::Get).add32(handle).add8(0).add32(8)),
                  FrameWriter().add8(0).take());
}

TEST_F(BusOfAnotherProcess, LosesItsHandlesWithTheConnection) {
    open();
    EXPECT_EQ(usbBus().openHandles(), 1);
    face_.reset();
    EXPECT_EQ(usbBus().openHandles(), 0);
}

TEST_F(BusOfAnotherProcess, AnswersNoOtherRequest) {
    EXPECT_FALSE(face_->answer({}));
    const std::uint8_t unknown[] = {'X'};
    EXPECT_FALSE(face_->answer(unknown));
}

} // namespace

} // namespace zel::test
