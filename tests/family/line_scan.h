// SPDX-License-Identifier: MIT
// Serial lines by their numbers, and what a scan of them did as text.
#pragma once

#include "tests/family/band/stripe_reader.h"
#include "tests/support/line_test.h"

#include <sstream>
#include <string>

namespace zel::test {

// A trace with equal lines in a row as one, followed by their number.
inline std::string folded(const std::string& trace) {
    std::istringstream lines(trace);
    std::string text;
    std::string line;
    for (bool more = static_cast<bool>(std::getline(lines, line)); more;) {
        const std::string first = line;
        int count = 1;
        while ((more = static_cast<bool>(std::getline(lines, line))) && line == first)
            ++count;
        text += first + (count > 1 ? " x " + std::to_string(count) : "") + '\n';
    }
    return text;
}

// The numbers of the lines that a trace shows opened, those that couldn't be opened too.
inline std::string openedIn(const std::string& trace) {
    std::istringstream lines(trace);
    std::string text;
    for (std::string line; std::getline(lines, line);)
        if (line.starts_with("open /dev/ttySIM"))
            text += (text.empty() ? "" : " ") + line.substr(16);
    return text;
}

// Lines 1 to 8 are "/dev/ttySIM1" and so on; nothing is attached.
class LineScan : public LineTest {
protected:
    LineScan() {
        lLastCnctErr = 0;
        for (unsigned short port = 1; port <= 8; ++port)
            SetComLinux(port, path(port).c_str());
    }
    ~LineScan() override {
        USBDisconnect();
        SetBaudRate(9600);
        baudrate = 9600;
        lLastCnctErr = 0;
    }

    static std::string path(int port) { return "/dev/ttySIM" + std::to_string(port); }

    static std::shared_ptr<sim::TagStream> attachTag(int port) { return attachReader(path(port)); }

    static std::shared_ptr<StripeLine> attachStripe(int port) {
        auto reader = std::make_shared<StripeLine>();
        lines().attach(path(port), reader);
        return reader;
    }

    // A line that opens and never answers.
    static void attachSilence(int port) {
        attachTag(port);
        lines().silence(path(port));
    }

    static std::string told() {
        lines().takeIn();
        return folded(bus().takeTrace());
    }

    static std::string opened() { return openedIn(bus().takeTrace()); }
};

} // namespace zel::test
