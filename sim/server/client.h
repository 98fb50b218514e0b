// SPDX-License-Identifier: MIT
// One connection of a simulator's socket. Its first line tells what it is.
#pragma once

#include "sim/link/descriptor.h"
#include "sim/server/control.h"
#include "sim/server/usb_face.h"

#include <memory>
#include <poll.h>
#include <string>

namespace zel::sim {

class Client {
public:
    Client(Descriptor socket, Control& control) : socket_(std::move(socket)), control_(control) {}

    pollfd waitsFor() const;

    // Serves what is ready. False: the connection is over, or is a line's from now on.
    bool serve();

private:
    enum class Kind { Unknown, Control, Usb };

    bool takeGreeting();
    bool greet();
    bool becomeLine(const std::string& path);
    bool takeInput();
    bool answerRequests();
    bool answerLine();
    bool answerFrame();
    bool deliver();

    Descriptor socket_;
    Control& control_;
    Kind kind_ = Kind::Unknown;
    UsbFace usb_;
    std::string input_; // until it tells its kind: of the first line
    std::string output_;
};

} // namespace zel::sim
