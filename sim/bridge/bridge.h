// SPDX-License-Identifier: MIT
// A simulated network bridge on this machine's own sockets: it answers the two probes and carries
// the bytes of one TCP client to a device and back.
//
// The bridge has no thread: it works while pump() runs.
#pragma once

#include "sim/bridge/probes.h"
#include "sim/bridge/socket.h"
#include "sim/wire/stream_device.h"

#include <map>
#include <memory>
#include <optional>
#include <poll.h>
#include <vector>

namespace zel::sim {

struct BridgeOptions {
    Ipv4Address address = {127, 0, 0, 1};
    std::uint16_t port = 0; // TCP; 0: any free one
    MacAddress mac = {0x00, 0x20, 0x4A, 0x00, 0x00, 0x07};
    bool servesDiscovery = true; // on UDP port 11000
    bool servesMacQuery = true;  // on UDP port 30718
};

// What goes wrong with the replies to a probe.
struct ProbeFaults {
    bool silent = false;
    int late = 0;                         // the next so many calls of pump() leave it waiting
    std::optional<Ipv4Address> from = {}; // another address that the reply comes from
    std::optional<std::size_t> size = {}; // the reply is cut to so many bytes
    std::map<std::size_t, std::uint8_t> bytes = {}; // other bytes at these offsets
};

// What goes wrong with the stream.
struct StreamFaults {
    bool silent = false;                       // bytes from the client get lost
    std::size_t dribble = 0;                   // bytes to the client a pump; 0: all at once
    std::optional<std::size_t> endsAfter = {}; // closes when a client got so many bytes
    bool endsWithReset = false;                // and does so by a reset
};

class Bridge {
public:
    explicit Bridge(std::shared_ptr<StreamDevice> device, const BridgeOptions& options = {});
    Bridge(const Bridge&) = delete;
    Bridge& operator=(const Bridge&) = delete;

    // Opens the ports. False, with errno and none open, when one of them can't be had.
    bool start();
    std::uint16_t port() const { return port_; }

    // The port that start() couldn't have, and whether it is one of the two for probes.
    std::uint16_t failedPort() const { return failedPort_; }
    bool failedAtDiscovery() const { return failedAtDiscovery_; }

    // Serves what is ready, waiting at most so long for the first of it.
    void pump(int waitMilliseconds);

    // Adds what pump() waits for, to wait for several bridges at once.
    void addTo(std::vector<pollfd>& ends) const;

    bool hasClient() const { return client_.isOpen(); }
    void hangUp() { client_.close(); }

    ProbeFaults& probeFaults(Probe probe) { return line(probe).faults; }
    StreamFaults& streamFaults() { return streamFaults_; }
    const StreamFaults& streamFaults() const { return streamFaults_; }
    void spoilReply(Probe probe, std::size_t offset, std::uint8_t value) {
        probeFaults(probe).bytes[offset] = value;
    }

    // From now on no client can connect, until listen(); the one there is stays.
    void refuse() { listener_.close(); }
    bool listen();

private:
    struct ProbeLine {
        Socket socket = {};
        ProbeFaults faults = {};
    };

    ProbeLine& line(Probe probe) { return lines_[static_cast<std::size_t>(probe)]; }
    bool serves(Probe probe) const;
    bool open(Probe probe);
    void answer(Probe probe);
    std::vector<std::uint8_t> replyTo(Probe probe) const;
    void serveClients();
    bool acceptClient();
    bool takeBytes();
    void deliver();
    std::size_t deliverable() const;
    void endConnection();

    std::shared_ptr<StreamDevice> device_;
    BridgeOptions options_;
    std::uint16_t port_;
    std::uint16_t failedPort_ = 0;
    bool failedAtDiscovery_ = false;
    ProbeLine lines_[std::size(kProbes)];
    StreamFaults streamFaults_;
    Socket listener_;
    Socket client_;
    std::vector<std::uint8_t> outgoing_;
    std::size_t delivered_ = 0; // bytes, to the present client
};

} // namespace zel::sim
