// SPDX-License-Identifier: MIT
// Proximity readers behind simulated network bridges.
#pragma once

#include "family/tag/tag.h"
#include "sim/tag/stream.h"
#include "tests/support/bridge_test.h"
#include "transport/tcp_socket.h"

namespace zel::test {

class NetworkConnect : public BridgeTest {
protected:
    NetworkConnect() {
        lLastCnctErr = 0;
        SetConnectProduct(ZELTAGAPI_ZELTAG);
    }
    ~NetworkConnect() override {
        USBDisconnect();
        socket_Close();
        SetIpPort(0, 0, 0, 0, 0);
        lLastCnctErr = 0;
    }

    static std::shared_ptr<sim::TagStream> tag() {
        return std::make_shared<sim::TagStream>(std::make_shared<sim::TagReader>());
    }

    // All bridges listen on the port of the first.
    sim::Bridge& bridge(std::uint8_t host, std::shared_ptr<sim::StreamDevice> device = tag()) {
        sim::Bridge& added = addBridge(host, std::move(device), port_);
        port_ = added.port();
        bridges_.push_back(&added);
        return added;
    }
    std::uint16_t port() const { return port_; }

    int connectStream(std::uint8_t d) const {
        return zeltag_IPConnect_Serial(a(), b(), c(), d, port_);
    }
    int connectReports(std::uint8_t d) const {
        return zeltag_IPConnect_USBFR(a(), b(), c(), d, port_);
    }

    // Hundreds of hosts that nobody answers for: nothing is waited for without a connection.
    void hurry() {
        onPause([this](std::uint64_t) {
            if (socket_IsOpen())
                pumpBridges();
            for (sim::Bridge* const each : bridges_)
                each->pump(0);
        });
    }

    static std::string dotted(int d) {
        return std::to_string(a()) + '.' + std::to_string(b()) + '.' + std::to_string(c()) + '.' +
               std::to_string(d);
    }
    std::string nameOf(const std::string& mac, int d) const {
        return "MAC:" + mac + " TCP/IP:" + dotted(d) + ";Port:" + std::to_string(port_);
    }

private:
    std::uint16_t port_ = 0;
    std::vector<sim::Bridge*> bridges_;
};

// The MAC address that the bridges tell, and the one of a bridge that doesn't.
inline const std::string kTold = "00:20:4A:00:00:07";
inline const std::string kDefault = "00:20:4A:00:00:00";

} // namespace zel::test
