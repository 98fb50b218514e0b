// SPDX-License-Identifier: MIT
// zelsim-bridge: the demonstration reader behind a network bridge, for who develops against one.
#include "sim/bridge/arguments.h"
#include "sim/demo/reader.h"

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <exception>
#include <nlohmann/json.hpp>

namespace zel::sim {

namespace {

using Json = nlohmann::ordered_json;

constexpr int kFailed = 1;
constexpr int kWrongUsage = 64;
constexpr int kCannotWrite = 73;
constexpr int kNoPermission = 77;
constexpr int kTurn = 50;        // ms until a signal is noticed at the latest
constexpr int kDribbleTurn = 10; // ms from one byte to the next

volatile std::sig_atomic_t gEnded = 0;

void catchSignals() {
    struct sigaction action = {};
    action.sa_handler = [](int) { gEnded = 1; };
    for (const int signal : {SIGINT, SIGTERM})
        sigaction(signal, &action, nullptr);
    std::signal(SIGPIPE, SIG_IGN); // a closed pipe is noticed where the line is written
}

bool print(const std::string& line) {
    return std::fputs((line + '\n').c_str(), stdout) >= 0 && std::fflush(stdout) == 0;
}

const char* codeName(int exit) {
    switch (exit) {
    case kWrongUsage:
        return "usage";
    case kCannotWrite:
        return "cannot_write";
    case kNoPermission:
        return "no_permission";
    default:
        return "failed";
    }
}

struct Remark {
    std::string message;
    std::string hint; // what to do next

    std::string line() const { return message + "; " + hint; }
};

class Program {
public:
    explicit Program(const BridgeArguments& arguments) : arguments_(arguments) {}

    int run() {
        catchSignals();
        const int error = open();
        if (error != 0 && bridge_->failedAtDiscovery())
            return runWithoutDiscovery(error);
        return error == 0 ? serve() : fail(error);
    }

    int wrongUsage(const std::string& message) const {
        return fail(kWrongUsage, {message, "`zelsim-bridge --help` shows how"});
    }

private:
    // 0, or the errno of the port that can't be had.
    int open() {
        bridge_.emplace(reader_, arguments_.bridge);
        return bridge_->start() ? 0 : errno;
    }

    int runWithoutDiscovery(int error) {
        warn({"UDP " + portText() + ": " + std::strerror(error) + ": discovery isn't served",
              "end what holds the port, or leave discovery out with --no-discovery"});
        arguments_.bridge.servesDiscovery = arguments_.bridge.servesMacQuery = false;
        error = open();
        return error == 0 ? serve() : fail(error);
    }

    std::string portText() const {
        return "port " + std::to_string(bridge_->failedPort()) + " of " +
               toText(arguments_.bridge.address);
    }

    // The port couldn't be had.
    int fail(int error) const {
        const std::string message = portText() + ": " + std::strerror(error);
        switch (error) {
        case EADDRINUSE:
            return fail(kFailed, {message, "choose another one with --port, or --port 0 for any"});
        case EADDRNOTAVAIL:
            return fail(kFailed, {message, "give an address of this machine with --listen"});
        case EACCES:
            return fail(kNoPermission, {message, "choose one above 1023 with --port"});
        default:
            return fail(kFailed, {message, "give another --listen or --port"});
        }
    }

    int fail(int exit, const Remark& remark) const {
        std::fprintf(stderr, "zelsim-bridge: %s\n", remark.line().c_str());
        const Json error = {{"code", codeName(exit)},
                            {"exit", exit},
                            {"message", remark.message},
                            {"hint", remark.hint}};
        if (arguments_.json)
            print(toLine({{"error", error}}));
        return exit;
    }

    void warn(const Remark& remark) const {
        std::fprintf(stderr, "zelsim-bridge: warning: %s\n", remark.line().c_str());
        if (arguments_.json)
            print(toLine({{"warning", {{"message", remark.message}, {"hint", remark.hint}}}}));
    }

    static std::string toLine(const Json& object) {
        return object.dump(-1, ' ', false, Json::error_handler_t::replace);
    }

    int serve() {
        if (arguments_.fault)
            arguments_.fault->apply(*bridge_, *reader_);
        if (!print(arguments_.json ? listeningObject() : listeningLine()))
            return fail(kCannotWrite,
                        {std::string("the line that tells the port can't be written: ") +
                             std::strerror(errno),
                         "check where stdout goes"});
        const int turn = bridge_->streamFaults().dribble > 0 ? kDribbleTurn : kTurn;
        while (gEnded == 0)
            bridge_->pump(turn);
        return 0;
    }

    std::string commandToTry() const {
        return "zeltag list --tcp " + toText(arguments_.bridge.address) + ":" +
               std::to_string(bridge_->port());
    }

    std::string listeningLine() const {
        return "listening on " + toText(arguments_.bridge.address) + " port " +
               std::to_string(bridge_->port()) +
               (arguments_.bridge.servesDiscovery ? ", found by discovery"
                                                  : ", without discovery") +
               "; try: " + commandToTry();
    }

    std::string listeningObject() const {
        const Json listening = {{"address", toText(arguments_.bridge.address)},
                                {"port", bridge_->port()},
                                {"mac", toText(arguments_.bridge.mac)},
                                {"discovery", arguments_.bridge.servesDiscovery},
                                {"try", commandToTry()}};
        return toLine({{"listening", listening}});
    }

    BridgeArguments arguments_;
    std::shared_ptr<TagStream> reader_ = std::make_shared<TagStream>(demoReader());
    std::optional<Bridge> bridge_;
};

int runProgram(int argc, char** argv) {
    BridgeArguments arguments;
    const auto end = arguments.parse(argc, argv);
    if (!end)
        return Program(arguments).run();
    if (end->exit != 0)
        return Program(arguments).wrongUsage(end->text);
    std::fputs(end->text.c_str(), stdout);
    return std::fflush(stdout) == 0 ? 0 : kCannotWrite;
}

} // namespace

} // namespace zel::sim

int main(int argc, char** argv) {
    try {
        return zel::sim::runProgram(argc, argv);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "zelsim-bridge: stopped by an internal failure: %s\n", error.what());
        return zel::sim::kFailed;
    }
}
