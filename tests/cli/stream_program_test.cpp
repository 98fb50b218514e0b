// SPDX-License-Identifier: MIT
// The program on a byte stream in real time: a line that nobody is at, and the simulator's bridge
// program.
#include "tests/cli/pseudo_line.h"
#include "tests/cli/run_program.h"
#include "tests/support/loopback.h"

#include <csignal>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

namespace zel::test {

namespace {

using nlohmann::json;

std::string hostText(std::uint8_t lastByte) {
    std::string text;
    for (const int byte : loopbackHost(lastByte))
        text += (text.empty() ? "" : ".") + std::to_string(byte);
    return text;
}

// The bridge program on a free port of this test's own address.
class BridgeProcess {
public:
    explicit BridgeProcess(Arguments arguments = {}) : program_(ZELSIM_PROGRAM, all(arguments)) {
        place_ =
            hostText(1) + ":" +
            std::to_string(json::parse(program_.readLine()).at("listening").at("port").get<int>());
    }

    const std::string& place() const { return place_; }
    Ended run(Arguments arguments) const {
        arguments.insert(arguments.end(), {"--tcp", place_});
        return runZeltag(arguments);
    }

private:
    static Arguments all(Arguments& arguments) {
        arguments.insert(arguments.begin(), "bridge");
        arguments.insert(arguments.end(), {"--listen", hostText(1), "--port", "0", "--json"});
        return arguments;
    }

    RunningProgram program_;
    std::string place_;
};

TEST(LineWithoutReader, IsNoDeviceAndTellsTheSpeed) {
    const PseudoLine line;
    EXPECT_EQ(runZeltag({"list", "--port", line.path(), "--baud", "19200"}),
              (Ended{69, "",
                     "zeltag: no reader answers on " + line.path() +
                         " at 19200 baud; check its cable and power, and that no other program has "
                         "the line open; a reader set to another speed needs --baud\n"}));
}

TEST(BridgeAndProgram, CardIsRead) {
    const BridgeProcess bridge;
    const Ended read = bridge.run({"read", "--wait", "5"});
    EXPECT_EQ(read.exit, 0) << read.err;
    EXPECT_TRUE(read.out.starts_with("card   26 bits  0x02341B70  MAC:00:20:4A:00:00:07 "))
        << read.out;
}

TEST(BridgeAndProgram, AreFoundAndTheSearchEndsWithCtrlC) {
    const BridgeProcess bridge;
    RunningProgram search({"net", "find", hostText(1) + "-254"});
    EXPECT_TRUE(contains(search.readLine(), "MAC 00:20:4A:00:00:07  try: zeltag list --tcp "));
    search.send(SIGINT);
    EXPECT_EQ(search.finish(), (Ended{130, "", ""}));
}

// What the library makes of a read is the size of the last piece alone.
TEST(BridgeAndProgram, BytesInPiecesFailTheRead) {
    const BridgeProcess bridge({"--fault", "dribble"});
    const Ended read = bridge.run({"read"});
    EXPECT_EQ(read.exit, 1);
    EXPECT_TRUE(contains(read.err, " failed (library error 0x1000000); ")) << read.err;
}

// The other faults are those of TroubledBridge, where no time passes for real.
TEST(BridgeAndProgram, SilentReaderIsNoDevice) {
    const BridgeProcess bridge({"--fault", "silence"});
    const std::size_t colon = bridge.place().find(':');
    EXPECT_EQ(bridge.run({"list"}),
              (Ended{69, "",
                     "zeltag: " + bridge.place().substr(0, colon) + " port " +
                         bridge.place().substr(colon + 1) +
                         " takes the connection, but no reader answers behind it; check the cable "
                         "between the two, the speed that the bridge is set to, and that no other "
                         "program uses the bridge\n"}));
}

} // namespace

} // namespace zel::test
