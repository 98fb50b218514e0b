// SPDX-License-Identifier: MIT
// Simulated serial lines: a device at the end of a path, behind the library's line seam.
//
// There is one set of lines a process, never destroyed, like the simulated USB bus, whose trace
// they share. Bytes move only when a line is pumped: in a test at each pause, or by a LineThread,
// beside which nothing may be traced.
#pragma once

#include "sim/wire/stream_device.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <mutex>
#include <poll.h>
#include <span>
#include <string>
#include <vector>

namespace zel::sim {

class Lines {
public:
    // Makes the lines those that the library opens; gives it the system's own back.
    static void install();
    static void uninstall();

    // A device at the end of a path from now on. Taking it away closes its line.
    void attach(const std::string& path, std::shared_ptr<StreamDevice> device);
    void detach(const std::string& path);
    void clear();

    // What the library calls: a descriptor, or -1 with ENOENT where no device is attached and
    // EACCES where opens are to fail.
    int open(const char* path);

    // 0 where the line can be opened, else the error of above.
    int whyNotOpen(const std::string& path);

    // Opens the line on a descriptor of the caller's, the device's end of a byte stream, which is
    // then the line's to close. False: the line can't be opened, as above; nothing is taken.
    bool openOn(const std::string& path, int descriptor);

    // Adds what pump() waits for, to wait for other things at once.
    void addTo(std::vector<pollfd>& ends) const;

    // Calls of open() until clear(), refused ones too; and the lines that are open.
    int opens() const;
    int openLines() const;

    // Moves what the host wrote to the devices, and their answers back. The halves of it, so that a
    // trace shows a pause between.
    void pump();
    void takeIn();
    void deliver();

    // Waits for bytes or ends of lines, for so long at most.
    void wait(int milliseconds) const;

    // From now on: so many bytes of an answer a pump (0: all); nothing reaches the device; opens
    // fail.
    void dribble(const std::string& path, std::size_t bytes);
    void silence(const std::string& path, bool isSilent = true);
    void failOpens(const std::string& path, bool fails = true);

    // The host reads the end of the line until it opens it anew; what it writes is lost.
    void hangUp(const std::string& path);

    // Bytes that nobody asked for, with the next answer.
    void say(const std::string& path, std::span<const std::uint8_t> bytes);

private:
    using Bytes = std::vector<std::uint8_t>;
    struct Line {
        std::string path;
        std::shared_ptr<StreamDevice> device;
        std::size_t dribble = 0;
        bool isSilent = false;
        bool opensFail = false;
    };
    struct Connection {
        std::string path;
        int fd;
        Bytes pending = {}; // for the host
        bool isHungUp = false;
    };

    Line* find(const std::string& path);
    Line& at(const std::string& path);
    static int whyNot(const Line* line);
    int connect(Line& line);
    void adopt(Line& line, int descriptor);
    void note(const std::string& path, const std::string& event);
    Bytes read(Connection& connection, bool& isClosed);
    bool takeIn(Connection& connection);
    void takeInAll();
    void deliver(Connection& connection);
    void close(const std::string& path);

    mutable std::mutex mutex_;
    std::vector<Line> lines_;
    std::vector<Connection> connections_;
    int opens_ = 0;
};

Lines& lines();

} // namespace zel::sim
