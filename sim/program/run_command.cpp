// SPDX-License-Identifier: MIT
// zelsim run: a scenario for other processes, until it is stopped or the command behind -- ends.
#include "sim/program/bridge_port.h"
#include "sim/program/child.h"
#include "sim/program/installed.h"
#include "sim/program/own_world.h"
#include "sim/program/report.h"
#include "sim/program/uhid_faces.h"
#include "sim/server/server.h"

#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <filesystem>

namespace zel::sim {

namespace {

constexpr int kSignals[] = {SIGINT, SIGTERM, SIGCHLD};

class Run {
public:
    Run(World& world, const Arguments& arguments)
        : world_(world), arguments_(arguments), signals_(kSignals), server_(world, signals_) {}

    ~Run() {
        listener_.reset();
        std::error_code ignored;
        if (!folder_.empty())
            std::filesystem::remove(folder_, ignored);
    }
    Run(const Run&) = delete;
    Run& operator=(const Run&) = delete;

    int run() {
        if (const auto trouble = prepare())
            return fail(*trouble, arguments_.json);
        if (arguments_.lifeline >= 0 && goesToBackground())
            return 0;
        world_.start();
        return arguments_.program.empty() ? serve() : serveProgram();
    }

private:
    Outcome prepare() {
        BridgePlace* const bridge =
            arguments_.wantsBridge ? world_.demandBridge() : world_.bridge();
        if (arguments_.wantsBridge && !bridge)
            return Trouble{Exit::Usage, "no device can be behind a bridge",
                           "leave --bridge out, or add a proximity reader to the scenario"};
        if (bridge)
            if (auto trouble = openBridge(*bridge, arguments_))
                return trouble;
        if (auto trouble = arguments_.wantsUhid ? addUhid() : Outcome())
            return trouble;
        return listen();
    }

    Outcome addUhid() {
        auto faces = makeUhidFaces(world_);
        if (const auto* const trouble = std::get_if<Trouble>(&faces))
            return *trouble;
        faces_ = std::move(std::get<std::vector<std::unique_ptr<Face>>>(faces));
        for (const auto& face : faces_)
            server_.add(*face);
        return {};
    }

    // A program's own simulator has a folder of its own.
    Outcome listen() {
        path_ = arguments_.socket.empty() ? socketPath() : arguments_.socket;
        if (arguments_.socket.empty() && !arguments_.program.empty()) {
            folder_ = newPrivateFolder();
            path_ = folder_ + "/zelsim.sock";
        }
        if (arguments_.lifeline >= 0)
            folder_ = std::filesystem::path(path_).parent_path().string();
        listener_.emplace(Listener::at(path_));
        if (!listener_->isOpen())
            return noSocket(errno);
        server_.listen(*listener_);
        return {};
    }

    Trouble noSocket(int error) const {
        if (error == EADDRINUSE)
            return {Exit::Failed, "a simulator listens at " + path_ + " already",
                    "end it with `zelsim stop`, or give this one another --socket"};
        return {error == EACCES ? Exit::NoPermission : Exit::CannotWrite,
                path_ + ": " + std::strerror(error), "give another --socket"};
    }

    // The parent ends at once, so that who started it has no child to wait for.
    bool goesToBackground() {
        server_.useLifeline(arguments_.lifeline);
        const bool isParent = fork() > 0;
        if (isParent)
            std::_Exit(0); // the socket is the child's
        return false;
    }

    int serve() {
        if (const int exit =
                print(arguments_.json ? listeningObject() : listeningText(), arguments_.json))
            return exit;
        while (server_.serve().signal == SIGCHLD) {
        }
        return 0;
    }

    std::string listeningText() const {
        std::string text = "listening on " + path_ + "; try: " + commandToTry();
        if (world_.bridge())
            text += "\n" + bridgeLine(*world_.bridge());
        return text;
    }

    std::string listeningObject() const {
        Json listening = {{"socket", path_}, {"try", commandToTry()}};
        if (world_.bridge())
            listening["bridge"] = bridgeObject(*world_.bridge());
        return toLine({{"listening", listening}});
    }

    std::string commandToTry() const {
        if (arguments_.wantsUhid)
            return "zeltag list";
        return "LD_PRELOAD=" + preloadPath() + " ZELSIM_SOCKET=" + path_ + " zeltag list";
    }

    int serveProgram() {
        const std::string object = preloadPath();
        if (object.empty())
            return fail({Exit::MissingFile, "libzelsim.so isn't beside zelsim",
                         "build or install it with the program"},
                        arguments_.json);
        const char* const others = std::getenv("LD_PRELOAD");
        auto child = Child::start(
            arguments_.program,
            {"LD_PRELOAD=" + object + (others && *others ? ":" + std::string(others) : ""),
             std::string(kSocketVariable) + "=" + path_});
        if (const auto* const trouble = std::get_if<Trouble>(&child))
            return fail(*trouble, arguments_.json);
        return serveUntilEnd(std::get<Child>(child));
    }

    // A terminal sends Ctrl-C to the program as well; any other end is passed on to it.
    int serveUntilEnd(Child& child) {
        for (;;) {
            const Server::End end = server_.serve();
            if (const auto exit = child.exitCode())
                return *exit;
            if (end.cause != Server::End::Cause::Signal || end.signal == SIGTERM)
                child.send(SIGTERM);
        }
    }

    World& world_;
    const Arguments& arguments_;
    Signals signals_;
    Server server_;
    std::vector<std::unique_ptr<Face>> faces_;
    std::string path_;
    std::string folder_; // that goes with the simulator
    std::optional<Listener> listener_;
};

} // namespace

int runCommand(const Arguments& arguments) {
    const auto world = makeWorld(arguments.scenario, false);
    if (const auto* const trouble = std::get_if<Trouble>(&world))
        return fail(*trouble, arguments.json);
    return Run(*std::get<std::unique_ptr<World>>(world), arguments).run();
}

int checkCommand(const Arguments& arguments) {
    const auto scenario = readScenario(arguments.scenario);
    if (const auto* const trouble = std::get_if<Trouble>(&scenario))
        return fail(*trouble, arguments.json);
    const auto& read = std::get<Scenario>(scenario);
    if (arguments.json)
        return print(toLine({{"scenario", arguments.scenario},
                             {"devices", read.devices.size()},
                             {"cards", read.cards.size()},
                             {"events", read.events.size()}}),
                     true);
    return print(arguments.scenario + " is right; devices " + std::to_string(read.devices.size()) +
                     ", cards " + std::to_string(read.cards.size()) + ", events " +
                     std::to_string(read.events.size()),
                 false);
}

} // namespace zel::sim
