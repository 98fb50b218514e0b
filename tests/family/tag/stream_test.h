// SPDX-License-Identifier: MIT
// A proximity reader on a byte stream in the table, at the end of a line or of a TCP connection.
#pragma once

#include "tests/support/line_test.h"

#include <deque>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace zel::test {

// Answers each piece of bytes with the next of its answers; a class byte by itself gets none.
class Script : public sim::StreamDevice {
public:
    void answer(const std::string& pairs);
    std::vector<std::uint8_t> receive(std::span<const std::uint8_t> bytes) override;

private:
    std::deque<std::vector<std::uint8_t>> answers_;
};

class StreamTest : public LineTest {
protected:
    StreamTest() { enhanceSecurityFlagCurrFWState = false; }
    ~StreamTest() override;

    static tsDevDat& record() { return DevDat[0]; }
    static tsTagCfg& config(int n = 0) { return DevDat[0].Cfg[n]; }

    // The one record of the table; the trace is empty and lLastICSWErr tells of an old exchange.
    static void connectLine(std::shared_ptr<sim::StreamDevice> device);
    void connectTcp(std::shared_ptr<sim::StreamDevice> device);

    // A script or a simulated reader at the end of the line.
    static std::shared_ptr<Script> connectScript();
    static std::shared_ptr<sim::TagStream> connectSimulated(const sim::TagOptions& options = {});

    // So many bytes a pause at most come from the TCP connection; 0: all.
    void dribbleTcp(std::size_t bytes) { dribble_ = bytes; }

    static void closeLine();
    static void takeLineAway();

    // The trace since the last call, and only its pauses; equal ones in a row stand as one, with
    // their number.
    static std::string told();
    static std::string pauses();

private:
    static void enterRecord();
    void pumpTcp(std::uint64_t us);

    std::shared_ptr<sim::StreamDevice> tcpDevice_;
    std::vector<std::uint8_t> pending_;
    std::size_t dribble_ = 0;
    int peer_ = -1;
};

// The part of a line's trace that is one command: its frame and its answer.
std::string reading(const std::string& header, const std::string& answer);

// The same of a command whose answer ends before `missing` more reads: each waits in vain.
std::string brokenReading(const std::string& header, const std::string& answer, int missing);

// The same of the question for one character of the part number.
std::string partNumberCharacter(const std::string& index, const std::string& byte);

// The same of a command that writes and is taken.
std::string writing(const std::string& header, const std::string& data);

} // namespace zel::test
