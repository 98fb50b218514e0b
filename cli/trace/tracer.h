// SPDX-License-Identifier: MIT
// Writes down what goes over the wire, in lines that a person reads:
//     open reader
//     > 8F 00 00 00 00 00 00 00  identifier
//     < ** ** ** ** ** ** ** **
//     ~ 80 ms
//     close reader
#pragma once

#include "cli/command/output.h"
#include "cli/trace/decoder.h"
#include "frame/zelTagTrace.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace zel::cli {

class Tracer {
public:
    struct Form {
        bool json = false;
        bool showsSecrets = false;
    };
    using Sink = std::function<void(const std::string& line)>;

    // Observes the library as long as it lives.
    Tracer(Form form, Sink sink);
    ~Tracer();
    Tracer(const Tracer&) = delete;
    Tracer& operator=(const Tracer&) = delete;

    // Writes what is still under way; nothing is observed behind it.
    void finish();

    // Whether something was masked.
    bool hasMasked() const { return hasMasked_; }

private:
    struct Channel; // what goes to and from one device
    struct Line {
        const char* event; // in JSON
        const char* mark;
        std::string text;
        std::string name;
    };

    static void observe(const zelTraceEvent* event, void* context);
    void take(const zelTraceEvent& event);
    void exchange(Channel& channel, const zelTraceEvent& event);
    void exchangeReport(Channel& channel, const zelTraceEvent& event);
    void exchangePiece(Channel& channel, const zelTraceEvent& event);
    void writePieces(Channel& channel);
    void write(Channel& channel, const Line& line);
    void writeMessage(Channel& channel, bool isSent, const Message& message);
    void writeGapBefore(unsigned long long began);
    Channel& channelOf(const zelTraceEvent& event);

    Form form_;
    Sink sink_;
    std::vector<std::unique_ptr<Channel>> channels_;
    unsigned long long lastEnd_ = 0; // 0: nothing before
    bool hasMasked_ = false;
};

} // namespace zel::cli
